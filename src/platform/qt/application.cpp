// Setting the toolkit up: scaling, language, icon, the desktop with its sound.
#include "platform/qt/application.h"

#include <QApplication>
#include <QIcon>
#include <QPixmap>

#include "platform/qt/desktop.h"
#include "platform/qt/pictures/decoders.h"
#include "platform/qt/translations.h"
#include "platform/system/resources.h"

namespace {

QIcon ProgramIcon() {
    QIcon icon;
    for (const char* name : {"ICON16", "ICON32", "ICON48", "ICON64", "ICON96"}) {
        const auto bytes = LoadResData(name, "PICTURE");
        QPixmap pixmap;
        if (pixmap.loadFromData(reinterpret_cast<const uchar*>(bytes.data()), uint(bytes.size())))
            icon.addPixmap(pixmap);
    }
    return icon;
}

}  // namespace

int RunOnDesktop(char* name, const std::function<void()>& program) {
    int count = 1;
    char* arguments[] = {name, nullptr};
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication::setApplicationName("fento-lira-master");
    QApplication::setDesktopFileName("fento-lira-master");
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(count, arguments);
    KeepToPictureDecoders();
    InstallPortuguese();
    QApplication::setWindowIcon(ProgramIcon());

    QtDesktop desktop;
    InstallBackend(&desktop);
    desktop.OpenSound();
    program();
    return 0;
}
