// Fitting a picture into whole cells. Every intermediate value is a 16-bit number rounded
// at its step, which is why a picture shrinks in steps of 5% and not in one stretch.
#include "core/fitting.h"

#include "platform/system/numbers.h"

namespace PuzzleModule {

namespace {

// How far a picture may grow and be stretched out of its proportions.
struct Factors {
    double growth, widthLimit, heightLimit;
};
constexpr Factors NewGameFactors{1.01, 1.03, 1.05};
constexpr Factors RestoredFactors{1.02, 1.03, 1.03};

// A picture may cover at most this part of the screen, reckoned in cells.
constexpr double ScreenShare = 4.5;
constexpr double Reduction = 0.95;
constexpr int FrameLine = 1;

// The working picture: its size, and that of picMaster.
struct Work {
    int16_t pw = 0, ph = 0;
    int16_t w = 0, h = 0;
};

Rect Centred(int16_t w, int16_t h, int16_t pw, int16_t ph) { return {(w - pw) / 2, (h - ph) / 2, pw, ph}; }

// Multiplies both sides by `factor`. Nothing if a side no longer fits; false if both stayed the same.
std::optional<bool> Scale(Work& work, double factor) {
    const auto pw = CInt16(work.pw * factor), ph = CInt16(work.ph * factor);
    if (!pw || !ph) return std::nullopt;
    const bool changed = *pw != work.pw || *ph != work.ph;
    work.pw = *pw;
    work.ph = *ph;
    return changed;
}

// Reduces the picture until it covers no more than `limit` cells, or no longer changes: tiny
// sides round back to themselves.
bool Reduce(Work& work, int cellSize, int16_t limit) {
    while ((double(work.ph) / cellSize) * (double(work.pw) / cellSize) > limit) {
        const auto changed = Scale(work, Reduction);
        if (!changed) return false;
        if (!*changed) break;
    }
    return true;
}

// Rounds each side up to whole cells; a side that is whole already gets one cell more.
bool SizeGrid(Work& work, int cellSize) {
    return Store(work.w, cellSize - work.pw % cellSize + work.pw) &&
           Store(work.h, cellSize - work.ph % cellSize + work.ph);
}

// Grows the picture in its proportions until one side nearly fills the grid.
bool Grow(Work& work, double growth) {
    while (work.pw * growth < work.w && work.ph * growth < work.h) {
        const auto changed = Scale(work, growth);
        if (!changed) return false;
        if (!*changed) break;
    }
    return true;
}

// Stretches `side` pixel by pixel until its margin has met the other one or the limit is reached.
void Stretch(int16_t& side, int16_t whole, int otherMargin, double limit) {
    const int before = side;
    while (side + 1 <= before * limit && otherMargin < whole - (side + 1)) ++side;
}

void BalanceMargins(Work& work, const Factors& factors) {
    const int widthMargin = work.w - work.pw, heightMargin = work.h - work.ph;
    if (heightMargin < widthMargin) Stretch(work.pw, work.w, heightMargin, factors.widthLimit);
    if (heightMargin > widthMargin) Stretch(work.ph, work.h, widthMargin, factors.heightLimit);
    // Even margins: the picture can be centred on whole pixels.
    if ((work.w - work.pw) % 2 != 0) --work.pw;
    if ((work.h - work.ph) % 2 != 0) --work.ph;
}

std::optional<Fit> Finish(Work& work, int cellSize, const Factors& factors) {
    if (!Grow(work, factors.growth)) return std::nullopt;
    BalanceMargins(work, factors);
    Fit fit;
    if (!Store(fit.GridCols, double(work.w) / cellSize) || !Store(fit.GridRows, double(work.h) / cellSize))
        return std::nullopt;
    fit.MasterWidth = work.w;
    fit.MasterHeight = work.h;
    fit.FrameWidth = fit.PictureWidth = work.pw;
    fit.FrameHeight = fit.PictureHeight = work.ph;
    return fit;
}

}  // namespace

Rect Fit::FrameRect() const { return Centred(MasterWidth, MasterHeight, FrameWidth, FrameHeight); }
Rect Fit::PictureRect() const { return Centred(MasterWidth, MasterHeight, PictureWidth, PictureHeight); }

std::optional<int16_t> CellLimit(int cellSize, int screenWidth, int screenHeight) {
    const auto sw = CInt16(screenWidth), sh = CInt16(screenHeight);
    if (!sw || !sh) return std::nullopt;
    const auto cells = CInt16((double(*sw) / cellSize) * (double(*sh) / cellSize));
    return cells ? CInt16(*cells / ScreenShare) : std::nullopt;
}

std::optional<Fit> FitNewGame(Size natural, int cellSize, int screenWidth, int screenHeight) {
    if (cellSize <= 0) return std::nullopt;
    Work work;
    if (!Store(work.pw, natural.width) || !Store(work.ph, natural.height)) return std::nullopt;
    const auto limit = CellLimit(cellSize, screenWidth, screenHeight);
    if (!limit || !Reduce(work, cellSize, *limit) || !SizeGrid(work, cellSize)) return std::nullopt;
    auto fit = Finish(work, cellSize, NewGameFactors);
    if (!fit) return std::nullopt;
    fit->PictureWidth = int16_t(fit->PictureWidth - 2 * FrameLine);
    fit->PictureHeight = int16_t(fit->PictureHeight - 2 * FrameLine);
    return fit;
}

std::optional<Fit> FitRestoredGame(int pictureWidth, int pictureHeight, int cellSize) {
    if (cellSize <= 0) return std::nullopt;
    Work work;
    if (!Store(work.pw, pictureWidth) || !Store(work.ph, pictureHeight)) return std::nullopt;
    if (!SizeGrid(work, cellSize)) return std::nullopt;
    return Finish(work, cellSize, RestoredFactors);
}

std::optional<Fit> FitRestoredGame(int pictureWidth, int pictureHeight, int cellSize, int cols, int rows) {
    if (cellSize <= 0) return std::nullopt;
    Work work;
    if (!Store(work.w, double(cols) * cellSize) || !Store(work.h, double(rows) * cellSize)) return std::nullopt;
    if (!Store(work.pw, std::min<int>(pictureWidth, work.w))) return std::nullopt;
    if (!Store(work.ph, std::min<int>(pictureHeight, work.h))) return std::nullopt;
    return Finish(work, cellSize, RestoredFactors);
}

std::optional<MiniatureFit> FitMiniature(Size picture, double panelWidth, double panelHeight) {
    if (panelWidth <= 0 || panelHeight <= 0) return std::nullopt;
    const auto iH = CInt16(picture.height), iW = CInt16(picture.width);
    // Whole numbers, so the comparison is a coarse one.
    const auto rH = CInt16(picture.height / panelHeight), rW = CInt16(picture.width / panelWidth);
    if (!iH || !iW || !rH || !rW || *iH <= 0 || *iW <= 0) return std::nullopt;
    MiniatureFit fit{};
    if (*rH > *rW) {
        fit.Height = panelHeight;
        fit.Width = *iW / (*iH / fit.Height);
    } else {
        fit.Width = panelWidth;
        fit.Height = *iH / (*iW / fit.Width);
    }
    if (fit.Height >= panelHeight) fit.Height = panelHeight - 2;
    fit.Top = panelHeight / 2 - fit.Height / 2;
    fit.Left = panelWidth / 2 - fit.Width / 2;
    return fit;
}

}  // namespace PuzzleModule
