// A file whose reader can be stopped: readers know nothing of who waits for them, but all of them fetch their data bit
// by bit. What is no longer wanted ends there; so does a picture of passes without end.
#pragma once
#include <QFile>
#include <QIODevice>
#include <stop_token>

class StoppableFile : public QIODevice {
public:
    StoppableFile(QFile& file, std::stop_token stop);

    // From `place` on, so many marks of a JPEG's pass are let through.
    void LimitPasses(qint64 place, int most);

    qint64 size() const override { return file_.size(); }
    bool seek(qint64 position) override { return QIODevice::seek(position) && file_.seek(position); }

protected:
    qint64 readData(char* data, qint64 most) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QFile& file_;
    std::stop_token stop_;
    qint64 passesAt_ = -1;  // where they are counted from; -1: nowhere
    int passesLeft_ = 0;
    char last_ = 0;  // byte before the next one
};
