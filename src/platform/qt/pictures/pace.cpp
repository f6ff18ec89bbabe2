// Pauses in long work, by the clock.
#include "platform/qt/pictures/pace.h"

bool Pace::Step() {
    if (!turn_ || !wanted_ || (since_.isValid() && since_.elapsed() < milliseconds_)) return wanted_;
    wanted_ = turn_();
    since_.start();
    return wanted_;
}

PacedFile::PacedFile(QFile& file, Pace& pace) : file_(file), pace_(pace) { QIODevice::open(ReadOnly); }

qint64 PacedFile::readData(char* data, qint64 most) {
    if (pausing_ && !pace_.Step()) return -1;
    return file_.read(data, most);
}
