// The desktop: yields, timers, windows over each other, drags and drops, dialogs, skin and places.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCloseEvent>
#include <QColorDialog>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>
#include <QTreeView>
#include <QWindow>

#include "platform/controls/picture_box.h"
#include "platform/qt/translations.h"
#include "platform/system/timer.h"
#include "tests/platform/qt/fixture.h"
#include "tests/platform/qt/widget_dump.h"
#include "tests/support/golden.h"

namespace {

class Desktops : public testing::Test {
protected:
    Desktops() {
        form.Place(1500, 1500, 400 * 15, 300 * 15);
        form.AddChild(box);
        box.Place(20, 30, 300, 200);
        form.OnActivate = Note("form");
        box.MouseDown = NoteMouse("down"), box.MouseUp = NoteMouse("up"), box.MouseMove = NoteMouse("move");
    }

    Handler Note(const char* what) {
        return [this, what] { log += std::string(what) + " "; };
    }
    MouseHandler NoteMouse(const char* what) {
        return [this, what](int16_t, int16_t, float, float) { Note(what)(); };
    }
    static FormWindow& Window(const Form& of) { return *FormWindow::Of(of); }
    static QWidget& Board(const PictureBox& of) { return *PeerOf(of)->Content(); }
    std::string Log() { return std::exchange(log, {}); }

    void Show() {
        form.Show();
        DoEvents();
    }
    static void Mouse(QWidget& to, QEvent::Type type, QPoint global, Qt::MouseButtons down) {
        QMouseEvent event(type, to.mapFromGlobal(global), global, Qt::LeftButton, down, Qt::NoModifier);
        QCoreApplication::sendEvent(&to, &event);
    }
    // Runs `act` on the dialog that the program opens next.
    template <typename T = QDialog>
    static void InDialog(const std::function<void(T&)>& act) {
        QTimer::singleShot(0, [act] {
            auto* dialog = dynamic_cast<T*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            act(*dialog);
        });
    }
    static void Type(QWidget& to, int key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&to, &event);
    }

    QtFixture fixture;
    const TempFolder folder;
    Form form{"frmTest", "Teste", ScaleMode::Pixels, FormBorder::Sizable};
    PictureBox box{"box"};
    std::string log;
};

}  // namespace

TEST_F(Desktops, AYieldForPaintsThrowsInputAwayAndOneForAllDeliversItWithTimers) {
    Show();
    Log();
    const auto post = [this](QEvent::Type type) {
        QCoreApplication::postEvent(&Board(box), new QMouseEvent(type, QPoint(3, 4), QPoint(3, 4), Qt::LeftButton,
                                                                 Qt::LeftButton, Qt::NoModifier));
    };
    Timer timer("timer", 1), never("never", 0), ended("ended", 1);
    timer.Tick = [&] { log += "tick ", timer.SetEnabled(false); };
    never.Tick = ended.Tick = Note("wrong");
    for (Timer* each : {&timer, &never, &ended}) each->SetEnabled(true);
    ended.SetEnabled(false);
    post(QEvent::MouseButtonPress);
    QCoreApplication::postEvent(&Window(form), new QCloseEvent);
    fixture.desktop.SleepUntil(SteadySeconds() + 0.003);
    DoEvents(Yield::PaintsAndTimers);
    EXPECT_EQ(Log(), "tick ");
    EXPECT_TRUE(form.IsShown());
    post(QEvent::MouseButtonPress);
    timer.SetInterval(2), timer.SetEnabled(true);
    DoEvents();
    EXPECT_EQ(Log(), "down ");
    EXPECT_TRUE(Comes([&] { return log == "tick "; }));
    const double start = SteadySeconds();
    fixture.desktop.SleepUntil(start - 1), fixture.desktop.SleepUntil(start + 0.01);
    EXPECT_GE(SteadySeconds(), start + 0.01);
}

