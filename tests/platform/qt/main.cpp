// Runs the tests of the Qt desktop without a display, on a screen that does not begin at 0, 0.
#include <gtest/gtest.h>

#include <QApplication>

#include "tests/support/temp_folder.h"

int main(int argc, char** argv) {
    const TempFolder home;  // the toolkit remembers its dialogs
    qputenv("XDG_CONFIG_HOME", home.Path().c_str());
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" FENTO_SOURCE_DIR "/tests/platform/qt/screen.json");
    ::testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
