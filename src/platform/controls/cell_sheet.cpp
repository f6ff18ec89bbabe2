// Cells of a sheet: loaded, changed, found again under the pointer.
//
// The sheet is cut into horizontal bands. A band lists the cells that reach into it, so a
// look at one point costs one band's cells, however many the sheet holds.
#include "platform/controls/cell_sheet.h"

#include <algorithm>
#include <cmath>

#include "platform/system/numbers.h"

namespace {

constexpr int BandHeight = 128;  // pixels, a little more than a usual row
constexpr int MostBands = 32;    // a cell over more of them is listed apart
constexpr std::pair<int, int> Nowhere{0, -1};
constexpr int16_t LeftButton = 1;

int BandOf(double y) {
    const double band = std::floor(y / BandHeight);
    return int(std::clamp(band, -1e6, 1e6));
}

}  // namespace

CellSheet::CellSheet(std::string name) : Control(std::move(name)), cells_(1), spans_{Nowhere} {}

CellSheet::Cell& CellSheet::Load() {
    const Cell& pattern = cells_.front();
    Cell cell;
    cell.frame = pattern.frame;
    cell.frame.visible = false;
    cell.figure.width = pattern.figure.width;
    cell.figure.height = pattern.figure.height;
    cell.figure.left = pattern.figure.left;
    cell.figure.top = pattern.figure.top;
    cell.figure.toolTip = pattern.figure.toolTip;
    cells_.push_back(std::move(cell));
    spans_.push_back(Nowhere);
    return Change(UpperBound());
}

void CellSheet::UnloadAll() {
    while (cells_.size() > 1) cells_.pop_back();
    spans_.assign(1, Nowhere);
    bands_.clear();
    tall_.clear();
    changed_.clear();
    pressed_ = {};
    clicks_ = false;
    Tell(Aspect::Entries);
}

CellSheet::Cell& CellSheet::Change(int index) {
    NoteChange(index);
    Tell(Aspect::Entries);
    return cells_[size_t(index)];
}

void CellSheet::SetBackColor(Color color) {
    if (color == backColor_) return;
    backColor_ = color;
    Tell(Aspect::Look);
}

Rect CellSheet::FramePixels(const Cell& cell) {
    return ToPixelRect(cell.frame.left, cell.frame.top, cell.frame.width, cell.frame.height, TwipsPerPixel);
}

Rect CellSheet::FigurePixels(const Cell& cell) {
    return ToPixelRect(cell.figure.left, cell.figure.top, cell.figure.width, cell.figure.height, TwipsPerPixel);
}

// The caller writes after this call, so the cell's place is read when somebody next looks.
void CellSheet::NoteChange(int index) {
    if (index > 0 && (changed_.empty() || changed_.back() != index)) changed_.push_back(index);
}

CellSheet::Span CellSheet::SpanOf(const Cell& cell) const {
    Rect both;
    if (cell.frame.visible) both = FramePixels(cell);
    if (cell.figure.visible) both = Unite(both, FigurePixels(cell));
    if (both.Empty()) return Nowhere;
    return {BandOf(both.y), BandOf(both.Bottom() - 1)};
}

void CellSheet::RefreshBands() const {
    for (const int index : changed_) {
        const Span now = SpanOf(cells_[size_t(index)]);
        Span& listed = spans_[size_t(index)];
        if (now == listed) continue;
        Strike(index, listed);
        Enlist(index, now);
        listed = now;
    }
    changed_.clear();
}

void CellSheet::Enlist(int index, const Span& span) const {
    if (span.second - span.first >= MostBands) {
        tall_.push_back(index);
        return;
    }
    for (int band = span.first; band <= span.second; ++band) bands_[band].push_back(index);
}

void CellSheet::Strike(int index, const Span& span) const {
    if (span.second - span.first >= MostBands) {
        std::erase(tall_, index);
        return;
    }
    for (int band = span.first; band <= span.second; ++band) std::erase(bands_[band], index);
}

// Takes the cell's part under the point, if it lies in front of the best one so far.
void CellSheet::TryCell(int index, double x, double y, Hit& best) const {
    const Cell& cell = cells_[size_t(index)];
    const auto covers = [x, y](const Rect& r) { return x >= r.x && y >= r.y && x < r.Right() && y < r.Bottom(); };
    const bool lower = best.part == Part::None || index < best.index;
    if (cell.figure.visible && (best.part != Part::Figure || lower)) {
        const Rect figure = FigurePixels(cell);
        if (covers(figure)) {
            best = {index, Part::Figure, x - figure.x, y - figure.y};
            return;
        }
    }
    if (!cell.frame.visible || best.part == Part::Figure || !lower) return;
    const Rect frame = FramePixels(cell);
    if (covers(frame)) best = {index, Part::Frame, x - frame.x, y - frame.y};
}

