// What stands before the first pass of a JPEG, as far as it tells what decoding will cost.
#pragma once
#include <QIODevice>
#include <cstdint>
#include <optional>

struct JpegHead {
    // What the decoder keeps in memory, whatever size it is asked for: all coefficients where the picture comes in
    // several passes (progressive, or one colour after the other), else none.
    int64_t coefficientBytes = 0;
    int64_t passesAt = 0;  // where the first pass begins in the file
};

// Reads on from the file's start. Nothing if there is no pass, or none within a few thousand segments.
std::optional<JpegHead> ReadJpegHead(QIODevice& file);
