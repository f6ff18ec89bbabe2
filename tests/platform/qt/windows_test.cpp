// Peers in real widgets: what the desktop's events become, and what state the widgets show.
#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QMouseEvent>
#include <QScreen>
#include <QScrollBar>
#include <QTimer>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "platform/controls/cell_sheet.h"
#include "platform/controls/picture_box.h"
#include "platform/controls/scroll_bar.h"
#include "platform/controls/simple_controls.h"
#include "platform/drawing/raster.h"
#include "platform/qt/widgets/board.h"
#include "platform/qt/widgets/form_window.h"
#include "platform/qt/widgets/peer.h"
#include "tests/platform/qt/fixture.h"
#include "tests/support/picture_files.h"

namespace {

class Windows : public testing::Test {
protected:
    Windows() {
        form.Place(0, 0, 400 * 15, 300 * 15);
        form.AddChild(box);
        box.Place(-20, -10, 600, 500);
        form.AddChild(bar);
        bar.Place(380, 0, 20, 300);
        const auto note = [this](const char* what) {
            return [this, what](int16_t button, int16_t, float x, float y) {
                log +=
                    what + std::to_string(button) + "@" + std::to_string(int(x)) + "," + std::to_string(int(y)) + " ";
            };
        };
        box.MouseDown = note("down");
        box.MouseMove = note("move");
        box.MouseUp = note("up");
        box.Click = [this] { log += "click "; };
        box.DblClick = [this] { log += "dbl "; };
    }

    void Show() {
        form.Show();
        DoEvents();
    }

    QAction* FirstAction() { return FormWindow::Of(form)->MenuBar().actions().front()->menu()->actions().front(); }
    QWidget& Board() { return *PeerOf(box)->Content(); }
    QScrollBar& Bar() { return static_cast<QScrollBar&>(*PeerOf(bar)->Widget()); }

    void Send(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons down, QPoint at, QWidget* to = nullptr) {
        if (!to) to = &Board();
        QMouseEvent event(type, at, to->mapToGlobal(at), button, down, Qt::NoModifier);
        QCoreApplication::sendEvent(to, &event);
    }
    void Press(Qt::MouseButton button, Qt::MouseButtons down, QPoint at) {
        Send(QEvent::MouseButtonPress, button, down, at);
    }
    void Release(Qt::MouseButton button, Qt::MouseButtons down, QPoint at) {
        Send(QEvent::MouseButtonRelease, button, down, at);
    }

    QtFixture fixture;
    Form form{"frmTest", "Teste", ScaleMode::Pixels, FormBorder::Sizable};
    PictureBox box{"picBox"};
    ScrollBar bar{"bar", Orientation::Vertical};
    std::string log;
};

}  // namespace

TEST_F(Windows, APlaceIsCountedFromThePrimaryScreensCorner) {
    form.CenterOnScreen();
    Show();
    const QRect primary = QGuiApplication::primaryScreen()->geometry();
    ASSERT_NE(primary.topLeft(), QPoint());
    EXPECT_EQ(FormWindow::Of(form)->geometry(), QRect(primary.topLeft() + QPoint(200, 250), QSize(400, 300)));
}

TEST_F(Windows, ADoubleClickIsPressReleaseClickPressDoubleClickRelease) {
    Show();
    Press(Qt::LeftButton, Qt::LeftButton, {30, 40});
    Release(Qt::LeftButton, {}, {30, 40});
    Send(QEvent::MouseButtonDblClick, Qt::LeftButton, Qt::LeftButton, {30, 40});
    Release(Qt::LeftButton, {}, {90, -5});
    EXPECT_EQ(log, "down1@30,40 up1@30,40 click down1@30,40 dbl up1@90,-5 ");
}

TEST_F(Windows, AWindowThatOpensInADragEndsItOnceWhereThePointerLastWas) {
    Show();
    Press(Qt::LeftButton, Qt::LeftButton, {30, 40});
    Send(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton, {35, 45});
    box.Move(-30, -15);  // scrolls away under the pointer
    QEvent blocked(QEvent::WindowBlocked);
    QCoreApplication::sendEvent(FormWindow::Of(form), &blocked);
    Release(Qt::LeftButton, {}, {50, 50});
    Send(QEvent::MouseMove, Qt::NoButton, Qt::NoButton, {60, 60});
    EXPECT_EQ(log, "down1@30,40 move1@35,45 up1@45,50 move0@60,60 ");
}

