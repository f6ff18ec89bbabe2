#include "platform/qt/pictures/stoppable_file.h"

StoppableFile::StoppableFile(QFile& file, std::stop_token stop) : file_(file), stop_(std::move(stop)) {
    QIODevice::open(ReadOnly);
}

void StoppableFile::LimitPasses(qint64 place, int most) {
    passesAt_ = place;
    passesLeft_ = most;
}

// Within the passes the two bytes of a mark stand for nothing else.
qint64 StoppableFile::readData(char* data, qint64 most) {
    if (stop_.stop_requested() || (passesAt_ >= 0 && passesLeft_ <= 0)) return -1;
    const qint64 place = file_.pos(), got = file_.read(data, most);
    if (passesAt_ < 0) return got;
    for (qint64 i = std::max<qint64>(0, passesAt_ - place); i < got; ++i) {
        if (last_ == '\xFF' && data[i] == '\xDA' && --passesLeft_ <= 0) return i + 1;
        last_ = data[i];
    }
    return got;
}
