// Pictures from files. Decoding is the desktop's; what is not a regular file never reaches it.
#include "platform/drawing/picture.h"

#include <cassert>

#include "platform/drawing/picture_decoder.h"
#include "platform/system/desktop.h"
#include "platform/system/files.h"

namespace {

PictureDecoder* current = nullptr;

PictureDecoder& TheDecoder() {
    assert(current);
    return *current;
}

// A FIFO or a device must not be opened: the program would hang on it. A path that does
// not exist is the desktop's to refuse.
bool MayBeOpened(const std::string& path) { return IsRegularFile(path) || !(FileExists(path) || FolderExists(path)); }

}  // namespace

void InstallPictureDecoder(PictureDecoder* decoder) { current = decoder; }

std::optional<Size> PictureSize(const std::string& path) {
    if (!MayBeOpened(path)) return std::nullopt;
    return TheDecoder().PictureSize(path);
}

void DoEventsDecoding(const std::string& path, Size atLeast, const std::function<bool()>& wanted) {
    if (MayBeOpened(path))
        TheDecoder().DoEventsDecoding(path, atLeast, wanted);
    else
        DoEvents();
}

std::optional<Picture> LoadPicture(const std::string& path, Size atLeast) {
    if (!MayBeOpened(path)) return std::nullopt;
    return TheDecoder().DecodePicture(path, atLeast);
}
