// Wave files in memory, as one row of samples at a device's rate.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

// The samples of an uncompressed wave file of 8 or 16 bits, all channels mixed into one,
// brought to `rate` samples a second by straight lines between neighbours. Takes any
// number and order of chunks, a longer format chunk, a data chunk of odd length and one
// that claims more than there is. Empty if it is no such file.
std::vector<int16_t> ReadWave(std::span<const std::byte> file, int rate);
