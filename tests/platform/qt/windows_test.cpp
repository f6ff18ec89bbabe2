// Peers in real widgets: what the toolkit's events become, what state the widgets have, what they paint.
#include <gtest/gtest.h>

#include <QApplication>
#include <QBitmap>
#include <QHelpEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QShortcut>
#include <QTimer>
#include <QToolTip>
#include <QWheelEvent>
#include <QWindow>
#include <cmath>

#include "platform/controls/cell_sheet.h"
#include "platform/controls/folder_lists.h"
#include "platform/controls/picture_box.h"
#include "platform/controls/scroll_bar.h"
#include "platform/controls/simple_controls.h"
#include "platform/drawing/bmp.h"
#include "platform/drawing/raster.h"
#include "platform/qt/widgets/board.h"
#include "platform/qt/widgets/place_icons.h"
#include "platform/system/timer.h"
#include "tests/platform/qt/fixture.h"
#include "tests/platform/qt/widget_dump.h"
#include "tests/support/golden.h"
#include "tests/support/picture_files.h"

namespace {

constexpr Qt::MouseButton L = Qt::LeftButton, R = Qt::RightButton, M = Qt::MiddleButton;

// A window with a control of every kind, which log what they hear.
class Windows : public testing::Test {
protected:
    Windows() {
        for (const char* name : {"alfa/um", "beta"}) folder.MakeFolder(name);
        form.Place(30, 45, 400 * 15, 300 * 15);
        const auto add = [this](Control& control, double x, double y, double width, double height) {
            form.AddChild(control);
            control.Place(x, y, width, height);
        };
        edged.SetBorder(Border::Single);
        image.SetBorder(Border::Thin);
        image.SetPicture(std::make_shared<Picture>(Picture{{20, 16}, PatternSurface({20, 16})}));
        link.SetTabIndex(0), push.SetTabIndex(3), bar.SetTabIndex(2), rows.SetTabIndex(1), drives.SetTabIndex(4);
        link.Click = Note("link");
        link.SetLook({{12, true, true}, Rgb(0, 0, 200), Rgb(255, 255, 0), false, Alignment::Center, false, false});
        add(box, -20, -10, 320, 150);
        add(edged, 300, 5, 60, 40);
        edged.AddChild(inner);
        inner.Place(5, 4, 20, 12);
        add(image, 310, 50, 52, 34);
        add(label, 300, 90, 80, 20);
        add(link, 300, 110, 80, 20);
        add(push, 300, 135, 80, 24);
        add(frame, 10, 150, 100, 60);
        frame.AddChild(caption);
        caption.Place(150, 150, 900, 300);
        add(bar, 380, 0, 20, 300);
        add(sheet, 120, 150, 170, 60);
        add(drives, 10, 220, 150, 22);
        add(rows, 180, 215, 190, 80);
        box.SetAccessibleName("Tabuleiro");
        box.MouseDown = NoteMouse("down"), box.MouseMove = NoteMouse("move"), box.MouseUp = NoteMouse("up");
        box.Click = Note("click"), box.DblClick = Note("dbl"), bar.Change = Note("change"), bar.Scroll = Note("scroll");
        form.MouseDown = NoteMouse("form"), image.MouseDown = NoteMouse("image"), edged.MouseDown = NoteMouse("edged");
        label.SetCaption("Isto"), link.SetCaption("Elo"), caption.SetCaption("E aquilo");
        push.Click = Note("push"), drives.Change = Note("drive"), rows.Change = Note("folder");
        form.OnActivate = Note("active"), form.OnUnload = Note("unload");
        form.OnResize = [this] { log += "resize " + std::to_string(int(form.ScaleWidth())) + " "; };
        form.KeyDown = [this](Key key) { log += "key" + std::to_string(int(key)) + " "; };
        form.OnMenu = Note("opening");
        MenuItem& menu = form.Menus.Add("mnu", "Jogo");
        menu.Click = Note("menu");
        menu.Add("save", "Salvar este jogo", {'S', 0, true}).Click = Note("save");
        menu.Add("line", "-");
        menu.Add("help", "Ajuda", {0, 3, false}).SetChecked(true);
        menu.Add("more", "Mais").Add("deep", "Fundo", {'Z', 0, false});
        form.Menus.Add("mnu2", "Nada");
        rows.SetPath(folder / "alfa");
        log.clear();
    }

