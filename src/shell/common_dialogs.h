// The desktop's dialogs for opening and saving a file and for choosing a colour.
#pragma once
#include <array>
#include <cstdint>
#include <string>

#include "platform/system/color.h"

class Form;

namespace ModCmnDlg {

// Parameters and results of the file dialogs. Callers fill it, empty FileName, call, and take an empty
// FileName afterwards to mean that nothing was chosen.
struct FileDialogRecord {
    Form* hwndOwner = nullptr;
    std::string Filter;       // pairs of text and pattern, all separated by "|"
    std::string FileTitle;    // out: the file's name without its folder
    int32_t FilterIndex = 0;  // in and out: the pair in use, from 1
    std::string FileName;     // out: full path
    std::string InitDir;
    std::string DialogTitle;  // empty: the desktop's own
    int32_t Flags = 0;        // FileDialogFlags
};
extern FileDialogRecord FileDialogRec;

inline constexpr size_t PathCapacity = 255;  // characters with the closing NUL: a longer path counts as a cancel

void ShowOpen();
void ShowSave();

// Makes the record ready for a saved game: folder AppFolder + "Save" (made if missing), filter, flags,
// empty FileName.
void PrepareSavedGameDialog();

// The chosen colour, or -1 on cancel. The sixteen custom colours come from the per-user store and go back
// there, on cancel too.
Color ShowColor(Form& Owner, Color InitialColor, bool FullOpen);
extern std::array<Color, 16> CustomColors;

// The custom colours as they are stored: numbers joined by ",". One that is missing or no number is white.
std::array<Color, 16> ColorsOf(const std::string& text);
std::string TextOf(const std::array<Color, 16>& colors);

// `Text` up to its first NUL.
std::string TrimNull(const std::string& Text);

// `FileName` with what follows its last "." replaced; the caller's `Extension` gets its ".".
std::string ChangeExtension(const std::string& FileName, std::string& Extension);

// A path in the same folder whose name ends in ".pzl"; only the file's own name decides.
std::string WithSavedGameExtension(const std::string& path);

}  // namespace ModCmnDlg
