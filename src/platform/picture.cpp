// Pictures from files. Decoding is the desktop's; what is not a regular file never reaches it.
#include "platform/picture.h"

#include "platform/desktop.h"
#include "platform/files.h"

namespace {

// A FIFO or a device must not be opened: the program would hang on it. A path that does
// not exist is the desktop's to refuse.
bool MayBeOpened(const std::string& path) { return IsRegularFile(path) || !(FileExists(path) || FolderExists(path)); }

}  // namespace

std::optional<Size> PictureSize(const std::string& path) {
    if (!MayBeOpened(path)) return std::nullopt;
    return TheDesktop().PictureSize(path);
}

void DoEventsDecoding(const std::string& path, Size atLeast, const std::function<bool()>& wanted) {
    if (MayBeOpened(path))
        TheDesktop().DoEventsDecoding(path, atLeast, wanted);
    else
        DoEvents();
}

std::optional<Picture> LoadPicture(const std::string& path, Size atLeast) {
    if (!MayBeOpened(path)) return std::nullopt;
    return TheDesktop().DecodePicture(path, atLeast);
}
