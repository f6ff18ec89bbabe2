// A folder of its own for one test, gone with everything in it at the end.
#pragma once
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

class TempFolder {
public:
    TempFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "fento-test-XXXXXX").string();
        if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
        path_ = pattern;
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    // Without and with a closing separator.
    const std::string& Path() const { return path_; }
    std::string WithSlash() const { return path_ + "/"; }

    // The full path of an entry that may or may not exist.
    std::string operator/(std::string_view name) const { return path_ + "/" + std::string(name); }

    // Writes a file, with the folders it needs, and returns its full path.
    std::string Write(std::string_view name, std::string_view bytes) const {
        const std::string full = *this / name;
        std::filesystem::create_directories(std::filesystem::path(full).parent_path());
        std::ofstream(full, std::ios::binary) << bytes;
        return full;
    }
    std::string MakeFolder(std::string_view name) const {
        std::filesystem::create_directories(*this / name);
        return *this / name;
    }
    // The bytes of a file; empty if it cannot be read.
    std::string Read(std::string_view name) const {
        std::ifstream in(*this / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    bool Has(std::string_view name) const { return std::filesystem::exists(*this / name); }
    int Entries() const {
        return int(std::distance(std::filesystem::directory_iterator(path_), std::filesystem::directory_iterator()));
    }

private:
    std::string path_;
};