TEST_F(Desktops, WindowsComeAndGoOverEachOtherAndEachActivationIsToldOnce) {
    Form other("frmOther", "Outra", ScaleMode::Pixels, FormBorder::FixedDialog),
        tool("t", "", ScaleMode::Pixels, FormBorder::FixedToolWindow);
    for (Form* small : {&other, &tool}) small->Place(3000, 3000, 3000, 3000);
    Show();
    EXPECT_EQ(Log(), "form ");
    EXPECT_EQ(Window(form).geometry().topLeft(),
              QGuiApplication::primaryScreen()->geometry().topLeft() + QPoint(100, 100));
    const auto activate = [this] {
        QEvent again(QEvent::WindowActivate);
        QCoreApplication::sendEvent(&Window(form), &again);
        DoEvents();
    };
    activate();
    EXPECT_EQ(Log(), "") << "the return from another program or a box";
    EXPECT_EQ(FormWindow::Frontmost(), &Window(form));
    other.OnActivate = [&] {
        log += "other ";
        EXPECT_TRUE(Window(other).isModal());
        EXPECT_EQ(FormWindow::Frontmost(), &Window(other));
        EXPECT_EQ(Window(other).windowHandle()->transientParent(), Window(form).windowHandle());
        activate();
        Form inner("frmInner", "", ScaleMode::Pixels, FormBorder::FixedDialog);
        inner.Place(0, 0, 900, 900);
        inner.OnActivate = [&] { log += "inner ", other.Hide(), inner.Hide(); };
        inner.Show(Modality::Modal);
        log += other.IsShown() ? "" : "back ";
    };
    other.Show(Modality::Modal);
    activate();
    EXPECT_EQ(Log(), "other inner back form ");
    Mouse(Board(box), QEvent::MouseButtonPress, {0, 0}, Qt::LeftButton);
    other.OnActivate = [&] { other.Unload(); };
    other.Show(Modality::Modal);
    EXPECT_EQ(Log(), "down up ") << "a hold ends before";
    activate();
    EXPECT_EQ(Log(), "form ");
    tool.OnActivate = Note("tool");
    tool.Show();
    DoEvents();
    EXPECT_FALSE(Window(tool).isModal());
    EXPECT_EQ(Window(tool).windowHandle()->transientParent(), nullptr);
    const double start = SteadySeconds();
    form.Show();  // to the front
    EXPECT_TRUE(Window(form).isActiveWindow());
    EXPECT_LT(SteadySeconds(), start + 0.25);
    EXPECT_TRUE(Comes([this] { return log == "tool form "; })) << log;
    tool.Hide();
    form.Hide();
    EXPECT_EQ(FormWindow::Frontmost(), nullptr);
    EXPECT_FALSE(fixture.desktop.FrameOf(tool).top);
    EXPECT_EQ(fixture.desktop.ScaleOf(other), 1);
}

// What was pressed follows to the release and no further, also if all of that is pending when it is told.
TEST_F(Desktops, ADraggedBoxOrWindowFollowsFromThePressToTheRelease) {
    PictureBox panel("panel", ScaleMode::Twips), child("child");
    form.AddChild(panel);
    panel.Place(200, 200, 100, 80);
    panel.AddChild(child);
    child.Place(300, 300, 600, 450);
    const auto drag = [&](QWidget& on, bool later, const std::function<void()>& begin) {
        const QPoint pressed = on.mapToGlobal(QPoint(5, 6));
        const auto move = [&on, pressed](QEvent::Type type, QPoint way, Qt::MouseButtons down) {
            Mouse(on, type, pressed + way, down);
        };
        panel.MouseDown = child.MouseDown = form.MouseDown = [&](int16_t, int16_t, float, float) {
            QTimer::singleShot(0, [move, later] {
                move(QEvent::MouseMove, {30, 200}, Qt::LeftButton);
                move(QEvent::MouseButtonRelease, {-40, 25}, {});
                if (later) move(QEvent::MouseMove, {300, 300}, {});
            });
            begin();
        };
        move(QEvent::MouseButtonPress, {}, Qt::LeftButton);
        move(QEvent::MouseButtonRelease, {}, {});
    };
    panel.MouseUp = child.MouseUp = NoteMouse("up");
    Show();
    drag(Board(panel), false, [&] { panel.DragAsWindow(); });
    EXPECT_EQ(panel.PixelRect(), (Rect{160, 225, 100, 80}));
    drag(Board(child), false, [&] { child.DragAsWindow(); });
    EXPECT_EQ(child.PixelRect(), (Rect{-20, 45, 40, 30}));
    const QPoint before = Window(form).pos();
    drag(*Window(form).Client(), true, [&] { form.DragAsWindow(); });
    EXPECT_EQ(Window(form).pos() - before, QPoint(-40, 25));
    EXPECT_EQ(Log(), "form ");
    // A window that opens ends it as well.
    panel.MouseDown = [&](int16_t, int16_t, float, float) {
        QTimer::singleShot(0, [&] {
            QEvent blocked(QEvent::WindowBlocked);
            QCoreApplication::sendEvent(&Window(form), &blocked);
        });
        panel.DragAsWindow();
        log += "over ";
    };
    Mouse(Board(panel), QEvent::MouseButtonPress, {}, Qt::LeftButton);
    EXPECT_EQ(Log(), "up over ");
}

