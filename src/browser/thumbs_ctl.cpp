// The thumbnail list: members, events, selection and persisted properties.
#include "browser/thumbs_ctl.h"

#include <algorithm>
#include <limits>

#include "core/game_state.h"
#include "platform/system/numbers.h"

namespace {
constexpr Color Grey = 0xC0C0C0;
constexpr Color DefaultBackColor = 0x808080;
constexpr Color DefaultForeColor = Grey;
constexpr Color Black = 0;

// Reads one property of the type T. False if something of another type is stored under its name.
template <typename T>
bool Read(const PropertyBag& bag, const std::string& name, T defaultValue, T& field) {
    const std::optional<PropertyBag::Value> value = bag.ReadProperty(name, defaultValue);
    const T* typed = value ? std::get_if<T>(&*value) : nullptr;
    if (!typed) return false;
    field = *typed;
    return true;
}
}  // namespace

ThumbsCtl::ThumbsCtl(std::string name, Label& waitLabel)
    : Control(std::move(name), ScaleMode::Twips), waitLabel_(waitLabel) {
    picFundo.SetBorder(Border::Single);
    scrThumbs.SetWidth(240);
    picInterior.SetAccessibleName("Miniaturas");
    scrThumbs.SetAccessibleName("Rolar miniaturas");
    AddChild(picFundo);
    picFundo.AddChild(picInterior);
    AddChild(scrThumbs);

    picInterior.FigureClick = [this](int Index) { imgFigura_Click(Index); };
    picInterior.FrameClick = [this](int Index) { lblFigura_Click(Index); };
    picInterior.FigureDblClick = [this](int Index) { imgFigura_DblClick(Index); };
    picInterior.FigureMouseDown = std::bind_front(&ThumbsCtl::imgFigura_MouseDown, this);
    picInterior.FigureMouseMove = std::bind_front(&ThumbsCtl::imgFigura_MouseMove, this);
    picInterior.FigureMouseUp = std::bind_front(&ThumbsCtl::imgFigura_MouseUp, this);
    picInterior.Wheel = scrThumbs.Wheel = [this](const WheelTurn& turn) { picInterior_Wheel(turn); };
    scrThumbs.Change = [this] { scrThumbs_Change(); };
    scrThumbs.Scroll = [this] { scrThumbs_Scroll(); };

    Files.push_back(std::make_shared<std::string>());
    ColumnCount = 1;
    BuildThumbs();
}

// --- Members ---------------------------------------------------------------------------

void ThumbsCtl::AddItem(std::string Caminho) {
    Files.push_back(std::make_shared<std::string>(std::move(Caminho)));
    BuildThumbs();
}

Color ThumbsCtl::BackColor() const { return picFundo.BackColor(); }

void ThumbsCtl::SetBackColor(const Color& cColor) {
    StoredBackColor = cColor;
    if (PropertyChanged) PropertyChanged("BackColor");
    picInterior.SetBackColor(StoredBackColor);
    picFundo.SetBackColor(StoredBackColor);
}

void ThumbsCtl::Clear() {
    picInterior.UnloadAll();
    Files.resize(1);  // Sizes stays as it is: each element is written again with its cell
    SelIndex = 0;
    HiliteIndex = 0;
    picInterior.SetWidth(picFundo.Width());
    picInterior.SetHeight(picFundo.Height());
    int32_t longest = CInt32(picInterior.Height() - picFundo.Height() + 200).value_or(0);
    const int32_t largeStep = CInt32(picInterior.Height() / 3).value_or(0);
    // A bar that stood further down moves here, which yields (scrThumbs_Change).
    SetBarRange(scrThumbs, longest, PuzzleModule::TileSize, largeStep);
}

void ThumbsCtl::SetColumnType(const int32_t& NewColumnType) {
    ColumnMode = NewColumnType;
    if (PropertyChanged) PropertyChanged("ColumnType");
}

Color ThumbsCtl::ForeColor() const { return picInterior.At(0).frame.backColor; }

void ThumbsCtl::SetForeColor(const Color& cColor) {
    StoredForeColor = cColor;
    if (PropertyChanged) PropertyChanged("ForeColor");
    for (int k = 0; k <= picInterior.UpperBound(); ++k) SetFrameColor(k, StoredForeColor);
}

std::string ThumbsCtl::ItemIndex() const { return std::to_string(SelIndex); }

std::optional<std::string> ThumbsCtl::ItemData(const int16_t& Index) const {
    if (!IsItem(Index)) return std::nullopt;
    return *Files[size_t(Index)];
}

