// A large bitmap some rows at a time. Its rows lie in the file uncompressed and one like the other, so any few of them
// under the file's own header are a bitmap again: the library decodes them, and the whole picture is never in memory.
#pragma once
#include <QByteArray>
#include <QIODevice>
#include <QImage>
#include <optional>

#include "platform/drawing/geometry.h"

class BmpBands {
public:
    // Nothing if the rows cannot be told apart without decoding: compressed, of an odd header; nor where the decoded
    // picture is small in memory because its pixels have a palette. Reads the header only.
    static std::optional<BmpBands> In(QIODevice& file);

    // `count` rows of the picture from `top` on. Rows that the file does not hold in full are zeros. A null
    // image if the library refuses them.
    QImage Rows(int top, int count);

private:
    explicit BmpBands(QIODevice& file) : file_(&file) {}

    QIODevice* file_;
    QByteArray head_;  // everything before the first row
    int height_ = 0;
    bool topDown_ = false;
    int64_t stride_ = 0;  // bytes of a row, padding included
};