TEST_F(Desktops, ASingleFileThatTheFormTakesIsDroppedUnlessADialogIsOpen) {
    form.TakesFile = [](const std::string& path) { return path.ends_with(".pzl"); };
    form.FileDropped = [this](const std::string& path) { log += path; };
    Show();
    EXPECT_TRUE(Window(form).acceptDrops());
    const auto drop = [this](const char* list, Qt::DropActions offered = Qt::CopyAction | Qt::MoveAction) {
        QMimeData carried;
        carried.setData("text/uri-list", list);
        QDragEnterEvent enter({5, 5}, offered, &carried, Qt::LeftButton, Qt::NoModifier);
        QDragMoveEvent move({6, 5}, offered, &carried, Qt::LeftButton, Qt::NoModifier);
        QDropEvent end({5, 5}, offered, &carried, Qt::LeftButton, Qt::NoModifier);
        end.setDropAction(Qt::MoveAction);
        log.clear();
        for (QDropEvent* event : {static_cast<QDropEvent*>(&enter), static_cast<QDropEvent*>(&move), &end}) {
            QCoreApplication::sendEvent(&Window(form), event);
            log += event->isAccepted() ? std::to_string(int(event->dropAction())) : "-";
        }
        DoEvents();  // the handler runs when the other program has its answer
        return log;
    };
    EXPECT_EQ(drop("#\r\nfile:///a%20b/%FF.pzl\r\n"), "111/a b/\xFF.pzl");
    EXPECT_EQ(drop("file:/b.pzl", Qt::LinkAction), "444/b.pzl");
    EXPECT_EQ(drop("file:/b.pzl", Qt::MoveAction), "---");
    for (const char* list : {"file:///a.png", "file:///a.pzl\r\nfile:///b.pzl", "http://x/a.pzl", "file://x", ""})
        EXPECT_EQ(drop(list), "---") << list;
    Form modal("frmModal", "", ScaleMode::Twips, FormBorder::FixedDialog);
    modal.Place(0, 0, 3000, 3000);
    modal.OnActivate = [&] {
        EXPECT_EQ(drop("file:///a.pzl"), "---");
        modal.Unload();
    };
    modal.Show(Modality::Modal);
    EXPECT_EQ(drop("file://here/a.pzl"), "111/a.pzl");
}

TEST_F(Desktops, BoxesStandOverTheirWindowAndAnswerToTheirKeys) {
    Show();
    std::string text;
    const auto ask = [&](int style, int key, const char* title = "Uma caixa") {
        InDialog<QMessageBox>([&, key](QMessageBox& dialog) {
            text += FromText("box" + Properties(dialog)) + " icon " + std::to_string(int(dialog.icon()));
            for (const QAbstractButton* button : dialog.buttons()) text += FromText(" button" + Properties(*button));
            text += "\n";
            const QPoint off = dialog.frameGeometry().center() - Window(form).frameGeometry().center();
            EXPECT_LE(off.manhattanLength(), 4);
            EXPECT_GE(dialog.width(), 260 + dialog.fontMetrics().horizontalAdvance(title) / 2);
            EXPECT_EQ(dialog.windowHandle()->transientParent(), Window(form).windowHandle());
            key ? Type(dialog, key) : dialog.buttons().back()->click();
        });
        return MsgBox("Um <b>texto</b>", style, title);
    };
    const std::string wide(25, 'M');
    EXPECT_EQ(ask(OKOnly, Qt::Key_Return), MsgBoxResult::OK);
    EXPECT_EQ(ask(Critical, Qt::Key_Escape), MsgBoxResult::OK);
    EXPECT_EQ(ask(YesNo | Question, Qt::Key_Return), MsgBoxResult::Yes);
    EXPECT_EQ(ask(YesNo | Question, Qt::Key_Escape), MsgBoxResult::No);
    EXPECT_EQ(ask(YesNo | Exclamation, 0, wide.c_str()), MsgBoxResult::No);
    ExpectGolden("boxes.txt", text);
    // Wherever the window is, the box stays on the screen; the yield that opened it discards nothing there.
    Window(form).move(QGuiApplication::primaryScreen()->geometry().bottomLeft() - QPoint(340, 60));
    QTimer::singleShot(0, [&] {
        InDialog<QMessageBox>([&](QMessageBox& dialog) {
            const QRect place = dialog.geometry(), room = QGuiApplication::primaryScreen()->geometry();
            EXPECT_TRUE(room.adjusted(0, 0, 2, 2).contains(place)) << place.left() << " " << place.bottom();
            EXPECT_LE(room.bottom() - place.bottom() + place.left() - room.left(), 12);
            auto& button = static_cast<QPushButton&>(*dialog.buttons().front());
            Mouse(button, QEvent::MouseButtonPress, button.mapToGlobal(QPoint(5, 5)), Qt::LeftButton);
            EXPECT_TRUE(button.isDown());
            dialog.accept();
        });
        MsgBox("Texto");
    });
    DoEvents(Yield::PaintsAndTimers);
}

