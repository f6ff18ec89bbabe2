#include "platform/system/temporary_name.h"

#include <cstdint>
#include <random>

namespace {

constexpr std::string_view Begin = ".fento-", End = ".tmp", Digits = "0123456789abcdef";
constexpr size_t DigitCount = 32;

}  // namespace

std::string TemporaryName() {
    std::random_device entropy;
    std::string name(Begin);
    for (size_t i = 0; i < DigitCount / 8; ++i)
        for (uint32_t bits = entropy(), n = 0; n < 8; ++n, bits >>= 4) name += Digits[bits & 15];
    return name.append(End);
}

bool IsTemporaryName(std::string_view name) {
    return name.size() == Begin.size() + DigitCount + End.size() && name.starts_with(Begin) && name.ends_with(End) &&
           name.substr(Begin.size(), DigitCount).find_first_not_of(Digits) == name.npos;
}
