// A folder of its own for one test, gone with everything in it at the end.
#pragma once
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/system/paths.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

// A path as the standard library takes it: byte for byte, or from UTF-8 on Windows.
inline std::filesystem::path Native(std::string_view path) { return std::u8string(path.begin(), path.end()); }

// A part of a name that is hard on programs: bytes that are no text, or letters of no code page.
#ifdef _WIN32
inline const std::string OddName = "ma\u00E7\u00E3 \u65E5\u672C";
#else
inline const std::string OddName = "\xFF\xFE \xE7";
#endif

class TempFolder {
public:
    TempFolder() {
        const std::string name = "fento-test-" + std::to_string(std::random_device{}());
        path_ = (std::filesystem::temp_directory_path() / name).string();
        if (!std::filesystem::create_directory(path_)) throw std::runtime_error("no temporary folder");
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(Native(path_), ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    // Without and with a closing separator.
    const std::string& Path() const { return path_; }
    std::string WithSlash() const { return path_ + PathSeparator; }

    // The full path of an entry that may or may not exist; `name` with '/'.
    std::string operator/(std::string name) const {
        std::ranges::replace(name, '/', PathSeparator);
        return WithSlash() + name;
    }

    // Writes a file, with the folders it needs, and returns its full path.
    std::string Write(const std::string& name, std::string_view bytes) const {
        const std::string full = *this / name;
        std::filesystem::create_directories(Native(full).parent_path());
        std::ofstream(Native(full), std::ios::binary) << bytes;
        return full;
    }
    std::string MakeFolder(const std::string& name) const {
        std::filesystem::create_directories(Native(*this / name));
        return *this / name;
    }
    // What would hold up who opens it for reading. A folder where there is no such thing.
    std::string MakeFifo(const std::string& name) const {
#ifdef _WIN32
        return MakeFolder(name);
#else
        return mkfifo((*this / name).c_str(), 0600) == 0 ? *this / name : "no FIFO";
#endif
    }
    // The bytes of a file; empty if it cannot be read.
    std::string Read(const std::string& name) const {
        std::ifstream in(Native(*this / name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    bool Has(const std::string& name) const { return std::filesystem::exists(Native(*this / name)); }
    int Entries() const { return int(std::distance(std::filesystem::directory_iterator(Native(path_)), {})); }

private:
    std::string path_;
};
