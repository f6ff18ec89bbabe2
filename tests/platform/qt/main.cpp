// Runs the tests of the Qt desktop without a display, on screens of four densities of which none begins at 0, 0, in the
// same colours on every machine.
#include <gtest/gtest.h>

#include <QApplication>
#include <QPalette>

#include "tests/support/temp_folder.h"

int main(int argc, char** argv) {
    const TempFolder home;  // the toolkit remembers its dialogs
    qputenv("HOME", home.Path().c_str());
    qputenv("XDG_CONFIG_HOME", home.Path().c_str());
    qputenv("XDG_RUNTIME_DIR", home.Path().c_str());
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" FENTO_SOURCE_DIR "/tests/platform/qt/screens.json");
    ::testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setStyle("fusion");
    QApplication::setPalette(QPalette(QColor(0xE0, 0xDC, 0xD8)));
    return RUN_ALL_TESTS();
}
