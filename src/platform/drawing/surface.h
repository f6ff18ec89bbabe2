// A rectangle of pixels in memory that the game draws on.
//
// A surface has a declared size, a background colour and pixels. As long as
// nothing but its background was drawn it keeps no pixels at all, so a clean
// background as large as the board costs nothing; storage appears at the first
// drawing. A surface may also declare more than it stores (SetStorage): what lies
// outside the storage reads as background and swallows what is drawn there.
//
// Sizes, rectangles and damage count in units; a surface may keep several pixels for each (SetDensity). Only the raw
// pixels (At, Row, Stride, PixelBounds) count in pixels. Rows of 32-bit pixels 0xFFRRGGBB, top byte always 0xFF, x
// right, y down from 0.
#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>

#include "platform/drawing/density.h"
#include "platform/drawing/geometry.h"
#include "platform/drawing/pixel.h"

// Hears when a finished drawing is to come to the screen.
class SurfaceListener {
public:
    virtual ~SurfaceListener() = default;
    // `damage`: the rectangles drawn since the last Refresh, inside the surface.
    virtual void SurfaceRefreshed(const Region& damage) = 0;
};

class Surface {
public:
    Surface() = default;
    Surface(int width, int height, Pixel background = WhitePixel);
    Surface(const Surface&) = delete;  // pixels are moved about by raster operations, never by accident
    Surface& operator=(const Surface&) = delete;
    // Size, density, background and pixels move; a listener stays with its surface. What is left
    // behind has no size. To the one that takes over it counts as drawing the whole.
    Surface(Surface&& other) noexcept;
    Surface& operator=(Surface&& other) noexcept;

    int Width() const { return width_; }
    int Height() const { return height_; }
    Rect Bounds() const { return {0, 0, width_, height_}; }

    // New size, everything background again, storage dropped. Negative sizes count as 0.
    void Resize(int width, int height);

    // How many pixels a unit has from now on, 1 unless told. Clears the surface, also where it stays the same.
    void SetDensity(Density density);
    Density PixelDensity() const { return density_; }

    // Keeps pixels only for the top-left `width` by `height` (clipped to the size),
    // all of them background again.
    void SetStorage(int width, int height);
    Rect StorageBounds() const { return {0, 0, storedWidth_, storedHeight_}; }
    Rect PixelBounds() const { return density_.Pixels(StorageBounds()); }  // of the storage, in pixels

    // The colour that Cls leaves. Setting it clears the surface.
    void SetBackground(Pixel background);
    Pixel Background() const { return background_; }

    // Everything background again; gives the storage back.
    void Cls();

    // True while the surface holds nothing but background: it has no storage then.
    bool IsUniform() const { return pixels_ == nullptr; }

    // The pixel at x, y; background where nothing is stored. x, y must lie inside.
    Pixel At(int x, int y) const;

    // Read access to row y of the stored pixels, or nullptr while uniform.
    const Pixel* Row(int y) const { return pixels_ ? pixels_.get() + size_t(y) * size_t(Stride()) : nullptr; }
    int Stride() const { return density_.Pixels(storedWidth_); }  // pixels from one stored row to the next

    // Write access to the storage, made if need be. `area` is what the caller is
    // going to change: it is noted as damage and raises the revision.
    Pixel* Draw(const Rect& area);

    // The same for a caller that writes every stored pixel: new storage is not filled first.
    Pixel* DrawAll();

    // Notes a drawing operation that left every pixel of `area` as it was, such as
    // background laid on background: damage and revision, but no storage.
    void Touch(const Rect& area);

    // Grows with every drawing operation, and is never the same for two surfaces. Whoever remembers it can tell whether
    // somebody else has drawn since.
    uint64_t Revision() const { return revision_; }

    // Hands the damage gathered since the last time to the listener.
    void Refresh();
    void SetListener(SurfaceListener* listener) { listener_ = listener; }
    const Region& Damage() const { return damage_; }

private:
    void AddDamage(const Rect& area);
    size_t PixelCount() const { return size_t(Stride()) * size_t(density_.Pixels(storedHeight_)); }

    int width_ = 0, height_ = 0;
    int storedWidth_ = 0, storedHeight_ = 0;
    Density density_;
    Pixel background_ = WhitePixel;
    std::unique_ptr<Pixel[]> pixels_;
    uint64_t revision_ = 0;
    Region damage_;  // a few rectangles; united when they become many
    SurfaceListener* listener_ = nullptr;
};