int16_t ThumbsCtl::ListCount() const { return int16_t(std::min(LastItem(), int(std::numeric_limits<int16_t>::max()))); }

void ThumbsCtl::SetPath(std::string sPath) {
    StoredPath = std::move(sPath);
    if (PropertyChanged) PropertyChanged("Path");
}

// Part of the control's interface without an effect: nothing needs single items removed.
void ThumbsCtl::RemoveItem(int16_t /*Index*/) {}

// --- Selection and events --------------------------------------------------------------

void ThumbsCtl::SetFrameColor(int Index, Color color) {
    if (Index < 0 || Index > picInterior.UpperBound()) return;  // a frame that no longer exists is passed over
    picInterior.Change(Index).frame.backColor = color;
}

void ThumbsCtl::imgFigura_Click(int Index) {
    Store(SelIndex, Index);
    // Grey, whatever ForeColor says; with nothing highlighted so far this reaches the template.
    SetFrameColor(HiliteIndex, Grey);
    Store(HiliteIndex, Index);
    SetFrameColor(HiliteIndex, Black);
    std::optional<int16_t> PicIndex = CInt16(Index);
    if (!PicIndex || !IsItem(Index) || !ImageClick) return;
    const std::shared_ptr<std::string> Filename = Files[size_t(Index)];
    ImageClick(*PicIndex, *Filename);
}

void ThumbsCtl::lblFigura_Click(int Index) { imgFigura_Click(Index); }

void ThumbsCtl::imgFigura_DblClick(int Index) {
    std::optional<int16_t> PicIndex = CInt16(Index);
    if (!PicIndex) return;
    SelIndex = *PicIndex;
    if (!IsItem(Index) || !ImageDblClick) return;
    const std::shared_ptr<std::string> Filename = Files[size_t(Index)];
    ImageDblClick(*PicIndex, *Filename);
}

void ThumbsCtl::imgFigura_MouseDown(int Index, int16_t Button, int16_t Shift, float X, float Y) {
    RaiseItemMouse(ImageMouseDown, Index, Button, Shift, X, Y);
}

void ThumbsCtl::imgFigura_MouseMove(int Index, int16_t Button, int16_t Shift, float X, float Y) {
    RaiseItemMouse(ImageMouseMove, Index, Button, Shift, X, Y);
}

void ThumbsCtl::imgFigura_MouseUp(int Index, int16_t Button, int16_t Shift, float X, float Y) {
    RaiseItemMouse(ImageMouseUp, Index, Button, Shift, X, Y);
}

void ThumbsCtl::RaiseItemMouse(const ItemMouseHandler& event, int Index, int16_t Button, int16_t Shift, float X,
                               float Y) {
    std::optional<int16_t> PicIndex = CInt16(Index);
    if (!event || !PicIndex || !IsItem(Index)) return;
    std::string Filename = *Files[size_t(Index)];
    event(*PicIndex, Button, Shift, X, Y, Filename);
}

// --- Persisted properties --------------------------------------------------------------

void ThumbsCtl::UserControl_ReadProperties(const PropertyBag& PropBag) {
    if (Read<int32_t>(PropBag, "BackColor", DefaultBackColor, StoredBackColor)) {
        picInterior.SetBackColor(StoredBackColor);
        picFundo.SetBackColor(StoredBackColor);
    }
    if (Read<int32_t>(PropBag, "ForeColor", DefaultForeColor, StoredForeColor)) SetFrameColor(0, StoredForeColor);
    Read<std::string>(PropBag, "Path", {}, StoredPath);
    int32_t columns = 0;
    if (Read<int32_t>(PropBag, "Columns", 1, columns)) Store(ColumnCount, columns);
    Read<int32_t>(PropBag, "ColumnType", 0, ColumnMode);
    Read<bool>(PropBag, "ImageToolTip", true, ShowToolTips);
}

void ThumbsCtl::UserControl_WriteProperties(PropertyBag& PropBag) const {
    PropBag.WriteProperty("BackColor", StoredBackColor, DefaultBackColor);
    PropBag.WriteProperty("ForeColor", StoredForeColor, DefaultForeColor);
    PropBag.WriteProperty("Path", StoredPath, std::string());
    PropBag.WriteProperty("Columns", int32_t(ColumnCount), int32_t(1));
    PropBag.WriteProperty("ColumnType", ColumnMode, int32_t(0));
    PropBag.WriteProperty("ImageToolTip", ShowToolTips, true);
}