    Handler Note(const char* what) {
        return [this, what] { log += std::string(what) + " "; };
    }
    MouseHandler NoteMouse(const char* what) {
        return [this, what](int16_t button, int16_t shift, float x, float y) {
            log += FromText(QString("%1%2%3@%4,%5 ").arg(what).arg(button).arg(QString(shift, '^')).arg(x).arg(y));
        };
    }
    static QWidget& On(const Control& control) { return *PeerOf(control)->Content(); }
    FormWindow& Window() { return *FormWindow::Of(form); }
    std::string Log() { return std::exchange(log, {}); }

    void Show() {
        form.Show();
        DoEvents();
    }
    void Mouse(QEvent::Type type, Qt::MouseButton button, QPointF at, QWidget& to, Qt::KeyboardModifiers keys = {}) {
        down.setFlag(button, type != QEvent::MouseButtonRelease && button != Qt::NoButton);
        QMouseEvent event(type, at, to.mapToGlobal(at), button, down, keys);
        QCoreApplication::sendEvent(&to, &event);
    }
    void Press(Qt::MouseButton button, QPointF at, Qt::KeyboardModifiers keys = {}) {
        Mouse(QEvent::MouseButtonPress, button, at, On(box), keys);
    }
    void Double(Qt::MouseButton button, QPointF at) { Mouse(QEvent::MouseButtonDblClick, button, at, On(box)); }
    void Release(Qt::MouseButton button, QPointF at) { Mouse(QEvent::MouseButtonRelease, button, at, On(box)); }
    void Move(QPointF at) { Mouse(QEvent::MouseMove, Qt::NoButton, at, On(box)); }
    void Click(QWidget& widget, QPointF at) {
        Mouse(QEvent::MouseButtonPress, L, at, widget);
        Mouse(QEvent::MouseButtonRelease, L, at, widget);
    }
    static void Send(QWidget& to, QEvent::Type type) {
        QEvent event(type);
        QCoreApplication::sendEvent(&to, &event);
    }
    static void Type(QWidget& to, int key, Qt::KeyboardModifiers modifiers = {}, const char* text = "") {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
        QCoreApplication::sendEvent(&to, &event);
    }

    QtFixture fixture;
    const TempFolder folder;
    Form form{"frmTest", "Teste", ScaleMode::Pixels, FormBorder::Sizable};
    PictureBox box{"picBox"}, edged{"edged"}, inner{"inner"};
    Image image{"image"};
    Label label{"label"}, link{"link"}, caption{"caption"};
    CommandButton push{"push", "&OK"};
    Frame frame{"frame", ScaleMode::Twips};
    ScrollBar bar{"bar", Orientation::Vertical};
    CellSheet sheet{"sheet"};
    DriveListBox drives{"drives"};
    DirListBox rows{"rows"};
    Qt::MouseButtons down;
    std::string log;
};

}  // namespace

// As they are made; after changes of every aspect; after the changes are taken back.
TEST_F(Windows, EveryAspectOfAControlIsThatOfItsWidget) {
    Form tool("frmTool", "", ScaleMode::Twips, FormBorder::FixedToolWindow);
    Form dialog("frmDialog", "Caixa", ScaleMode::Twips, FormBorder::FixedDialog);
    Form bare("frmBare", "", ScaleMode::Pixels, FormBorder::None);
    for (Form* small : {&tool, &dialog, &bare}) small->Place(150, 300, 900, 600);
    std::string text;
    const auto dump = [&] {
        for (Form* each : {&form, &tool, &dialog, &bare}) text += WidgetDump(folder.Path()).Of(*each);
    };
    bare.SetRegion(Region{{5, 6, 20, 10}, {10, 0, 4, 30}});
    Show();
    for (Form* each : {&tool, &dialog, &bare}) each->Show();
    dump();
    for (const bool changed : {true, false}) {
        MenuItem& menu = form.Menus.Items().front();
        menu.Items()[0].SetEnabled(!changed);
        menu.Items()[2].SetChecked(!changed);
        for (Control* control : {static_cast<Control*>(&edged), static_cast<Control*>(&push)})
            control->SetEnabled(!changed);
        inner.SetVisible(!changed);
        inner.Move(changed ? 15 : 5, 4);
        edged.SetWidth(changed ? 50 : 60);
        image.SetPointer(changed ? MousePointer::Hourglass : MousePointer::Default);
        box.SetPointer(changed ? MousePointer::Hand : MousePointer::Arrow);
        label.SetCaption(changed ? "Outro" : "Isto");
        link.Click = changed ? Handler() : Note("link");
        link.SetLook({{8.25, false, changed}, 0, 0, true, Alignment::Left, true, false});
        EXPECT_TRUE(bar.SetMin(0) && bar.SetMax(changed ? -1390 : 1000) && bar.SetLargeChange(changed ? 463 : 7) &&
                    bar.SetSmallChange(5) && bar.SetValue(changed ? -90 : 80) && !bar.SetValue(changed ? 1 : -1));
        drives.Follow(changed ? "/media/x/y" : "/home/a<b/Fotos");
        rows.SetPath(folder / (changed ? "beta" : "alfa"));
        bare.SetRegion(changed ? std::optional(Region{}) : std::nullopt);
        tool.Move(changed ? 450 : 150, 300);
        form.Place(changed ? 60 : 30, 45, 400 * 15, 320 * 15);
        edged.SetBorder(changed ? Border::None : Border::Single);  // stays as it was made
        dump();
    }
    ExpectGolden("widgets.txt", text);
}

