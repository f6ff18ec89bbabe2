// The game's own windows in real widgets: what a screen reader hears, and what stays legible on a dark desktop.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPalette>
#include <QWheelEvent>
#include <cmath>

#include "browser/frm_thumbs.h"
#include "platform/qt/widgets/form_window.h"
#include "platform/qt/widgets/peer.h"
#include "platform/system/files.h"
#include "play/frm_main.h"
#include "shell/form1.h"
#include "shell/frm_about.h"
#include "tests/platform/qt/fixture.h"

namespace {

class GameWindows : public testing::Test {
protected:
    ~GameWindows() override { QApplication::setPalette(before); }

    QtFixture fixture;
    const QPalette before = QApplication::palette();
};

std::string HeardName(QWidget& widget) {
    QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(&widget);
    return heard ? FromText(heard->text(QAccessible::Name)) : "";
}

bool IsForThePlayer(const Control& control, const QWidget& widget) {
    if (control.Name() == "picScreen") return true;
    return (widget.focusPolicy() & Qt::TabFocus) || dynamic_cast<const Label*>(&control) ||
           dynamic_cast<const CellSheet*>(&control) || dynamic_cast<const ScrollBar*>(&control) ||
           dynamic_cast<const Image*>(&control);
}

// The names of the player's controls below `control` that a screen reader has no words for.
void CollectNameless(const Control& control, std::string& nameless, int& named) {
    for (const Control* child : control.Children()) {
        const QtPeer* peer = PeerOf(*child);
        if (peer && peer->Widget() && IsForThePlayer(*child, *peer->Widget())) {
            const bool heard = !HeardName(*peer->Widget()).empty();
            named += heard;
            if (!heard) nameless += child->Name() + " ";
        }
        CollectNameless(*child, nameless, named);
    }
}

double Luminance(QRgb pixel) {
    const auto linear = [](int v) { return std::pow(v / 255.0, 2.2); };
    return 0.2126 * linear(qRed(pixel)) + 0.7152 * linear(qGreen(pixel)) + 0.0722 * linear(qBlue(pixel));
}

// The greatest contrast that a pixel of `rect` has to the one in the window's corner.
double ContrastIn(const QImage& shown, const QRect& rect) {
    const double ground = Luminance(shown.pixel(shown.width() - 3, 3)) + 0.05;
    double least = ground, most = ground;
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        for (int x = rect.left(); x <= rect.right(); ++x) {
            const double here = Luminance(shown.pixel(x, y)) + 0.05;
            least = std::min(least, here), most = std::max(most, here);
        }
    return std::max(most / ground, ground / least);
}

}  // namespace

TEST_F(GameWindows, AScreenReaderHasAWordForEveryControlOfThePlayer) {
    frmMain main;
    main.OnLoad = {};
    frmThumbs thumbs(main.Skin1, {});
    Form1 help(main.Skin1);
    FrmAbout about;
    const std::pair<Form*, int> windows[] = {{&main, 5}, {&thumbs, 7}, {&help, 6}, {&about, 7}};
    for (const auto& [form, expected] : windows) {
        form->Load();
        std::string nameless;
        int named = 0;
        CollectNameless(*form, nameless, named);
        EXPECT_EQ(nameless, "") << form->Name();
        EXPECT_EQ(named, expected) << form->Name();
    }
}

TEST_F(GameWindows, KeysWalkThroughThePictureDialogAndTheWheelChoosesNoDrive) {
    const TempFolder folder;
    for (const char* name : {"alfa", "beta", "gama"}) folder.MakeFolder(name);
    Skin skin;
    frmThumbs dialog(skin, {});
    dialog.OnActivate = {};
    dialog.Show();
    const auto widget = [](const Control& control) { return PeerOf(control)->Widget(); };
    const auto key = [](QWidget* to, int code, const QString& text = {}) {
        QKeyEvent event(QEvent::KeyPress, code, Qt::NoModifier, text);
        QCoreApplication::sendEvent(to, &event);
    };
    std::string order;
    const QWidget* at = widget(dialog.Drive1);
    do {
        if (at->focusPolicy() & Qt::TabFocus) order += FromText(at->objectName()) + " ";
        at = at->nextInFocusChain();
    } while (at != widget(dialog.Drive1));
    EXPECT_EQ(order, "Drive1 Dir1 cmdVoltar scrThumbs Command1 ");

    ScrollBar& bar = dialog.ThumbsCtl1.scrThumbs;
    ASSERT_TRUE(bar.SetMax(5000) && bar.SetLargeChange(1133));
    for (const auto& [code, value] : {std::pair{Qt::Key_Down, 1},
                                      {Qt::Key_PageDown, 1134},
                                      {Qt::Key_End, 5000},
                                      {Qt::Key_PageUp, 3867},
                                      {Qt::Key_Home, 0}}) {
        key(widget(bar), code);
        EXPECT_EQ(bar.Value(), value) << code;
    }
    ASSERT_TRUE(dialog.Dir1.SetPath(folder.Path()));
    auto* rows = dynamic_cast<QListWidget*>(widget(dialog.Dir1));
    key(rows, Qt::Key_G, "g");
    EXPECT_EQ(rows->currentItem()->text(), "gama");

    auto* drives = dynamic_cast<QComboBox*>(widget(dialog.Drive1));
    drives->addItem("x");
    const int shown = drives->currentIndex();
    for (const int eighths : {-120, 120}) {
        QWheelEvent turn({5, 5}, {5, 5}, {}, {0, eighths}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(drives, &turn);
        EXPECT_EQ(drives->currentIndex(), shown);
    }
}

TEST_F(GameWindows, EscClosesTheSmallWindowsAndReturnPressesTheButtonThatHasTheFocus) {
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

TEST_F(GameWindows, TheSkinsTickIsSeenInEveryStateOfItsItem) {
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

TEST_F(GameWindows, TextsOnTheDesktopsOwnColoursStayLegibleWhateverTheseAre) {
    for (const char* ground : {"#f0f0f0", "#2a2e32", "#101010"}) {
        const bool dark = QColor(ground).lightness() < 128;
        QPalette palette = before;
        palette.setColor(QPalette::Window, QColor(ground));
        palette.setColor(QPalette::WindowText, dark ? Qt::white : Qt::black);
        palette.setColor(QPalette::Link, Qt::blue);  // as many a dark desktop has it
        QApplication::setPalette(palette);
        FrmAbout about;
        about.Show();
        DoEvents();
        FormWindow& window = *FormWindow::Of(about);
        const QImage shown = window.grab().toImage();
        for (const Label* label : {&about.Label2, &about.Label5, &about.Label8, &about.Label3, &about.Label11}) {
            const QWidget& widget = *PeerOf(*label)->Widget();
            const QRect place(widget.mapTo(&window, QPoint()), widget.size());
            EXPECT_GT(ContrastIn(shown, place & shown.rect()), 3.0) << label->Name() << " on " << ground;
        }
    }
}