TEST_F(Desktops, TheColourDialogTakesAndGivesAllColours) {
    std::array<Color, 16> custom{};
    for (int i = 0; i < 16; ++i) custom[size_t(i)] = Rgb(i, 100, 200);
    for (const bool accepts : {true, false}) {
        InDialog<QColorDialog>([&](QColorDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Cor");
            EXPECT_EQ(dialog.currentColor(), QColor(10, 20, 30));
            EXPECT_EQ(QColorDialog::customColor(15), QColor(15, 100, 200));
            dialog.setCurrentColor(QColor(40, 50, 60));
            QColorDialog::setCustomColor(3, QColor(accepts ? 7 : 8, 8, 9));
            accepts ? static_cast<QDialog&>(dialog).accept() : dialog.reject();
        });
        const std::optional<Color> chosen = fixture.desktop.ColorDialog(Rgb(10, 20, 30), true, custom);
        EXPECT_EQ(chosen, accepts ? std::optional(Rgb(40, 50, 60)) : std::nullopt);
        EXPECT_EQ(custom[3], Rgb(accepts ? 7 : 8, 8, 9));
        EXPECT_EQ(custom[0], Rgb(0, 100, 200));
    }
}

// Types names into the dialog: what it returns in the end, "!" before it for each that it refused.
TEST_F(Desktops, ANameIsOpenedWithOrWithoutItsExtensionOrRefused) {
    for (const char* name : {"um.pzl", "dois.tres.pzl", "quatro", "cinco.pzl/x", "seis \xE7.pzl", "outro.txt"})
        folder.Write(name, "x");
    FileDialogRequest request;
    request.folder = folder.Path();
    std::string texts;
    const auto type = [&](bool save, std::vector<const char*> names, int index = 1) {
        request.save = save;
        request.filters = {{"Jogos (*.pzl)", "*.pzl"}, {"Textos", "*.txt"}};
        request.filterIndex = index;
        request.flags = index == 1 ? OFN_OVERWRITEPROMPT : 0;
        std::string refusals;
        InDialog<QFileDialog>([&](QFileDialog& dialog) {
            texts +=
                FromText(Properties(dialog) + " " + dialog.nameFilters().join(";") + " " + dialog.selectedNameFilter());
            for (const int label : {0, 1, 2, 3, 4})
                texts += FromText(" " + dialog.labelText(QFileDialog::DialogLabel(label)));
            texts += dialog.testOption(QFileDialog::DontConfirmOverwrite) ? " silent\n" : "\n";
            EXPECT_EQ(dialog.size(), QSize(760, 480));
            EXPECT_EQ(FromText(dialog.directory().path()), folder.Path());
            for (const char* name : names) {
                QTimer::singleShot(0, [&] {
                    auto* refusal = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget());
                    if (refusal) refusals += refusal->text().contains(name) ? "!" : "?", refusal->accept();
                });
                dialog.findChild<QLineEdit*>("fileNameEdit")->setText(name);
                static_cast<QDialog&>(dialog).accept();
                QCoreApplication::processEvents();
            }
            if (dialog.isVisible()) dialog.reject();
        });
        const std::string path = fixture.desktop.FileDialog(request).value_or("cancelled");
        return refusals + path.substr(path.rfind('/') + 1) + std::to_string(request.filterIndex);
    };
    EXPECT_EQ(type(false, {"um"}), "um.pzl1");
    EXPECT_EQ(type(false, {"dois.tres"}), "dois.tres.pzl1");
    EXPECT_EQ(type(false, {"quatro"}), "quatro1");
    EXPECT_EQ(type(false, {"nada", "nada.pzl", "cinco", "um.pzl"}), "!!!um.pzl1");
    EXPECT_EQ(type(false, {"um", "outro"}, 2), "!outro.txt2");
    EXPECT_EQ(type(false, {"seis \uFFFD.pzl"}), "seis \xE7.pzl1");
    EXPECT_EQ(type(false, {"nada"}, 9), "!cancelled9");
    EXPECT_EQ(type(true, {"novo"}, 2), "novo2");
    request.title = "Outro título";
    EXPECT_EQ(type(true, {"um.pzl"}, 3), "um.pzl1");
    ExpectGolden("file_dialogs.txt", texts);
}