TEST_F(Windows, TheMouseOnABoxComesInTheOrderTheDesktopSawIt) {
    Show();
    Log();
    Press(L, {30.5, 40});
    Release(L, {30, 40});
    Double(L, {30, 40});
    Release(L, {90, -5});
    EXPECT_EQ(Log(), "down1@30.5,40 up1@30,40 click down1@30,40 dbl up1@90,-5 ");
    Press(L, {30, 40});
    Move({31, 41});
    Press(R, {32, 42}, Qt::ShiftModifier | Qt::AltModifier);
    Double(R, {33, 43});
    Release(R, {34, 44});
    Release(M, {34, 44});  // never pressed here
    Move({35, 45});
    Release(L, {36, 46});
    Move({37, 47});
    EXPECT_EQ(Log(),
              "down1@30,40 move1@31,41 down2^^^^^@32,42 down2@33,43 up2@34,44 move1@35,45 up1@36,46 click "
              "move0@37,47 ");
    // A window opens in a drag and swallows the release; the box scrolls away under the pointer meanwhile.
    Press(L, {30, 40}, Qt::ControlModifier);
    Move({35, 45});
    box.Move(-30, -15);
    Send(Window(), QEvent::WindowBlocked);
    Release(L, {50, 50});
    Move({60, 60});
    EXPECT_EQ(Log(), "down1^^@30,40 move1@35,45 up1@45,50 move0@60,60 ");
    // Missed releases are made up for at the next move, or when the box goes.
    for (const Qt::MouseButton button : {L, Qt::ExtraButton3, Qt::ExtraButton24}) Press(button, {30, 40});
    down = {};
    Move({31, 41});
    EXPECT_EQ(Log(), "down1@30,40 down32@30,40 down16384@30,40 up1@31,41 up32@31,41 up16384@31,41 move0@31,41 ");
    Press(M, {30, 40});
    box.SetVisible(false);
    box.SetVisible(true);
    down = {};
    EXPECT_EQ(Log(), "down4@30,40 up4@30,40 ");
    // A press belongs to the control that is hit.
    for (QWidget* hit : {&On(edged), &On(inner), &On(label), &On(image), Window().Client()}) Click(*hit, {5, 6});
    Mouse(QEvent::MouseButtonPress, R, {1, 2}, On(image), Qt::ShiftModifier);
    Mouse(QEvent::MouseButtonPress, M, {1, 2}, *Window().Client(), Qt::ShiftModifier);
    EXPECT_EQ(Log(), "edged1@5,6 image1@5,6 form1@5,6 image2^@1,2 form4^@1,2 ");
}

