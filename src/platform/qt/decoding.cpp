// Pictures decoded between the events.
#include <QCoreApplication>

#include "platform/qt/desktop.h"
#include "platform/qt/pictures/picture_file.h"

std::optional<Size> QtDesktop::PictureSize(const std::string& path) { return ReadPictureSize(path); }

// The decoding lets the events in as it goes. They may bring anything, another scan with its own decoding among it:
// everything of this one stands on the stack, and it goes on when they are through.
void QtDesktop::DoEventsDecoding(const std::string& path, Size atLeast, const std::function<bool()>& wanted) {
    decoded_.reset();
    Pace pace([&wanted] {
        QCoreApplication::processEvents();
        return !wanted || wanted();
    });
    std::optional<Picture> picture = ReadPicture(path, atLeast, pace);
    DoEvents(Yield::Everything);
    decoded_.reset();
    if (!wanted || wanted()) decoded_ = Decoded{path, atLeast, std::move(picture)};
}

std::optional<Picture> QtDesktop::DecodePicture(const std::string& path, Size atLeast) {
    std::optional<Decoded> ready = std::move(decoded_);
    decoded_.reset();
    if (ready && ready->path == path && ready->atLeast == atLeast) return std::move(ready->picture);
    return ReadPicture(path, atLeast);
}
