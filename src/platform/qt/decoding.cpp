// Pictures decoded beside the events: a thread of its own does nothing else, one picture after the other.
#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <algorithm>
#include <atomic>

#include "platform/qt/desktop.h"
#include "platform/qt/pictures/picture_file.h"

struct QtDesktop::Decoding {
    std::function<bool()> wanted;
    std::stop_source stop;
    std::atomic<bool> done = false;
    std::optional<Picture> picture;  // its own thread's until it is done
};

std::optional<Size> QtDesktop::PictureSize(const std::string& path) { return ReadPictureSize(path); }

// What is under way further down the stack and has been overtaken gives its memory back now.
void QtDesktop::DropUnwanted() {
    for (const std::shared_ptr<Decoding>& decoding : decodings_) {
        if (!decoding->wanted || decoding->wanted()) continue;
        decoding->stop.request_stop();
        if (decoding->done) decoding->picture.reset();
    }
}

// The events that come meanwhile may bring anything, another scan with its own decoding among it: that one then waits
// for this one's end.
void QtDesktop::DoEventsDecoding(const std::string& path, Size atLeast, const std::function<bool()>& wanted) {
    DropUnwanted();
    decoded_.reset();
    const auto decoding = std::make_shared<Decoding>();
    decoding->wanted = wanted;
    decodings_.push_back(decoding);
    decoder_.start([decoding, path, atLeast, wake = QCoreApplication::eventDispatcher()] {
        std::optional<Picture> picture = ReadPicture(path, atLeast, decoding->stop.get_token());
        if (!decoding->stop.stop_requested()) decoding->picture = std::move(picture);
        decoding->done = true;
        wake->wakeUp();
    });
    while (!decoding->done && !decoding->stop.stop_requested()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        DropUnwanted();
    }
    DoEvents(Yield::Everything);
    DropUnwanted();
    std::erase(decodings_, decoding);
    decoded_.reset();
    if (!decoding->stop.stop_requested()) decoded_ = Decoded{path, atLeast, std::move(decoding->picture)};
}

// A picture that nobody wants any more is not in memory beside this one.
std::optional<Picture> QtDesktop::DecodePicture(const std::string& path, Size atLeast) {
    std::optional<Decoded> ready = std::move(decoded_);
    decoded_.reset();
    if (ready && ready->path == path && ready->atLeast == atLeast) return std::move(ready->picture);
    DropUnwanted();
    decoder_.waitForDone();
    return ReadPicture(path, atLeast);
}