TEST_F(Windows, LinksButtonsListsAndBarsAnswerToMouseAndKeys) {
    Show();
    Log();
    Click(On(link), {5, 6});
    Mouse(QEvent::MouseButtonPress, L, {5, 6}, On(link));
    Mouse(QEvent::MouseButtonRelease, L, {-5, 6}, On(link));
    Mouse(QEvent::MouseButtonRelease, R, {5, 6}, On(link));
    for (const int key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_A}) Type(On(link), key);
    EXPECT_EQ(Log(), "link link link link ");
    Click(On(push), {5, 6});
    for (const int key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_A}) Type(On(push), key);
    EXPECT_EQ(Log(), "push push push ");

    QListWidget& list = static_cast<QListWidget&>(On(rows));
    const auto open = [&](int row, QEvent::Type type, Qt::MouseButton with) {
        Mouse(type, with, list.visualItemRect(list.item(row)).center(), *list.viewport());
        DoEvents();
        down = {};
        return Log() + FromText(list.currentItem()->text());
    };
    const int last = list.count() - 1;
    EXPECT_EQ(open(last, QEvent::MouseButtonPress, L), "um");
    EXPECT_EQ(open(last, QEvent::MouseButtonDblClick, R), "um");
    EXPECT_EQ(open(last, QEvent::MouseButtonDblClick, L), "folder um");
    list.setCurrentRow(last - 1);
    for (const int key : {Qt::Key_Up, Qt::Key_Return}) Type(list, key);
    DoEvents();
    EXPECT_EQ(Log() + rows.Path(), "folder " + folder.Path());
    Type(list, Qt::Key_B, {}, "b");
    Type(list, Qt::Key_Enter);
    DoEvents();
    EXPECT_EQ(Log() + rows.Path(), "folder " + folder / "beta");

    QComboBox& choice = static_cast<QComboBox&>(On(drives));
    const int shown = choice.currentIndex();
    for (const int eighths : {-120, 120}) {
        QWheelEvent turn({5, 5}, {5, 5}, {}, {0, eighths}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&choice, &turn);
        EXPECT_EQ(choice.currentIndex(), shown);
    }
    choice.setCurrentIndex(1);
    emit choice.activated(1);
    DoEvents();
    EXPECT_EQ(Log() + drives.Drive(), "drive /home/a<b");

    QScrollBar& inner_ = static_cast<QScrollBar&>(On(bar));
    ASSERT_TRUE(bar.SetMax(-5000) && bar.SetLargeChange(1133) && bar.SetSmallChange(3));
    std::string values;
    for (const int key : {Qt::Key_Down, Qt::Key_PageDown, Qt::Key_End, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_Up}) {
        Type(inner_, key);
        values += std::to_string(bar.Value()) + " ";
    }
    EXPECT_EQ(values, "-3 -1136 -5000 -3867 0 0 ");
    EXPECT_EQ(Log(), "change change change change change ");
    inner_.setSliderDown(true);
    inner_.setSliderPosition(700);
    inner_.setSliderPosition(800);
    inner_.setSliderDown(false);
    EXPECT_EQ(Log() + std::to_string(bar.Value()), "scroll scroll change -800");
}

TEST_F(Windows, TheWheelTurnsInPartsOfNotchesATouchpadInPixelsAndBothOverABarToo) {
    const WheelHandler note = [this](const WheelTurn& turn) {
        log +=
            FromText(QString("%1,%2%3 ").arg(turn.x).arg(turn.y).arg(turn.unit == WheelTurn::Unit::Pixels ? "px" : ""));
    };
    box.Wheel = sheet.Wheel = note;
    Show();
    Log();
    const auto turn = [](Control& over, QPoint pixels, QPoint eighths, Qt::KeyboardModifiers keys) {
        QWheelEvent event(QPointF(5, 5), QPointF(5, 5), pixels, eighths, Qt::NoButton, keys, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&On(over), &event);
        return event.isAccepted();
    };
    turn(box, {}, {0, 120}, {});
    turn(box, {}, {60, -30}, {});
    turn(box, {}, {0, -240}, Qt::ShiftModifier);
    turn(box, {3, -7}, {8, -56}, {});
    turn(sheet, {}, {0, 120}, {});
    EXPECT_EQ(Log(), "0,1 0.5,-0.25 -2,0 3,-7px 0,1 ");
    EXPECT_FALSE(turn(edged, {}, {0, 120}, {}));  // which has no use for it
    turn(bar, {}, {0, -120}, {});
    EXPECT_EQ(Log() + std::to_string(bar.Value()), "change 1");
    bar.Wheel = note;
    turn(bar, {}, {0, 120}, {});
    EXPECT_EQ(Log() + std::to_string(bar.Value()), "0,1 1");
}

