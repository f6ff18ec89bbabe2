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

}  // namespace

void frmMain::HScroll1_Change() { picScreen.SetLeft(-int(HScroll1.Value())); }

void frmMain::HScroll1_Scroll() { HScroll1_Change(); }

void frmMain::VScroll1_Change() { picScreen.SetTop(-int(VScroll1.Value())); }

void frmMain::VScroll1_Scroll() { VScroll1_Change(); }

void frmMain::picScreen_Wheel(int notchesX, int notchesY) {
    const int step = CellSize > 0 ? CellSize : StepWithoutGame;
    if (notchesX != 0) ScrollBy(HScroll1, double(-notchesX) * step);
    if (notchesY != 0) ScrollBy(VScroll1, double(-notchesY) * step);
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
