// Storage that appears with the first drawing, and the list of what was drawn.
#include "platform/drawing/surface.h"

#include <utility>

namespace {

// Beyond this many a list of rectangles costs more than it saves.
constexpr size_t MaxDamage = 8;

// One count for all surfaces, so that pixels moved from one surface to another are
// never mistaken for those that were there before.
uint64_t NextRevision() {
    static uint64_t last = 0;
    return ++last;
}

bool Covers(const Rect& outer, const Rect& inner) {
    return outer.x <= inner.x && outer.y <= inner.y && outer.Right() >= inner.Right() &&
           outer.Bottom() >= inner.Bottom();
}

}  // namespace

Surface::Surface(int width, int height, Pixel background) : background_(OpaqueBits | background) {
    Resize(width, height);
}

Surface::Surface(Surface&& other) noexcept { *this = std::move(other); }

Surface& Surface::operator=(Surface&& other) noexcept {
    if (this == &other) return *this;
    width_ = std::exchange(other.width_, 0);
    height_ = std::exchange(other.height_, 0);
    storedWidth_ = std::exchange(other.storedWidth_, 0);
    storedHeight_ = std::exchange(other.storedHeight_, 0);
    density_ = std::exchange(other.density_, Density());
    background_ = other.background_;
    pixels_ = std::move(other.pixels_);
    damage_.clear();
    other.damage_.clear();
    other.revision_ = NextRevision();
    Touch(Bounds());
    return *this;
}

void Surface::Resize(int width, int height) {
    width_ = std::max(width, 0);
    height_ = std::max(height, 0);
    storedWidth_ = width_;
    storedHeight_ = height_;
    damage_.clear();
    Cls();
}

void Surface::SetDensity(Density density) {
    density_ = density;
    Cls();
}

void Surface::SetStorage(int width, int height) {
    storedWidth_ = std::clamp(width, 0, width_);
    storedHeight_ = std::clamp(height, 0, height_);
    Cls();
}

void Surface::SetBackground(Pixel background) {
    background_ = OpaqueBits | background;
    Cls();
}

void Surface::Cls() {
    pixels_.reset();
    Touch(Bounds());
}

Pixel Surface::At(int x, int y) const {
    if (!pixels_ || !PixelBounds().Contains(x, y)) return background_;
    return Row(y)[x];
}

Pixel* Surface::Draw(const Rect& area) {
    if (!pixels_) {
        pixels_ = std::make_unique_for_overwrite<Pixel[]>(PixelCount());
        std::fill_n(pixels_.get(), PixelCount(), background_);
    }
    Touch(area);
    return pixels_.get();
}

Pixel* Surface::DrawAll() {
    if (!pixels_) pixels_ = std::make_unique_for_overwrite<Pixel[]>(PixelCount());
    Touch(StorageBounds());
    return pixels_.get();
}

void Surface::Touch(const Rect& area) {
    revision_ = NextRevision();
    AddDamage(Intersect(area, Bounds()));
}

void Surface::AddDamage(const Rect& area) {
    if (area.Empty()) return;
    for (const Rect& known : damage_)
        if (Covers(known, area)) return;
    std::erase_if(damage_, [&area](const Rect& known) { return Covers(area, known); });
    damage_.push_back(area);
    if (damage_.size() <= MaxDamage) return;
    Rect all;
    for (const Rect& known : damage_) all = Unite(all, known);
    damage_.assign(1, all);
}

void Surface::Refresh() {
    // The list is taken first: the listener may draw.
    const Region damage = std::exchange(damage_, {});
    if (listener_ && !damage.empty()) listener_->SurfaceRefreshed(damage);
}