TEST_F(Windows, AMissedReleaseOfAnyButtonIsMadeUpForAtTheNextMove) {
    Show();
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::ExtraButton3, Qt::ExtraButton24})
        Press(button, button, {30, 40});
    Send(QEvent::MouseMove, Qt::NoButton, Qt::NoButton, {31, 41});
    EXPECT_EQ(log, "down1@30,40 down32@30,40 down16384@30,40 up1@31,41 up32@31,41 up16384@31,41 move0@31,41 ");
}

TEST_F(Windows, ADraggedWindowFollowsFromThePressToTheReleaseAndNoFurther) {
    QWidget* client = nullptr;
    QPoint pressed;
    const auto send = [&](QEvent::Type type, QPoint way, Qt::MouseButtons down) {
        QMouseEvent event(type, QPoint(50, 60), pressed + way, Qt::LeftButton, down, Qt::NoModifier);
        QCoreApplication::sendEvent(client, &event);
    };
    // The press comes late: everything after it is pending already.
    form.MouseDown = [&](int16_t, int16_t, float, float) {
        QTimer::singleShot(0, [&] {
            send(QEvent::MouseMove, {30, 200}, Qt::LeftButton);
            send(QEvent::MouseButtonRelease, {-40, 25}, {});
            send(QEvent::MouseMove, {300, 300}, {});
        });
        form.DragAsWindow();
    };
    Show();
    client = FormWindow::Of(form)->Client();
    pressed = client->mapToGlobal(QPoint(50, 60));
    const QPoint before = FormWindow::Of(form)->pos();
    send(QEvent::MouseButtonPress, {}, Qt::LeftButton);
    EXPECT_EQ(FormWindow::Of(form)->pos() - before, QPoint(-40, 25));
}

TEST_F(Windows, WhatIsCutOutOfABackdropLeavesNoFringeAtALargerScale) {
    auto picture = std::make_shared<Surface>(40, 30, 0xFFFFFF00u);
    FillRect(*picture, {0, 0, 20, 30}, Rgb(0, 0, 200));
    Form splash("frmSplash", "", ScaleMode::Pixels, FormBorder::None);
    splash.Place(0, 0, 40 * 15, 30 * 15);
    splash.SetBackColor(Rgb(0, 0, 200));
    splash.SetBackdrop(picture);
    splash.SetRegion(Region{{0, 0, 20, 30}});
    splash.Show();
    QImage shown(60, 45, QImage::Format_RGB32);
    shown.setDevicePixelRatio(1.5);
    FormWindow::Of(splash)->render(&shown);
    for (int x = 0; x < 30; ++x) EXPECT_EQ(shown.pixel(x, 20), qRgb(0, 0, 200)) << x;
}

TEST_F(Windows, APressOnALabelIsNotItsContainers) {
    Label label("label");
    box.AddChild(label);
    label.Place(50, 50, 80, 20);
    Show();
    Send(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton, {5, 5}, PeerOf(label)->Widget());
    EXPECT_EQ(log, "");
}

TEST_F(Windows, ATooltipIsOneLineHoweverLong) {
    Show();
    QToolTip::showText({}, PlainTip("Baía   do <norte> ao sul com barcos.jpg (1234k) - 11599 x 11199"), &Board());
    const auto all = QApplication::topLevelWidgets();
    const auto tip = std::ranges::find_if(all, [](QWidget* w) { return w->inherits("QTipLabel"); });
    ASSERT_NE(tip, all.end());
    EXPECT_LT((*tip)->height(), 2 * (*tip)->fontMetrics().height());
    QToolTip::hideText();
}

TEST_F(Windows, AThumbnailInTheDisplaysPixelsIsShownPixelForPixel) {
    for (const double ratio : {1.0, 1.25, 1.5, 1.75, 2.0}) {
        const auto scaled = [ratio](double pixels) { return int(std::floor(pixels * ratio + 0.5)); };
        CellSheet sheet("sheet");
        form.AddChild(sheet);
        sheet.Place(0, 0, 200, 150);
        CellSheet::Figure& figure = sheet.Load().figure;
        figure.left = 47, figure.top = 33, figure.visible = true;
        figure.image = PatternSurface({scaled(109), scaled(100)});
        Show();
        QPixmap display(scaled(200), scaled(150));
        display.setDevicePixelRatio(ratio);
        PeerOf(sheet)->Widget()->render(&display);
        const QImage shown = display.toImage().copy(scaled(3), scaled(2), scaled(109), scaled(100));
        int wrong = 0;
        for (int i = 0; i < shown.width() * shown.height(); ++i)
            wrong += shown.pixel(i % shown.width(), i / shown.width()) !=
                     figure.image.At(i % shown.width(), i / shown.width());
        EXPECT_EQ(wrong, 0) << ratio;
    }
}