CellSheet::Hit CellSheet::HitCell(double x, double y) const {
    RefreshBands();
    Hit best;
    if (const auto band = bands_.find(BandOf(y)); band != bands_.end())
        for (const int index : band->second) TryCell(index, x, y, best);
    for (const int index : tall_) TryCell(index, x, y, best);
    return best;
}

std::vector<int> CellSheet::CellsIn(const Rect& area) const {
    if (area.Empty()) return {};
    RefreshBands();
    std::vector<int> cells = tall_;
    const auto last = bands_.upper_bound(BandOf(area.Bottom() - 1));
    for (auto band = bands_.lower_bound(BandOf(area.y)); band != last; ++band)
        cells.insert(cells.end(), band->second.begin(), band->second.end());
    std::sort(cells.begin(), cells.end());
    cells.erase(std::unique(cells.begin(), cells.end()), cells.end());
    return cells;
}

std::string CellSheet::ToolTipAt(double x, double y) const {
    const Hit hit = HitCell(x, y);
    if (hit.part == Part::None) return {};
    const Cell& cell = At(hit.index);
    return hit.part == Part::Figure ? cell.figure.toolTip : cell.frame.toolTip;
}

// While a button is down the part that took the press gets everything, its own corner being 0, 0.
CellSheet::Hit CellSheet::OnPressedFigure(float x, float y) const {
    Hit hit = pressed_;
    if (hit.part != Part::Figure || hit.index > UpperBound()) return {};
    const Rect figure = FigurePixels(At(hit.index));
    hit.x = double(x) - figure.x;
    hit.y = double(y) - figure.y;
    return hit;
}

// A figure measures in twips, as the sheet does.
Handler CellSheet::ToFigure(const FigureMouseHandler& event, const Hit& hit, int16_t button, int16_t shift) {
    if (hit.part != Part::Figure || !event) return {};
    return [&event, hit, button, shift] {
        event(hit.index, button, shift, float(hit.x * TwipsPerPixel), float(hit.y * TwipsPerPixel));
    };
}

void CellSheet::DeliverMouseDown(int16_t button, int16_t shift, float x, float y) {
    if (!AcceptsInput(*this)) return;
    held_ = int16_t(held_ & ~button);  // a release that went elsewhere
    if (!held_) {
        pressed_ = HitCell(double(x), double(y));
        clicks_ = true;
    }
    held_ = int16_t(held_ | button);
    Raise(*this, ToFigure(FigureMouseDown, OnPressedFigure(x, y), button, shift));
}

void CellSheet::DeliverMouseMove(int16_t button, int16_t shift, float x, float y) {
    if (!FigureMouseMove) return;
    const Hit hit = held_ ? OnPressedFigure(x, y) : HitCell(double(x), double(y));
    Raise(*this, ToFigure(FigureMouseMove, hit, button, shift));
}

// The handler of the release may empty the sheet: pressed_ is then gone, and no click follows.
void CellSheet::DeliverMouseUp(int16_t button, int16_t shift, float x, float y) {
    const bool taken = (held_ & button) != 0;
    held_ = int16_t(held_ & ~button);
    if (taken && Enabled()) RaiseFromProgram(*this, ToFigure(FigureMouseUp, OnPressedFigure(x, y), button, shift));
    if (!taken || held_ || !clicks_ || pressed_.part == Part::None) return;
    clicks_ = false;
    const Hit released = HitCell(double(x), double(y));
    if (released.part != pressed_.part || released.index != pressed_.index) return;
    const auto& click = released.part == Part::Figure ? FigureClick : FrameClick;
    if (click) Raise(*this, [&click, index = released.index] { click(index); });
}

// The release that ends a double click is told of, but is no further click.
void CellSheet::DeliverDblClick(float x, float y) {
    if (!AcceptsInput(*this)) return;
    pressed_ = HitCell(double(x), double(y));
    held_ = int16_t(held_ | LeftButton);
    clicks_ = false;
    if (pressed_.part == Part::Figure && FigureDblClick)
        Raise(*this, [this, index = pressed_.index] { FigureDblClick(index); });
}
