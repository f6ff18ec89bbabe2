// usage: fuzz --reader=NAME, and what else libFuzzer takes
#include "tests/fuzz/readers.h"

#include <cstdint>
#include <cstdio>

namespace {

constexpr std::pair<const char*, void (*)(const std::string&)> Readers[] = {
    {"game", FuzzSavedGame}, {"ini", FuzzSettings}, {"colours", FuzzColours}, {"road", FuzzRoad},
    {"bmp", FuzzPicture},    {"gif", FuzzPicture},  {"jpg", FuzzPicture},     {"skin", FuzzSkin}};
void (*chosen)(const std::string&) = nullptr;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    for (const auto& [name, reader] : Readers)
        for (int i = 1; i < *count; ++i)
            if (std::string("--reader=") + name == (*arguments)[i]) chosen = reader;
    return chosen ? 0 : (std::fputs("--reader=NAME\n", stderr), std::exit(2), 1);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    chosen({reinterpret_cast<const char*>(data), size});
    return 0;
}
