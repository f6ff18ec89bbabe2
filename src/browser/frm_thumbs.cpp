// The picture dialog: drives and folders on the left, the thumbnails of the current folder
// on the right, a ring and a text that show a running scan.
//
// A scan runs inside Form_Activate or a list's Change and yields, so every handler here
// can run within it: another folder, a start, the end of the dialog. All of them stand on
// the stack of the command that opened the dialog and have returned before it goes.
#include "browser/frm_thumbs.h"

#include <array>

#include "core/fitting.h"
#include "core/game_state.h"
#include "platform/system/desktop.h"
#include "platform/system/files.h"
#include "platform/system/numbers.h"

namespace {
constexpr double ClientWidth = 10650, ClientHeight = 3990;
constexpr Color White = 0xFFFFFF;
}  // namespace

frmThumbs::frmThumbs(Skin& skin, Chosen startGame)
    : Form("frmThumbs", "Busca Imagens", ScaleMode::Twips, FormBorder::FixedDialog),
      skin_(skin),
      startGame_(std::move(startGame)) {
    SetBackColor(WindowColor);
    Place(0, 0, ClientWidth, ClientHeight);
    CenterOnScreen();
    BuildControls();
    BindHandlers();
}

void frmThumbs::BuildControls() {
    struct Row {
        Control& control;
        double left, top, width, height;
    };
    // In tab order.
    const std::array<Row, 7> table{{
        {Drive1, 105, 90, 2715, 315},
        {Dir1, 105, 405, 2685, 3015},
        {cmdVoltar, 8175, 3555, 1125, 345},
        {ThumbsCtl1, 2835, 60, 7650, 3420},
        {ucFirefoxWait1, 195, 3585, 240, 240},
        {Label1, 540, 3585, 1815, 210},
        {Command1, 9360, 3540, 1125, 345},
    }};

    PropertyBag thumbs, wait;
    thumbs.WriteProperty("BackColor", White, int32_t(0x808080));
    ThumbsCtl1.UserControl_ReadProperties(thumbs);
    wait.WriteProperty("BackColor", White, int32_t(0));
    ucFirefoxWait1.UserControl_ReadProperties(wait);
    Label1.SetCaption("Por favor, Aguarde...");
    Label::LabelLook look = Label1.Look();
    look.font = {8.25, true, false};
    Label1.SetLook(look);
    Label1.SetVisible(false);
    Drive1.SetAccessibleName("Unidades e lugares");
    if (const std::optional<std::string> pictures = GamePictures())
        Drive1.AddPlace({*pictures, "Imagens do jogo", Volume::Kind::GamePictures});
    Dir1.SetAccessibleName("Pastas");

    for (size_t i = 0; i < table.size(); ++i) {
        const Row& row = table[i];
        AddChild(row.control);
        row.control.SetTabIndex(int(i));
        row.control.Place(row.left, row.top, row.width, row.height);
    }
    // The keys reach the thumbnails through their bar.
    ThumbsCtl1.scrThumbs.SetTabIndex(ThumbsCtl1.TabIndex());
}

void frmThumbs::BindHandlers() {
    OnLoad = [this] { ucFirefoxWait1.UserControl_Show(); };
    OnActivate = [this] { Form_Activate(); };
    OnUnload = [this] { Form_Unload(); };
    // Known by its content: any of the three formats, whatever its name.
    TakesFile = [](const std::string& Path) { return PictureSize(Path).has_value(); };
    FileDropped = [this](const std::string& Path) { Form_DropFile(Path); };
    Drive1.Change = [this] { Drive1_Change(); };
    Dir1.Change = [this] { Dir1_Change(); };
    ThumbsCtl1.ImageDblClick = [this](int16_t& PicIndex, std::string& Filename) { StartGame(PicIndex, Filename); };
    Command1.Click = [this] { Command1_Click(); };
    cmdVoltar.Click = [this] { cmdVoltar_Click(); };
}

// Yields once by itself, and all through the scan that a change of drive or folder starts.
void frmThumbs::Form_Activate() {
    PuzzleModule::ThumbsOpen = true;
    skin_.ApplySkin(*this);
    DoEvents();
    if (IsUnloaded()) return;  // closed before it stood
    // Straight to the folder, so that no other is scanned before it; the drive list follows.
    const std::optional<std::string> pictures = GamePictures();
    if (!pictures || !Dir1.SetPath(*pictures)) Drive1.SetDrive(PuzzleModule::AppFolder);  // raises Change if it moves
}

std::optional<std::string> frmThumbs::GamePictures() {
    const std::optional<std::string> folder = FindIgnoringCase(PuzzleModule::AppFolder, "Imagens");
    return folder && FolderExists(*folder) ? folder : std::nullopt;
}

// A drive that is refused leaves the folder list where it stands.
void frmThumbs::Drive1_Change() {
    if (!Dir1.SetPath(Drive1.Drive())) Drive1.Follow(Dir1.Path());
}

// Can run inside itself: a further change of folder comes in at the yield here, at that of Clear (a bar
// that moves back) or at one of the scan's. The inner scan ends first, and the outer one stops then or,
// where it has not begun, is not needed.
void frmThumbs::Dir1_Change() {
    Drive1.Follow(Dir1.Path());
    DoEvents();
    ucFirefoxWait1.PlayWait();
    ThumbsCtl1.Clear();
    if (ThumbsCtl1.ListCount() == 0) {
        std::string folder = Dir1.Path();
        ThumbsCtl1.ScanPath(folder);
    }
    ucFirefoxWait1.StopWait();
}

void frmThumbs::Command1_Click() {
    int16_t PicIndex = 0;
    Store(PicIndex, std::stoi(ThumbsCtl1.ItemIndex()));
    std::string Filename = ThumbsCtl1.ItemData(PicIndex).value_or("");
    if (Filename.empty()) {
        // "imagemna" is how the message reads.
        MsgBox("Primeiro selecione uma imagemna lista");
        return;
    }
    StartGame(PicIndex, Filename);
}

void frmThumbs::cmdVoltar_Click() { Unload(); }

// A picture from anywhere, as if it had been double-clicked; it is on no list.
void frmThumbs::Form_DropFile(const std::string& Path) {
    int16_t PicIndex = 0;
    std::string Filename = Path;
    StartGame(PicIndex, Filename);
}

void frmThumbs::Form_Unload() { PuzzleModule::ThumbsOpen = false; }

void frmThumbs::StartGame(int16_t& /*PicIndex*/, std::string& Filename) {
    startGame_(Filename);
    Unload();
}

void frmThumbs::SetSize(const Picture& PicTemp, const PictureBox& Picture1, Image& imgMaster) {
    const std::optional<PuzzleModule::MiniatureFit> fit =
        PuzzleModule::FitMiniature(PicTemp.Natural, Picture1.Width(), Picture1.Height());
    if (fit) imgMaster.Place(fit->Left, fit->Top, fit->Width, fit->Height);
}
