// What passes between the game and the desktop's dialogs.
#include "shell/common_dialogs.h"

#include <algorithm>

#include "core/code_page.h"
#include "core/game_state.h"
#include "platform/drawing/pixel.h"
#include "platform/system/desktop.h"
#include "platform/system/files.h"
#include "platform/system/user_settings.h"
#include "shell/settings.h"
#include "shell/text_helpers.h"

namespace ModCmnDlg {

FileDialogRecord FileDialogRec;
std::array<Color, 16> CustomColors{};

namespace {

constexpr Color White = 0xFFFFFF;

// The pairs of `filter`: text NUL pattern NUL ...
std::vector<FileDialogRequest::Filter> PairsOf(const std::string& filter) {
    const std::vector<std::string> parts = vb5::Split(filter, std::string(1, '\0'));
    std::vector<FileDialogRequest::Filter> pairs;
    for (size_t i = 1; i < parts.size(); i += 2) pairs.push_back({parts[i - 1], parts[i]});
    return pairs;
}

// A text as it comes out of a buffer padded with blanks: leading ones are lost with the padding.
std::string FromBuffer(const std::string& text) {
    const size_t start = text.find_first_not_of(' ');
    return start == std::string::npos ? std::string() : TrimNull(text.substr(start));
}

void ShowFileDialog(bool save) {
    FileDialogRequest request;
    request.save = save;
    request.title = FileDialogRec.DialogTitle;
    request.folder = FileDialogRec.InitDir;
    request.filters = PairsOf(vb5::Replace(FileDialogRec.Filter, "|", std::string(1, '\0')));
    request.filterIndex = FileDialogRec.FilterIndex;
    request.flags = FileDialogRec.Flags;

    const std::optional<std::string> path = TheDesktop().FileDialog(request);
    if (!path || FirstCharacters(*path, PathCapacity - 1).size() < path->size()) return;
    FileDialogRec.FileName = FromBuffer(*path);
    FileDialogRec.FileTitle = FromBuffer(FileTitle(*path));
    FileDialogRec.FilterIndex = request.filterIndex;
}

void ReadCustomColors() {
    const std::string stored = GetSetting(AppEXEName(), "cDialog", "RegColors", "Key");
    CustomColors = ColorsOf(stored == "Key" ? "" : stored);
}

// What the screen shows of a colour: one of the desktop's own is looked up, bits beyond the 24 have no meaning.
Color ShownColor(Color color) { return ToColor(ToPixel(ResolveColor(color))); }

}  // namespace

std::array<Color, 16> ColorsOf(const std::string& text) {
    std::array<Color, 16> colors{};
    colors.fill(White);
    const std::vector<std::string> fields = vb5::Split(text, ",");
    for (size_t i = 0; i < colors.size() && i < fields.size(); ++i) colors[i] = ToInteger(fields[i]).value_or(White);
    return colors;
}

std::string TextOf(const std::array<Color, 16>& colors) {
    std::string joined;
    for (const Color color : colors) joined.append(joined.empty() ? "" : ",").append(std::to_string(color));
    return joined;
}

void ShowOpen() { ShowFileDialog(false); }

void ShowSave() { ShowFileDialog(true); }

void PrepareSavedGameDialog() {
    const std::string folder = PuzzleModule::AppFolder + "Save";
    // A folder that can't be made is passed over; the dialog opens where it can.
    if (!FolderExists(folder)) (void)MkDir(folder);
    FileDialogRec.InitDir = folder;
    FileDialogRec.FileName.clear();
    FileDialogRec.Filter = "Fento-Lira (*.pzl)|*.pzl";
    FileDialogRec.Flags = OFN_READONLY | OFN_HIDEREADONLY;
}

Color ShowColor(Form& /*Owner: the desktop's dialogs belong to its active window*/, Color InitialColor, bool FullOpen) {
    ReadCustomColors();
    std::array<Color, 16> shown{};
    std::ranges::transform(CustomColors, shown.begin(), ShownColor);
    std::array<Color, 16> chosen = shown;
    const Color result = TheDesktop().ColorDialog(ShownColor(InitialColor), FullOpen, chosen).value_or(-1);
    // A colour that the player has left alone goes back as it was stored.
    for (size_t i = 0; i < chosen.size(); ++i)
        if (chosen[i] != shown[i]) CustomColors[i] = chosen[i];
    (void)SaveSetting(AppEXEName(), "cDialog", "RegColors", TextOf(CustomColors));
    return result;
}

std::string TrimNull(const std::string& Text) { return Text.substr(0, Text.find('\0')); }

std::string ChangeExtension(const std::string& FileName, std::string& Extension) {
    const int16_t dot = vb5::InStrRev(FileName, ".");
    if (!Extension.empty()) Extension.insert(Extension.begin(), '.');
    return (dot > 0 ? std::string(FirstCharacters(FileName, size_t(dot) - 1)) : FileName) + Extension;
}

std::string WithSavedGameExtension(const std::string& path) {
    const std::string name = FileTitle(path);
    std::string extension = "pzl";
    // A name without a dot is kept whole, so one call serves both cases.
    return path.substr(0, path.size() - name.size()) + ChangeExtension(name, extension);
}

}  // namespace ModCmnDlg
