// A new game from a picture, and the restart of the game on the board.
//
// Everything about a new game is worked out before anything of it is stored, so that a picture
// that cannot be played leaves the pieces on the board with their own sizes, strip and grid.
#include <algorithm>

#include "browser/frm_thumbs.h"
#include "core/game_state.h"
#include "core/mask_strip.h"
#include "core/pieces.h"
#include "core/scatter.h"
#include "platform/controls/window_system.h"
#include "platform/drawing/raster.h"
#include "platform/system/desktop.h"
#include "platform/system/numbers.h"
#include "play/frm_main.h"

using namespace PuzzleModule;

// The dialog reads the new sizes, so they are set at once. The game on the board goes on behind it; if no game comes of
// it, its sizes come back. Another dialog may have come and gone in the yields of this one.
void frmMain::mnuNewGame_Click(int16_t Index) {
    const std::optional<LevelSizes> sizes = SizesOfLevel(Index, ScreenWidthPx);
    if (Busy() || !sizes || !ReleaseHold()) return;
    ChosenLevel = Index;
    SetSizes(*sizes);
    frmThumbs dialog(
        Skin1, [this, &dialog](const std::string& Filename) { StartGame(Filename, [&dialog] { dialog.Hide(); }); });
    // At once: the window behind is in front for the rest of a yield in which the dialog closes.
    dialog.OnUnload = [this, &dialog] {
        dialog.Form_Unload();
        SetSizes(boardSizes_);
    };
    dialog.Show(Modality::Modal);
}

bool frmMain::StartGame(const std::string& Filename, const Handler& hideDialog) {
    if (Busy()) return false;
    const Working building(*this, Task::Building);

    picStatus.SetVisible(false);
    if (hideDialog) hideDialog();
    DoEvents(Yield::PaintsAndTimers);  // the dialog disappears; only the clock of the old game may tick
    SetPointer(MousePointer::Hourglass);
    ThumbsOpen = false;
    PicturePath = Filename;

    ClearBoard();
    DoEvents(Yield::PaintsAndTimers);  // the cleared board paints
    Centralize();
    Timer1.SetEnabled(false);

    const std::optional<NewGame> game = PlanNewGame(Filename);
    const bool tooSmall = game && game->fit.TooSmall(CellSize);
    if (tooSmall) MsgBox("A imagem selecionada é muito pequena!", Critical);
    if (game && !tooSmall) {
        SetState(WindowState::Maximized);  // before anything is stored: paints, ticks and a resize may come
        ElapsedSeconds = 0;
        GameLevel = ChosenLevel;
        BoardPicturePath = Filename;
        TakeOver(*game, true);
        CutPieces(Surfaces.picMaster, Surfaces.picMasks[1], Surfaces.picPat);
        PickedPiece = -1;
        ScatterAndCompose();
        RunGame();
        frmThumbs::SetSize(*game->picture, Picture1, imgMaster);
        ShowMiniature();
    }
    SetPointer(MousePointer::Default);
    return game && !tooSmall;
}

// Decodes the picture no larger than it will be painted, on picMaster or in the miniature.
std::optional<frmMain::NewGame> frmMain::PlanGame(const std::string& path, const std::optional<Fit>& fit) {
    const std::optional<Size> natural = ::PictureSize(path);
    if (!fit || !natural) return std::nullopt;
    const std::optional<MiniatureFit> miniature = FitMiniature(*natural, MiniaturePanel.width, MiniaturePanel.height);
    if (!miniature) return std::nullopt;
    const Density density = DensityOf(*this);
    const Size atLeast{std::max<int>(fit->PictureWidth, int(miniature->Width) + 1),
                       std::max<int>(fit->PictureHeight, int(miniature->Height) + 1)};
    std::optional<Picture> picture = LoadPicture(path, density.Pixels(atLeast));
    if (!picture) return std::nullopt;
    return NewGame{*fit, density, std::make_shared<const Picture>(std::move(*picture))};
}

std::optional<frmMain::NewGame> frmMain::PlanNewGame(const std::string& path) {
    const std::optional<Size> natural = ::PictureSize(path), screen = ScreenSize();
    if (!natural || !screen) return std::nullopt;
    return PlanGame(path, FitNewGame(*natural, CellSize, screen->width, screen->height));
}

// The screen as it is now, in whole pixels.
std::optional<Size> frmMain::ScreenSize() {
    Desktop& desktop = TheDesktop();
    const std::optional<int16_t> sw = CInt16(desktop.ScreenWidth() / desktop.ScreenTwipsPerPixelX());
    const std::optional<int16_t> sh = CInt16(desktop.ScreenHeight() / desktop.ScreenTwipsPerPixelY());
    if (!sw || !sh) return std::nullopt;
    return Size{*sw, *sh};
}

void frmMain::ClearBoard() {
    picScreen.Image.Cls();
    picScreen.Image.Refresh();
}

// Stores grid and picture of a game that was accepted, at the sizes now set: strip, picMaster.
void frmMain::TakeOver(const NewGame& game, bool framed) {
    const Fit& fit = game.fit;
    boardSizes_ = CurrentSizes();
    GridCols = fit.GridCols;
    GridRows = fit.GridRows;
    PictureWidth = fit.PictureWidth;
    PictureHeight = fit.PictureHeight;
    ScaleMasks(TileSize);
    Surfaces.PicTemp = game.picture;
    Surfaces.SetDensity(game.density);
    picScreen.Image.SetDensity(game.density);
    Surfaces.picMaster.Resize(fit.MasterWidth, fit.MasterHeight);
    Surfaces.picMaster.Cls();
    if (framed) PaintPicture(Surfaces.picMaster, fit.FrameRect(), Surfaces.PicBranco);
    PaintPicture(Surfaces.picMaster, fit.PictureRect(), game.picture->Image);
}

// On the part of the board in view now. In a window on a monitor larger than the primary screen the board
// can end before the window does: a piece laid out beside it would be lost.
void frmMain::ScatterAndCompose() {
    const double width = std::min(ScaleWidth(), picScreen.Left() + picScreen.Width());
    const ScatterView view{picScreen.Left(), picScreen.Top(), width, Surfaces.picMaster.Width(),
                           Surfaces.picMaster.Height()};
    ScatterPieces(view, Surfaces.picTmp);
    ComposeBoard();
}

void frmMain::RunGame() {
    PickedPiece = -1;
    GameRunning = true;
    Timer1.SetEnabled(GameRunning);
}

void frmMain::ShowMiniature() {
    imgMaster.SetPicture(Surfaces.PicTemp);
    if (mnuStatus->Checked()) picStatus.SetVisible(true);
}

// The same picture, scattered anew; the pieces keep the turns they have and may get more.
void frmMain::mnuShuffle_Click() {
    if (Busy() || Pieces.empty() || !ReleaseHold()) return;
    const auto answer = MsgBox("Tem certeza de que deseja reiniciar este jogo do começo?", YesNo | Question);
    if (answer != MsgBoxResult::Yes) return;
    SetPointer(MousePointer::Hourglass);
    ScatterAndCompose();
    ElapsedSeconds = 0;
    GameRunning = true;
    SetPointer(MousePointer::Default);
    Timer1.SetEnabled(true);
}
