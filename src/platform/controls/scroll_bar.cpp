// The rules of a scroll bar's numbers.
#include "platform/controls/scroll_bar.h"

#include <algorithm>

#include "platform/system/numbers.h"

namespace {

// Change handlers that set Value again nest this deep before they are no longer called.
constexpr int DeepestChain = 32;

bool SetStep(int16_t& step, double value) {
    const std::optional<int16_t> narrowed = CInt16(value);
    if (!narrowed || *narrowed < 1) return false;
    step = *narrowed;
    return true;
}

}  // namespace

bool ScrollBar::SetMin(double value) { return SetEnd(min_, value); }
bool ScrollBar::SetMax(double value) { return SetEnd(max_, value); }

bool ScrollBar::SetEnd(int16_t& end, double value) {
    if (!Store(end, value)) return false;
    Tell(Aspect::Range);
    MoveValue(std::clamp(value_, std::min(min_, max_), std::max(min_, max_)));
    return true;
}

bool ScrollBar::SetValue(double value) {
    const std::optional<int16_t> narrowed = CInt16(value);
    if (!narrowed || *narrowed < std::min(min_, max_) || *narrowed > std::max(min_, max_)) return false;
    MoveValue(*narrowed);
    return true;
}

bool ScrollBar::SetSmallChange(double value) {
    if (!SetStep(smallChange_, value)) return false;
    Tell(Aspect::Range);
    return true;
}

bool ScrollBar::SetLargeChange(double value) {
    if (!SetStep(largeChange_, value)) return false;
    Tell(Aspect::Range);
    return true;
}

void ScrollBar::MoveValue(int16_t value) {
    if (value == value_) return;
    value_ = value;
    Tell(Aspect::Value);
    if (nested_ >= DeepestChain) return;
    struct Nesting {
        int& depth;
        ~Nesting() { --depth; }
    };
    const Nesting nesting{++nested_};
    RaiseFromProgram(*this, Change);
}

void ScrollBar::DeliverValue(int value, bool dragging) {
    if (!AcceptsInput(*this)) {
        dragging_ = false;
        return;
    }
    const int lowest = std::min(min_, max_), highest = std::max(min_, max_);
    const auto clipped = int16_t(std::clamp(value, lowest, highest));
    const bool moved = clipped != value_;
    const bool dragEnds = dragging_ && !dragging;
    dragging_ = dragging;
    value_ = clipped;
    if (clipped != value) Tell(Aspect::Value);
    if (dragging) {
        if (moved) Raise(*this, Scroll);
    } else if (moved || dragEnds) {
        Raise(*this, Change);
    }
}
