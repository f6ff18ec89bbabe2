// Answering the player in the middle of long work: the program has one thread, so the work itself lets the events in.
#pragma once
#include <QElapsedTimer>
#include <QFile>
#include <QIODevice>
#include <functional>

class Pace {
public:
    Pace() = default;  // of work that never pauses
    // `turn` runs what waits and tells whether the work is still wanted. It comes with the first step and then whenever
    // `milliseconds` have gone by since it last returned.
    explicit Pace(std::function<bool()> turn, int milliseconds = 8)
        : turn_(std::move(turn)), milliseconds_(milliseconds) {}

    // To be called all along the work; false once it is no longer wanted.
    bool Step();

private:
    std::function<bool()> turn_;
    int milliseconds_ = 0;
    QElapsedTimer since_;
    bool wanted_ = true;
};

// A file whose reader steps at a pace: readers know nothing of events, but all of them fetch their data bit by bit.
// What is no longer wanted ends there.
class PacedFile : public QIODevice {
public:
    PacedFile(QFile& file, Pace& pace);

    // No pause comes before: Qt may read while it looks for the reader of a format, and it holds a lock then, for which
    // a picture opened in a pause would wait for ever.
    void BeginPauses() { pausing_ = true; }

    qint64 size() const override { return file_.size(); }
    bool seek(qint64 position) override { return QIODevice::seek(position) && file_.seek(position); }

protected:
    qint64 readData(char* data, qint64 most) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QFile& file_;
    Pace& pace_;
    bool pausing_ = false;
};
