// From a folder to cells: the scan, the decoding of one picture at a time, the drawn
// thumbnail and its tooltip.
//
// There is no store of thumbnails. A scan decodes every picture anew, and what stays of
// one is what was drawn on its cell.
#include <array>

#include "browser/thumbs_ctl.h"
#include "core/game_state.h"
#include "platform/controls/form.h"
#include "platform/system/desktop.h"
#include "platform/system/files.h"
#include "platform/system/numbers.h"

namespace {
constexpr int16_t BoxWidth = 1635, BoxHeight = 1500;     // a thumbnail touches this box on one side
constexpr double UnitsPerShownPixel = 26.4586148648649;  // not 2540/96: a size text may read one pixel less
constexpr float SecondsBeforeWaitLabel = 0.4f;

// A picture's own size in whole units of 0.01 mm.
double Units(int pixels) { return CInt(pixels * HimetricPerPixel); }

// Pixels of a figure's side.
int PixelsOf(double twips, double scale) { return int(CInt(twips / TwipsPerPixel * scale)); }

std::string ShownPixels(double units) { return std::to_string(int64_t(Fix(units / UnitsPerShownPixel))); }

// True of a name whose last four characters are those of a picture file.
bool IsPictureName(const std::string& name) {
    constexpr std::array<std::string_view, 3> Endings{".BMP", ".GIF", ".JPG"};
    if (name.size() < 4) return false;
    std::string ending = name.substr(name.size() - 4);
    for (char& c : ending)
        if (c >= 'a' && c <= 'z') c = char(c - 'a' + 'A');
    for (const std::string_view known : Endings)
        if (ending == known) return true;
    return false;
}
}  // namespace

// Adds every picture of the folder. Each turn of the loop yields twice, in AddItem and at
// its end, there for as long as the next picture takes to decode: the player may select,
// start a game, close the dialog (both make ThumbsOpen false) or change the folder
// meanwhile. A new scan takes the one listing over and runs to its end within the yield;
// this one then has nothing left to read.
void ThumbsCtl::ScanPath(std::string& Path) {
    if (Path.empty() || Path.back() != PathSeparator) Path += PathSeparator;
    // The clock is read from the start of the scan, so that 32-bit floats hold its fractions.
    const double start = SteadySeconds();
    std::optional<std::string> name = FirstEntry(Path);
    const uint64_t listing = ListingNumber();
    const auto overtaken = [listing] { return ListingNumber() != listing; };
    const auto goesOn = [&overtaken] { return PuzzleModule::ThumbsOpen && !overtaken(); };

    while (name && !name->empty() && goesOn()) {
        if (*name != "." && *name != ".." && IsPictureName(*name)) {
            AddItem(Path + *name);
            if (overtaken()) break;
            if (float(SteadySeconds() - start) >= SecondsBeforeWaitLabel) waitLabel_.SetVisible(true);
        }
        name = NextEntry();
        if (name && IsPictureName(*name))
            DoEventsDecoding(Path + *name, BoxPixels(), goesOn);
        else
            DoEvents();
    }
    waitLabel_.SetVisible(false);
}

// Walks on from the first missing cell; the cells before it are neither drawn again nor moved.
//
// The yield at the end of each cell can change everything: the list may be emptied and
// filled anew, its cells then are in place or `k` lies beyond them.
void ThumbsCtl::BuildThumbs() {
    Scroller = std::make_unique<cPicScroll>();
    if (LastItem() == 0) return;
    const int cols = ColumnsNow();
    if (cols < 1) return;

    for (int k = picInterior.UpperBound() + 1; k <= LastItem(); ++k) {
        if (picInterior.UpperBound() >= k) continue;
        BuildCell(k, cols);
        DoEvents();
        if (FormIsGone()) return;  // closed meanwhile: nobody will see further cells
    }
    SizeSheet(cols);
}

bool ThumbsCtl::FormIsGone() {
    const Form* form = OwnerForm();
    return form && form->IsUnloaded();
}