TEST_F(Windows, TheSheetHearsOfItsFiguresAndTellsTheirTips) {
    const auto note = [this](const char* what) {
        return [this, what](int index) { log += what + std::to_string(index) + " "; };
    };
    const auto noteMouse = [this](const char* what) {
        return [this, what](int index, int16_t button, int16_t shift, float x, float y) {
            NoteMouse(what)(button, shift, x, y), log.back() = ':', log += std::to_string(index) + " ";
        };
    };
    sheet.FigureClick = note("click"), sheet.FigureDblClick = note("dbl"), sheet.FrameClick = note("frame");
    sheet.FigureMouseDown = noteMouse("down"), sheet.FigureMouseMove = noteMouse("move");
    sheet.FigureMouseUp = noteMouse("up");
    CellSheet::Cell& cell = sheet.Load();
    cell.frame = {150, 150, 600, 450, 0, true, ""};
    cell.figure.left = 300, cell.figure.top = 300, cell.figure.width = 300, cell.figure.height = 150;
    cell.figure.visible = true, cell.figure.toolTip = "Baía   do <norte> ao sul com barcos.jpg - 11599 x 11199";
    Show();
    Log();
    QWidget& on = On(sheet);
    Click(on, {25, 24});
    Mouse(QEvent::MouseButtonDblClick, L, {25, 24}, on);
    Mouse(QEvent::MouseButtonRelease, L, {25, 24}, on);
    Mouse(QEvent::MouseButtonDblClick, R, {25, 24}, on, Qt::ShiftModifier);
    Mouse(QEvent::MouseMove, Qt::NoButton, {26, 22}, on, Qt::ControlModifier);
    Mouse(QEvent::MouseButtonRelease, R, {26, 22}, on, Qt::ShiftModifier);
    Click(on, {12, 12});
    EXPECT_EQ(Log(),
              "down1@75,60:1 up1@75,60:1 click1 dbl1 up1@75,60:1 down2^@75,60:1 move2^^@90,30:1 up2^@90,30:1 click1 "
              "frame1 ");
    const auto tip = [&](QPoint at) {
        QHelpEvent event(QEvent::ToolTip, at, on.mapToGlobal(at));
        QCoreApplication::sendEvent(&on, &event);
        return FromText(QToolTip::text());
    };
    EXPECT_EQ(tip({25, 24}), FromText(PlainTip(ToText(cell.figure.toolTip))));
    const auto all = QApplication::topLevelWidgets();
    const auto shown = std::ranges::find_if(all, [](QWidget* each) { return each->inherits("QTipLabel"); });
    ASSERT_NE(shown, all.end());
    EXPECT_LT((*shown)->height(), 2 * (*shown)->fontMetrics().height());  // one line
}

TEST_F(Windows, AWindowPassesKeysMenusSizesAndItsCloseBoxOn) {
    Show();
    EXPECT_EQ(Log(), "resize 400 active ");
    for (int key : {Qt::Key_Escape, Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp,
                    Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End, Qt::Key_A})
        Type(Window(), key);
    Type(Window(), Qt::Key_Home, Qt::KeypadModifier);
    Type(Window(), Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(Log(), "key0 key1 key2 key3 key4 key5 key6 key7 key8 key7 ");

    QMenuBar& menus = Window().MenuBar();
    QMenu& menu = *menus.actions().front()->menu();
    for (const int item : {0, 2}) {
        menu.actions()[item]->trigger();
        EXPECT_EQ(menu.actions()[2]->isChecked(), true);  // the item says what counts
    }
    EXPECT_EQ(Log(), "save ");
    menus.setActiveAction(nullptr);
    for (QShortcut* shortcut : Window().findChildren<QShortcut*>()) emit shortcut->activated();
    EXPECT_EQ(menus.activeAction(), menus.actions().front());
    EXPECT_EQ(Log(), "opening menu ");
    EXPECT_GE(menu.minimumWidth(), menu.sizeHint().width());
    EXPECT_GT(menu.minimumWidth(), 0);
    menu.close();

    const int menuHeight = Window().MenuBar().height();
    EXPECT_EQ(menuHeight, Window().MenuBar().sizeHint().height());
    Window().resize(500, 350);
    EXPECT_EQ(Log() + std::to_string(int(form.ScaleHeight())), "resize 500 " + std::to_string(350 - menuHeight));
    EXPECT_EQ(Window().Client()->geometry(), QRect(0, menuHeight, 500, 350 - menuHeight));
    Window().setStyleSheet("QMenuBar { padding: 9px; }");
    DoEvents();
    EXPECT_EQ(Window().Client()->y(), Window().MenuBar().height());
    EXPECT_GT(Window().Client()->y(), menuHeight);
    Log();

    const QSize room = QGuiApplication::primaryScreen()->size();
    for (const WindowState state : {WindowState::Maximized, WindowState::Normal, WindowState::Minimized}) {
        form.SetState(state);
        EXPECT_EQ(form.State(), state);
        EXPECT_EQ(Window().isMaximized(), state == WindowState::Maximized);
        EXPECT_EQ(Window().isMinimized(), state == WindowState::Minimized);
        if (Window().isMaximized()) {
            EXPECT_EQ(Window().frameGeometry().size(), room);
            form.Move(900, 900);  // for later
            EXPECT_EQ(Window().frameGeometry().size(), room);
        }
    }
    Window().showNormal();
    EXPECT_EQ(form.State(), WindowState::Normal);
    Log();
    EXPECT_FALSE(Window().close());
    EXPECT_EQ(Log(), "unload ");
    EXPECT_FALSE(form.IsShown());
}
