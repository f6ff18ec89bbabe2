// The game's own windows in real widgets, as text: what a screen reader hears, the order of the keys; the skin's tick.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <cmath>

#include "browser/frm_thumbs.h"
#include "platform/system/files.h"
#include "play/frm_main.h"
#include "shell/form1.h"
#include "shell/frm_about.h"
#include "shell/frm_splash.h"
#include "tests/platform/qt/fixture.h"
#include "tests/platform/qt/widget_dump.h"
#include "tests/support/golden.h"

namespace {

double Luminance(QRgb pixel) {
    const auto linear = [](int v) { return std::pow(v / 255.0, 2.2); };
    return 0.2126 * linear(qRed(pixel)) + 0.7152 * linear(qGreen(pixel)) + 0.0722 * linear(qBlue(pixel)) + 0.05;
}

// The greatest contrast that a pixel of `rect` has to the one in the picture's corner.
double ContrastIn(const QImage& shown, const QRect& rect) {
    const double ground = Luminance(shown.pixel(shown.width() - 3, 3));
    double most = 1;
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        for (int x = rect.left(); x <= rect.right(); ++x) {
            const double here = Luminance(shown.pixel(x, y));
            most = std::max({most, here / ground, ground / here});
        }
    return most;
}

}  // namespace

TEST(GameWindows, AreMadeOfTheseWidgets) {
    QtFixture fixture;
    frmMain main;
    main.OnLoad = {};
    frmThumbs thumbs(main.Skin1, {});
    Form1 help(main.Skin1);
    FrmAbout about;
    FrmSplash splash(main);
    std::string text;
    for (Form* form : std::initializer_list<Form*>{&main, &thumbs, &help, &about, &splash}) {
        form->OnActivate = {};
        form->Load();
        if (form != &main) form->Show();
        text += WidgetDump("/nowhere").Of(*form);
    }
    ExpectGolden("game_windows.txt", text);
}

TEST(GameWindows, EscClosesTheSmallOnesAndReturnPressesTheButtonThatHasTheFocus) {
    QtFixture fixture;
    frmMain main;
    const auto staysAfter = [](Form& form, Qt::Key key) {
        form.Show();
        QWidget* window = FormWindow::Of(form);
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(window->focusWidget() ? window->focusWidget() : window, &event);
        return form.IsShown();
    };
    FrmAbout about, again;
    EXPECT_FALSE(staysAfter(about, Qt::Key_Escape));
    EXPECT_FALSE(staysAfter(again, Qt::Key_Return));
    Form1 help(main.Skin1);
    EXPECT_TRUE(staysAfter(help, Qt::Key_Return));
    EXPECT_FALSE(staysAfter(help, Qt::Key_Escape));
}

TEST(GameWindows, TheSkinsTickIsSeenInEveryStateOfItsItem) {
    QtFixture fixture;
    const std::optional<std::string> skin = ReadFile(FENTO_SOURCE_DIR "/assets/Puzzle.skn");
    ASSERT_TRUE(skin && fixture.desktop.LoadSkin(*skin));
    frmMain main;
    main.OnLoad = {};
    main.Load();
    fixture.desktop.ApplySkin(main);
    QMenu* menu = FormWindow::Of(main)->MenuBar().actions().at(1)->menu();
    menu->adjustSize();
    QAction* item = menu->actions().at(3);
    for (const std::string state : {"enabled", "selected", "disabled", "unchecked"}) {
        menu->setActiveAction(state == "selected" ? item : nullptr);
        item->setEnabled(state != "disabled");
        item->setChecked(state != "unchecked");
        const QImage row = menu->grab(menu->actionGeometry(item)).toImage();
        EXPECT_EQ(ContrastIn(row, QRect(6, 0, 18, row.height())) > 3, item->isChecked()) << state;
    }
}
