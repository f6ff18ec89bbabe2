// Saving the game on the board, and taking a saved one up again.
//
// A saved game is read whole and checked, its picture included, before anything is stored: a file
// that cannot be played leaves the game on the board as it was. What the player sees follows from the
// header alone, whatever becomes of the pieces.
#include "browser/frm_thumbs.h"
#include "core/game_state.h"
#include "core/mask_strip.h"
#include "core/pieces.h"
#include "platform/system/desktop.h"
#include "platform/system/files.h"
#include "play/frm_main.h"
#include "shell/common_dialogs.h"

using namespace PuzzleModule;

namespace {

// Sorts the live pieces, so the next composition stacks them row by row. A failure is silent.
void SaveTo(const std::string& path) {
    if (!SortPieces()) return;
    const std::optional<SavedGame> game = GameToSave();
    const std::optional<std::string> bytes = game ? FormatSavedGame(*game) : std::nullopt;
    [[maybe_unused]] const bool written = bytes && WriteFileAtomically(path, *bytes);
}

std::optional<SavedGame> ReadSavedGame(const std::string& path) {
    const std::optional<std::string> bytes = ReadFile(path);
    return bytes ? ParseSavedGame(*bytes, &FileExists) : std::nullopt;
}

}  // namespace

void frmMain::mnuSaveGame_Click() {
    if (Busy() || Pieces.empty() || !ReleaseHold()) return;
    Timer1.SetEnabled(false);
    ModCmnDlg::PrepareSavedGameDialog();
    ModCmnDlg::ShowSave();
    const std::string& chosen = ModCmnDlg::FileDialogRec.FileName;
    if (!chosen.empty()) {
        SetPointer(MousePointer::Hourglass);
        SaveTo(ModCmnDlg::WithSavedGameExtension(chosen));
    }
    SetPointer(MousePointer::Default);
    Timer1.SetEnabled(GameRunning);
}

// The clock of the running game goes on while the dialog is open.
void frmMain::mnuLoadGame_Click() {
    if (Busy() || !ReleaseHold()) return;
    ModCmnDlg::PrepareSavedGameDialog();
    ModCmnDlg::ShowOpen();
    const std::string chosen = ModCmnDlg::FileDialogRec.FileName;
    if (!chosen.empty()) RestoreGame(chosen);
    SetPointer(MousePointer::Default);
    Timer1.SetEnabled(GameRunning);
}

// Pointer and clock are put right by the caller.
void frmMain::RestoreGame(const std::string& Path) {
    if (Busy()) return;
    const Working building(*this, Task::Building);

    picStatus.SetVisible(false);
    Timer1.SetEnabled(false);
    SetPointer(MousePointer::Hourglass);
    const std::optional<SavedGame> game = ReadSavedGame(Path);
    if (!game) return;
    if (!FileExists(game->PicturePath)) {
        MsgBox("O arquivo " + game->PicturePath + " não foi encontrado");
        return;
    }

    ClearBoard();
    Centralize();
    SetState(WindowState::Maximized);
    const std::optional<Fit> fit = FitOfPieces(*game, ScreenSize().value_or(Size{}));
    const std::optional<NewGame> plan = PlanGame(game->PicturePath, fit ? fit : FitOfHeader(*game));
    if (plan && plan->fit.TooSmall(game->Sizes.CellSize)) MsgBox("A imagem selecionada é muito pequena!", Critical);
    if (!plan || !fit) return;

    ElapsedSeconds = game->ElapsedSeconds;
    PicturePath = BoardPicturePath = game->PicturePath;
    ChosenLevel = GameLevel = game->GameLevel;
    SetSizes(game->Sizes);
    TakeOver(*plan, false);
    SetState(WindowState::Maximized);
    frmThumbs::SetSize(*plan->picture, Picture1, imgMaster);
    ShowMiniature();
    DoEvents(Yield::PaintsAndTimers);  // the clock is off and input is discarded: nothing looks at the old pieces
    CutPieces(Surfaces.picMaster, Surfaces.picMasks[1], Surfaces.picPat);
    LayOutSavedPieces(*game);
    PickedPiece = -1;
    ComposeBoard();
    RunGame();
}

// The pieces come upright and in row-major order from the cutting; each is turned until it stands
// as it was saved, which brings its outline along.
void frmMain::LayOutSavedPieces(const SavedGame& game) {
    for (const SavedPiece& saved : game.Pieces) {
        PieceRec& piece = Pieces[size_t(saved.PieceId)];
        piece.X = saved.X;
        piece.Y = saved.Y;
        while (piece.Rotation != saved.Rotation) RotatePiece(saved.PieceId, Surfaces.picTmp);
    }
}