TEST_F(Windows, AYieldForPaintsThrowsInputAway) {
    Show();
    const auto post = [this](QEvent::Type type) {
        const QPoint at(30, 40);
        QCoreApplication::postEvent(&Board(), new QMouseEvent(type, at, Board().mapToGlobal(at), Qt::LeftButton,
                                                              Qt::LeftButton, Qt::NoModifier));
    };
    post(QEvent::MouseButtonPress);
    QCoreApplication::postEvent(FormWindow::Of(form), new QCloseEvent);
    DoEvents(Yield::PaintsAndTimers);
    EXPECT_EQ(log, "");
    EXPECT_TRUE(form.IsShown());
    post(QEvent::MouseButtonPress);
    DoEvents();
    EXPECT_EQ(log, "down1@30,40 ");
}

TEST_F(Windows, EveryFrameIsPaintedAndNothingWaitsForTheNext) {
    struct Paints : QObject {
        int count = 0;
        bool eventFilter(QObject*, QEvent* event) override { return count += event->type() == QEvent::Paint, false; }
    } paints;
    Show();
    Board().installEventFilter(&paints);
    const double end = SteadySeconds() + 0.7;  // a display takes 1.7 seconds for as many
    for (int x = 0; x < 100; ++x, box.Image.Refresh(), fixture.desktop.PaintNow()) SetPixel(box.Image, 30 + x, 30, 0);
    EXPECT_EQ(paints.count, 100);
    EXPECT_LT(SteadySeconds(), end);
}

