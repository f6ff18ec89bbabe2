// Timers tell the desktop what they want; the desktop calls them back.
#include "platform/system/timer.h"

#include <algorithm>

#include "platform/system/desktop.h"

Timer::~Timer() {
    if (HasDesktop()) TheDesktop().TimerChanged(*this, true);
}

void Timer::SetInterval(int32_t milliseconds) {
    const int32_t wanted = std::max<int32_t>(milliseconds, 0);
    if (wanted == interval_) return;
    interval_ = wanted;
    Announce();
}

void Timer::SetEnabled(bool value) {
    if (value == enabled_) return;
    enabled_ = value;
    Announce();
}

void Timer::Announce() {
    if (HasDesktop()) TheDesktop().TimerChanged(*this, false);
}
