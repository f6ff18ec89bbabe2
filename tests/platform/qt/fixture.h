// A desktop on Qt without a screen, installed for a test.
#pragma once
#include "platform/qt/desktop.h"
#include "tests/support/temp_folder.h"

class QtFixture {
public:
    QtFixture() : before_(InstallBackend(&desktop)) {}
    ~QtFixture() { InstallBackend(before_); }
    QtDesktop desktop;

private:
    Backend* before_;
};

// A folder that goes with the test.
struct ScratchFolder : TempFolder {
    std::string File(const std::string& name) const { return *this / name; }
};
