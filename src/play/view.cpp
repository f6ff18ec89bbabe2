// Moving the view over the board, by bars, wheel and hand, and moving the panel.
//
// The board scrolls by lying at zero or negative places under the window. Nothing is composed: it moves as it is.
#include <algorithm>
#include <cmath>

#include "core/game_state.h"
#include "platform/system/numbers.h"
#include "play/frm_main.h"

using namespace PuzzleModule;

namespace {

constexpr int StepWithoutGame = 66;  // pixels a notch of the wheel while no cell has a size yet

void ScrollBy(ScrollBar& bar, double distance) {
    if (bar.Max() <= bar.Min()) return;  // the window shows all of the board
    bar.SetValue(std::clamp<double>(bar.Value() + distance, bar.Min(), bar.Max()));
}

// The whole pixels of `distance` and of what `rest` has kept from the last time; a part of one waits there again.
double WholePixels(double distance, double& rest) {
    rest += distance;
    const double whole = std::trunc(rest);
    rest -= whole;
    return whole;
}

}  // namespace

void frmMain::HScroll1_Change() {
    const double left = picScreen.Left(), top = picScreen.Top();
    picScreen.SetLeft(-int(HScroll1.Value()));
    FollowView(left, top);
}

void frmMain::HScroll1_Scroll() { HScroll1_Change(); }

void frmMain::VScroll1_Change() {
    const double left = picScreen.Left(), top = picScreen.Top();
    picScreen.SetTop(-int(VScroll1.Value()));
    FollowView(left, top);
}

void frmMain::VScroll1_Scroll() { VScroll1_Change(); }

// The board has moved from `left`, `top` under a pointer that rests: it is elsewhere on the board now, and what is
// held stays under it. A pan brings the pointer along by itself.
void frmMain::FollowView(double left, double top) {
    if (Panning || (left == picScreen.Left() && top == picScreen.Top())) return;
    picScreen_MouseMove(0, 0, pointerX_ + float(left - picScreen.Left()), pointerY_ + float(top - picScreen.Top()));
}

// A notch is a cell; a touchpad's pixels are the board's.
void frmMain::picScreen_Wheel(const WheelTurn& turn) {
    const int cell = CellSize > 0 ? CellSize : StepWithoutGame;
    const int step = turn.unit == WheelTurn::Unit::Notches ? cell : 1;
    ScrollBy(HScroll1, WholePixels(-turn.x * step, restX_));
    ScrollBy(VScroll1, WholePixels(-turn.y * step, restY_));
}

// The keys do what a press on a bar does. With a piece in the hand they do nothing.
void frmMain::Form_KeyDown(Key key) {
    if (PickedPiece >= 0) return;
    ScrollBar& bar = key == Key::Left || key == Key::Right ? HScroll1 : VScroll1;
    switch (key) {
        case Key::Left:
        case Key::Up:
            return ScrollBy(bar, -bar.SmallChange());
        case Key::Right:
        case Key::Down:
            return ScrollBy(bar, bar.SmallChange());
        case Key::PageUp:
            return ScrollBy(bar, -bar.LargeChange());
        case Key::PageDown:
            return ScrollBy(bar, bar.LargeChange());
        case Key::Home:
            return ScrollBy(bar, -bar.Max());
        case Key::End:
            return ScrollBy(bar, bar.Max());
        case Key::Escape:
            return;
    }
}

// X, Y are the board's own pixels, so after each step of the board they are again the grabbed point's.
// Each axis is judged alone; the far edges stop one pixel short.
void frmMain::PanTo(float X, float Y) {
    const std::optional<int16_t> newTop = CInt16(double(Y) - PanY + picScreen.Top());
    const std::optional<int16_t> newLeft = CInt16(double(X) - PanX + picScreen.Left());
    if (newTop && *newTop < 1 && *newTop > ScaleHeight() - picScreen.Height()) picScreen.SetTop(*newTop);
    if (newLeft && *newLeft < 1 && *newLeft > ScaleWidth() - picScreen.Width()) picScreen.SetLeft(*newLeft);
    VScroll1.SetValue(std::abs(picScreen.Top()));
    HScroll1.SetValue(std::abs(picScreen.Left()));
}

// It is always picStatus that moves. Returns when the button has gone up.
void frmMain::picStatus_MouseDown(int16_t /*Button*/, int16_t /*Shift*/, float /*X*/, float /*Y*/) {
    picStatus.DragAsWindow();
}

void frmMain::Picture1_MouseDown(int16_t /*Button*/, int16_t /*Shift*/, float /*X*/, float /*Y*/) {
    picStatus.DragAsWindow();
}

void frmMain::imgMaster_MouseDown(int16_t /*Button*/, int16_t /*Shift*/, float /*X*/, float /*Y*/) {
    picStatus_MouseDown(1, 1, 1, 1);
}