TEST_F(Windows, ASingleFileThatTheFormTakesIsDroppedUnlessADialogIsOpen) {
    form.TakesFile = [](const std::string& path) { return path.ends_with(".pzl"); };
    form.FileDropped = [this](const std::string& path) { log += path; };
    Show();
    const auto drop = [this](const char* list) {
        QMimeData carried;
        carried.setData("text/uri-list", list);
        QDragEnterEvent enter({5, 5}, Qt::CopyAction | Qt::MoveAction, &carried, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(FormWindow::Of(form), &enter);
        QDropEvent end({5, 5}, Qt::CopyAction | Qt::MoveAction, &carried, Qt::LeftButton, Qt::NoModifier);
        end.setDropAction(Qt::MoveAction);
        if (enter.isAccepted()) QCoreApplication::sendEvent(FormWindow::Of(form), &end);
        log = !end.isAccepted() ? "refused" : end.dropAction() == Qt::CopyAction ? "copy " : "move ";
        DoEvents();  // the handler runs when the other program has its answer
        return log;
    };
    EXPECT_EQ(drop("#\r\nfile:///a%20b/%FF.pzl\r\n"), "copy /a b/\xFF.pzl");
    for (const char* list : {"file:///a.png", "file:///a.pzl\r\nfile:///b.pzl", "http://x/a.pzl", ""})
        EXPECT_EQ(drop(list), "refused") << list;
    Form modal("frmModal", "", ScaleMode::Twips, FormBorder::FixedDialog);
    modal.Place(0, 0, 3000, 3000);
    modal.OnActivate = [&] {
        EXPECT_EQ(drop("file:///a.pzl"), "refused");
        modal.Unload();
    };
    modal.Show(Modality::Modal);
    EXPECT_EQ(drop("file://here/a.pzl"), "copy /a.pzl");
}

TEST_F(Windows, TheWheelTurnsInPartsOfNotchesATouchpadInPixelsAndBothOverABarToo) {
    box.Wheel = bar.Wheel = [this](const WheelTurn& turn) {
        const char* unit = turn.unit == WheelTurn::Unit::Pixels ? "px " : " ";
        log += FromText(QString::number(turn.x) + "," + QString::number(turn.y) + unit);
    };
    Show();
    const auto turn = [](QWidget& over, QPoint pixels, int eighths, Qt::KeyboardModifiers keys) {
        QWheelEvent event(QPointF(5, 5), QPointF(5, 5), pixels, {0, eighths}, Qt::NoButton, keys, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(&over, &event);
    };
    turn(Board(), {}, 120, {});
    turn(Board(), {}, -30, {});
    turn(Board(), {}, -240, Qt::ShiftModifier);
    turn(Board(), {3, -7}, -56, {});
    turn(Bar(), {}, 120, {});
    EXPECT_EQ(log, "0,1 0,-0.25 -2,0 3,-7px 0,1 ");
}

TEST_F(Windows, ABarThatRunsBackwardsKeepsItsValues) {
    std::string changes;
    bar.Change = [&] { changes += std::to_string(bar.Value()) + " "; };
    ASSERT_TRUE(bar.SetMin(0));
    ASSERT_TRUE(bar.SetMax(-1390));
    ASSERT_TRUE(bar.SetLargeChange(463));
    Show();
    EXPECT_TRUE(Bar().minimum() == 0 && Bar().maximum() == 1390 && Bar().pageStep() == 463);
    Bar().setValue(100);
    EXPECT_EQ(bar.Value(), -100);
    ASSERT_TRUE(bar.SetValue(-1390));
    EXPECT_EQ(Bar().value(), 1390);
    EXPECT_FALSE(bar.SetValue(1));
    EXPECT_EQ(Bar().value(), 1390);
    EXPECT_EQ(changes, "-100 -1390 ");
}

TEST_F(Windows, ADisabledItemIsGreyAndItsShortcutDeadUntilItIsEnabledAgain) {
    int runs = 0, openings = 0;
    MenuItem& menu = form.Menus.Add("mnu", "Jogo");
    MenuItem& item = menu.Add("item", "Salvar este jogo   ", {'S', 0, true});
    menu.Click = [&] { ++openings; };
    item.Click = [&] { ++runs; };
    Show();
    EXPECT_EQ(FirstAction()->shortcut().toString(), "Ctrl+S");
    item.SetEnabled(false);
    EXPECT_FALSE(FirstAction()->isEnabled());
    FirstAction()->trigger();
    EXPECT_EQ(runs, 0);
    item.SetEnabled(true);
    FirstAction()->trigger();
    EXPECT_EQ(runs, 1);
    emit FormWindow::Of(form)->MenuBar().actions().front()->menu()->aboutToShow();
    EXPECT_EQ(openings, 1);
}

TEST_F(Windows, ActivationComesOncePerChangeOfTheActiveForm) {
    int first = 0, second = 0;
    form.OnActivate = [&] { ++first; };
    Show();
    EXPECT_EQ(first, 1);
    QEvent again(QEvent::WindowActivate);
    QCoreApplication::sendEvent(FormWindow::Of(form), &again);
    DoEvents();
    EXPECT_EQ(first, 1) << "the return from another program or a box";
    Form other("frmOther", "Outra", ScaleMode::Twips, FormBorder::FixedDialog);
    other.Place(0, 0, 3000, 3000);
    other.OnActivate = [&] {
        ++second;
        other.Unload();
    };
    other.Show(Modality::Modal);
    EXPECT_EQ(second, 1);
    QCoreApplication::sendEvent(FormWindow::Of(form), &again);
    DoEvents();
    EXPECT_EQ(first, 2);
}

TEST_F(Windows, OnlyAStyleSheetIsASkinAndItStaysWithItsWindow) {
    EXPECT_FALSE(fixture.desktop.LoadSkin("QMenuBar { color: "));
    EXPECT_FALSE(fixture.desktop.LoadSkin("  \n"));
    ASSERT_TRUE(fixture.desktop.LoadSkin("QMenuBar { color: #102030; }"));
    form.Load();
    fixture.desktop.ApplySkin(form);
    Show();
    Form plain("frmPlain", "", ScaleMode::Twips, FormBorder::FixedDialog);
    plain.Show();
    EXPECT_FALSE(FormWindow::Of(form)->styleSheet().isEmpty());
    EXPECT_TRUE(FormWindow::Of(plain)->styleSheet().isEmpty());
    EXPECT_EQ(FormWindow::Of(plain)->parentWidget(), nullptr);
}