TEST_F(Desktops, ColumnsShowWhatTheyHoldWhateverTheDialogBeforeLeft) {
    for (int turn = 0; turn < 2; ++turn) {
        InDialog<QFileDialog>([](QFileDialog& dialog) {
            QCoreApplication::processEvents();
            QHeaderView& header = *dialog.findChild<QTreeView*>("treeView")->header();
            EXPECT_EQ(header.length(), header.viewport()->width());
            for (int column = 0; column < header.count(); ++column) {
                EXPECT_EQ(header.visualIndex(column), column);
                EXPECT_GE(header.sectionSize(column), header.sectionSizeHint(column)) << column;
                header.setSectionResizeMode(column, QHeaderView::Interactive);
                header.resizeSection(column, 20);
            }
            header.moveSection(0, 2);
            header.hideSection(3);
            dialog.close();
        });
        FileDialogRequest request;
        request.folder = folder.Path();
        EXPECT_FALSE(fixture.desktop.FileDialog(request));
    }
}

TEST_F(Desktops, OnlyAStyleSheetIsASkinAndItStaysWithItsWindow) {
    EXPECT_FALSE(fixture.desktop.LoadSkin("QMenuBar { color: "));
    EXPECT_FALSE(fixture.desktop.LoadSkin("  \n"));
    ASSERT_TRUE(fixture.desktop.LoadSkin("QMenuBar { color: #102030; }"));
    form.Load();
    fixture.desktop.ApplySkin(form);
    Show();
    Form plain("frmPlain", "", ScaleMode::Twips, FormBorder::FixedDialog);
    plain.Show();
    EXPECT_FALSE(Window(form).styleSheet().isEmpty());
    EXPECT_TRUE(Window(plain).styleSheet().isEmpty());
    EXPECT_EQ(Window(plain).parentWidget(), nullptr);
}

TEST_F(Desktops, ScreenColoursPlacesPagesAndWordsAreTheDesktops) {
    EXPECT_EQ(fixture.desktop.ScreenWidth(), 800 * 15);
    EXPECT_EQ(fixture.desktop.ScreenHeight(), 800 * 15);
    EXPECT_EQ(ResolveColor(WindowColor), Rgb(255, 255, 255));
    EXPECT_EQ(ResolveColor(ButtonFaceColor), Rgb(0xE0, 0xDC, 0xD8));
    EXPECT_EQ(fixture.desktop.TextSize({12, false, false}, "Fento\nLira").height,
              fixture.desktop.TextSize({12, false, false}, "F").height);
    EXPECT_GT(fixture.desktop.TextSize({24, false, false}, "F").height,
              1.5 * fixture.desktop.TextSize({12, false, false}, "F").height);

    const std::string home = qEnvironmentVariable("HOME").toStdString();
    const auto places = [&] {
        std::string text;
        for (const Volume& volume : fixture.desktop.QtDesktop::Volumes())
            text += volume.label + " " + std::to_string(int(volume.kind)) +
                    (volume.root.starts_with(home) ? "~" : volume.root) + ";";
        return text;
    };
    const std::string known = places();
    EXPECT_TRUE(known.starts_with("Computador 1/;Pasta pessoal 2~;")) << known;
    EXPECT_EQ(known.find("Minhas"), std::string::npos);
    std::filesystem::create_directory(home + "/Pictures");
    EXPECT_EQ(places(), known + "Minhas imagens 3~;");
    EXPECT_EQ(fixture.desktop.ProgramPath(), std::filesystem::read_symlink("/proc/self/exe"));

    InstallPortuguese();
    EXPECT_EQ(QCoreApplication::translate("QColorDialog", "&HTML:"), "&HTML:");
    EXPECT_NE(QCoreApplication::translate("QFileDialog", "Look in:"), "Look in:");
    EXPECT_EQ(QCoreApplication::translate("QFileDialog", "Nothing that is known"), "Nothing that is known");
    EXPECT_EQ(QLocale().name(), "pt_BR");
}
