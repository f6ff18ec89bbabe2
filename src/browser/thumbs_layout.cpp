// Where things lie: the frame, the sheet and the bar inside the control, the cells on
// the sheet, and how the sheet scrolls. All in twips; a sheet of thousands of pictures is
// millions of twips high, so everything is reckoned in doubles.
#include <algorithm>
#include <limits>

#include "browser/thumbs_ctl.h"
#include "core/game_state.h"
#include "platform/controls/window_system.h"
#include "platform/system/desktop.h"
#include "platform/system/numbers.h"

namespace {
constexpr double Margin = 10;           // round frame, sheet and bar
constexpr int ColumnPitch = 1835;       // from one column to the next
constexpr int RowPitch = 1790;          // from one row to the next
constexpr double FirstRow = 200;        // top of the first row
constexpr double RowGapInHeight = 130;  // with a frame's height a row's share of the sheet: 1810, not the pitch
constexpr double SheetBeyondRows = 200;
constexpr int32_t LongestRange = 32000;  // a range from here on is not set
}  // namespace

void ThumbsCtl::UserControl_Resize() {
    picFundo.Move(Margin, Margin);
    picInterior.Move(Margin, Margin);
    const double frameWidth = Width() - scrThumbs.Width() - 2 * Margin;
    if (frameWidth < 0) return;
    picFundo.SetWidth(frameWidth);
    picFundo.SetHeight(Height() - 2 * Margin);
    if (picFundo.Width() - 2 * Margin < 0) return;
    // TileSize is a number of pixels everywhere else; here it is a margin in twips.
    picInterior.SetWidth(picFundo.Width() - PuzzleModule::TileSize);
    picInterior.SetHeight(picFundo.Height() - PuzzleModule::TileSize);
    // On purpose not behind the frame's own left edge: the bar overlaps the frame by the margin.
    scrThumbs.Move(picFundo.Width(), Margin);
    scrThumbs.SetHeight(picFundo.Height());
    BuildThumbs();
}

int ThumbsCtl::ColumnsNow() const {
    return ColumnMode == 0 ? int(Fix(picInterior.Width() / ColumnPitch)) : ColumnCount;
}

double ThumbsCtl::ScreenScale() {
    Form* const form = OwnerForm();
    return form && HasWindows() ? TheWindows().ScaleOf(*form) : 1;
}

// Pixels that a thumbnail keeps for each logical one: all that the display has, where the bar can bring it into view.
double ThumbsCtl::PixelsPerUnit(int k) {
    constexpr double LowestTop = std::numeric_limits<int16_t>::max();
    const double top = FirstRow + double((k - 1) / std::max(ColumnsNow(), 1)) * RowPitch;
    return top < LowestTop + picFundo.Height() ? ScreenScale() : 1;
}

// The figure lies centred on its frame, the frame in row (k - 1) \ cols of the sheet.
void ThumbsCtl::PlaceCell(int k, int cols) {
    auto& [frame, figure] = picInterior.Change(k);
    const int row = (k - 1) / cols, column = (k - 1) % cols;
    // The left edge is reckoned in 16 bits: from the nineteenth column on it stays that of the first.
    if (const std::optional<int16_t> left = CInt16(double(column) * ColumnPitch)) frame.left = *left;
    frame.top = double(row) * RowPitch + FirstRow;
    frame.visible = true;
    figure.left = (frame.width - figure.width) / 2 + frame.left;
    figure.top = (frame.height - figure.height) / 2 + frame.top;
    figure.visible = true;
}

// Both follow the whole list at the present column count. The bar's end is refused, and
// stays, once the sheet is too long for 16 bits; a sheet shorter than the bar makes it negative.
void ThumbsCtl::SizeSheet(int cols) {
    const int rows = LastItem() / cols + (LastItem() % cols > 0 ? 1 : 0);
    picInterior.SetHeight((picInterior.At(0).frame.height + RowGapInHeight) * rows + SheetBeyondRows);
    scrThumbs.SetMax(picInterior.Height() - scrThumbs.Height());
}

void ThumbsCtl::SetBarRange(ScrollBar& Bar, int32_t& MaxValue, int16_t SmallStep, int32_t LargeStep) {
    MaxValue = std::max(MaxValue, int32_t{0});
    if (MaxValue < LongestRange) Bar.SetMax(MaxValue);
    Bar.SetSmallChange(SmallStep);
    Bar.SetLargeChange(LargeStep);
}

void ThumbsCtl::ScrollSheet(ScrollBar& Bar, CellSheet& Sheet) { Sheet.SetTop(-double(Bar.Value())); }

// Both events yield, so that the sheet is painted while the thumb is dragged. Any handler
// of the dialog may run meanwhile; nothing is left to do here afterwards.
void ThumbsCtl::scrThumbs_Change() {
    ScrollSheet(scrThumbs, picInterior);
    DoEvents();
}

void ThumbsCtl::scrThumbs_Scroll() {
    ScrollSheet(scrThumbs, picInterior);
    DoEvents();
}

// A sheet that fits into its frame (a bar whose end is negative) does not move.
void ThumbsCtl::picInterior_Wheel(const WheelTurn& turn) {
    if (scrThumbs.Max() <= scrThumbs.Min()) return;
    const int step = turn.unit == WheelTurn::Unit::Notches ? RowPitch : TwipsPerPixel;
    const double wanted = scrThumbs.Value() - turn.y * step;
    scrThumbs.SetValue(std::clamp<double>(wanted, scrThumbs.Min(), scrThumbs.Max()));
}