void ThumbsCtl::BuildCell(int k, int cols) {
    while (picInterior.UpperBound() < k) picInterior.Load();
    if (Sizes.size() <= size_t(k)) Sizes.resize(size_t(k) + 1);
    LoadOriginal(k);
    Sizes[size_t(k)] = SizeText();
    FitThumb(BoxHeight, BoxWidth);
    DrawThumb(CInt16(imgTeste2Width).value_or(BoxWidth), CInt16(imgTeste2Height).value_or(BoxHeight), k);
    PlaceCell(k, cols);
    if (!ShowToolTips)
        SetToolTips(k, {});
    else if (const std::optional<std::string> text = ToolTipFor(k))
        SetToolTips(k, *text);
}

// For a file that does not decode stands the picture before it.
void ThumbsCtl::LoadOriginal(int k) {
    if (auto picture = LoadPicture(*Files[size_t(k)], BoxPixels())) picOriginal = std::move(picture);
}

std::string ThumbsCtl::SizeText() const {
    const Size natural = picOriginal ? picOriginal->Natural : Size{};
    return ShownPixels(Units(natural.width)) + " x " + ShownPixels(Units(natural.height));
}

// Gives imgTeste2 the picture's proportions inside the box; smaller pictures grow.
void ThumbsCtl::FitThumb(int16_t MaxHeight, int16_t MaxWidth) {
    if (!picOriginal) return;
    const double PW = Units(picOriginal->Natural.width), PH = Units(picOriginal->Natural.height);
    double &width = imgTeste2Width, &height = imgTeste2Height;
    height = PH;
    width = PW;
    if (PH > PW) {
        height = MaxHeight;
        width = width / (PH / height);
        if (width > MaxWidth) {
            width = MaxWidth;
            height = PH / (PW / width);
        }
    } else if (PW > PH) {
        width = MaxWidth;
        height = height / (PW / width);
        if (height > MaxHeight) {
            height = MaxHeight;
            width = PW / (PH / height);
        }
    } else {
        height = MaxHeight;
        width = width / (PH / height);
    }
}

// The box in pixels of the display.
Size ThumbsCtl::BoxPixels() { return {PixelsOf(BoxWidth, ScreenScale()), PixelsOf(BoxHeight, ScreenScale())}; }

// Draws the last picture, stretched over the figure; what is thinner than a pixel is nothing. Without one the figure
// stays blank.
void ThumbsCtl::DrawThumb(int16_t W, int16_t H, int Index) {
    CellSheet::Figure& figure = picInterior.Change(Index).figure;
    figure.width = W;
    figure.height = H;
    const double scale = PixelsPerUnit(Index);
    const Size pixels{PixelsOf(W, scale), PixelsOf(H, scale)};
    figure.image = picOriginal ? Stretched(picOriginal->Image, pixels)
                               : Surface(pixels.width, pixels.height, ToPixel(ResolveColor(ButtonFaceColor)));
}

// "praia.jpg (245k) - 800 x 599". Nothing if the file is gone.
std::optional<std::string> ThumbsCtl::ToolTipFor(int k) const {
    const std::string& path = *Files[size_t(k)];
    const std::optional<int64_t> bytes = FileLen(path);
    if (!bytes || Sizes.size() <= size_t(k)) return std::nullopt;
    return FileTitle(path) + " (" + std::to_string(*bytes / 1024) + "k) - " + Sizes[size_t(k)];
}

void ThumbsCtl::SetToolTips(int k, const std::string& text) {
    if (k > picInterior.UpperBound()) return;
    CellSheet::Cell& cell = picInterior.Change(k);
    cell.figure.toolTip = text;
    cell.frame.toolTip = text;
}

void ThumbsCtl::SetImageToolTip(bool newToolTipImg) {
    ShowToolTips = newToolTipImg;
    for (int k = 1; k <= LastItem(); ++k) {
        if (!ShowToolTips) {
            SetToolTips(k, {});
            continue;
        }
        if (Files[size_t(k)]->empty()) break;
        if (const std::optional<std::string> text = ToolTipFor(k)) SetToolTips(k, *text);
    }
}
