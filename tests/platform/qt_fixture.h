// A desktop on Qt without a screen, installed for a test.
#pragma once
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/qt/qt_desktop.h"

class QtFixture {
public:
    QtFixture() : before_(InstallDesktop(&desktop)) {}
    ~QtFixture() { InstallDesktop(before_); }
    QtDesktop desktop;

private:
    Desktop* before_;
};

// A folder that goes with the test.
class ScratchFolder {
public:
    ScratchFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "qt_tests_XXXXXX").string();
        path_ = mkdtemp(name.data());
    }
    ~ScratchFolder() { std::filesystem::remove_all(path_); }
    std::string File(const std::string& name) const { return path_ + "/" + name; }
    std::string Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(File(name), std::ios::binary) << bytes;
        return File(name);
    }

private:
    std::string path_;
};
