#include "platform/system/temporary_name.h"

#include <cstdint>
#include <random>

std::string TemporaryName() {
    std::random_device entropy;
    std::string name = ".fento-";
    for (int i = 0; i < 4; ++i)
        for (uint32_t bits = entropy(), n = 0; n < 8; ++n, bits >>= 4) name += "0123456789abcdef"[bits & 15];
    return name + ".tmp";
}
