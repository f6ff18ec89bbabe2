// The program's entry: the desktop is set up, then the game runs until it ends the process.
#include <QApplication>
#include <QIcon>
#include <QImageReader>
#include <QLoggingCategory>
#include <QPixmap>

#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_translations.h"
#include "platform/system/resources.h"
#include "shell/startup.h"

namespace {

QIcon ProgramIcon() {
    QIcon icon;
    for (const char* name : {"ICON16", "ICON32", "ICON48"}) {
        const auto bytes = LoadResData(name, "PICTURE");
        QPixmap pixmap;
        if (pixmap.loadFromData(reinterpret_cast<const uchar*>(bytes.data()), uint(bytes.size())))
            icon.addPixmap(pixmap);
    }
    return icon;
}

}  // namespace

int main(int, char** argv) {
    // There is no command line: Qt gets to see the program's name only.
    int one = 1;
    char* name[] = {argv[0], nullptr};
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication::setApplicationName("fento-lira-master");
    QApplication::setDesktopFileName("fento-lira-master");
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(one, name);
    InstallPortuguese();
    QApplication::setWindowIcon(ProgramIcon());

    QtDesktop desktop;
    InstallBackend(&desktop);
    desktop.OpenSound();
    RunProgram();
    return 0;
}
