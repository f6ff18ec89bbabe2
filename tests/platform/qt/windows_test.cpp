// Peers in real widgets: what the player's events become, what state the widgets have; how windows go with each other.
#include "platform/drawing/raster.h"
#include "platform/qt/translations.h"
#include "platform/qt/widgets/place_icons.h"
#include "platform/system/timer.h"
#include "tests/platform/qt/fixture.h"

namespace {

constexpr auto L = Qt::LeftButton, R = Qt::RightButton, M = Qt::MiddleButton;

// A number that tells the pixels from others.
std::string PixelsOf(const QImage& image) {
    const QImage plain = image.convertToFormat(QImage::Format_RGB32);
    return FromText(Described(plain.rect())) + " " +
           std::to_string(qChecksum(QByteArrayView(plain.constBits(), plain.sizeInBytes())));
}

struct Paints : QObject {
    QRegion region;
    int count = 0;
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) region = static_cast<QPaintEvent&>(*event).region(), ++count;
        return false;
    }
};

// The window with everything in it, and the lists of folders.
class Windows : public QtFixture, protected EveryControl {
protected:
    Windows() {
        for (const char* name : {"alfa/um", "beta"}) folder.MakeFolder(name);
        transcript.changing = {folder.Path(), "~"};
        transcript.state = [this] {
            State state;
            for (const Form* each : shown) state = AddWindow(*each, folder.Path(), state);
            for (const Control* each : seen)
                state[each->Name() + " looks"] = PixelsOf(PeerOf(*each)->Widget()->grab().toImage());
            return state;
        };
        Add(form, drives, 10, 220, 150, 22), Add(form, rows, 180, 215, 190, 80);
        rows.SetTabIndex(1), rows.SetPath(folder / "alfa"), save.SetChecked(true);
        auto& [cell, figure] = sheet.Load();
        cell = {150, 150, 600, 450, 0, true, ""};
        figure.left = 300, figure.top = 300, figure.width = 300, figure.height = 150, figure.visible = true;
        figure.toolTip = "Baía   do <norte> ao sul com barcos.jpg - 11599 x 11199";
        Listen();
        HEAR(drives.Change, rows.Change);
    }

    void Aim(Control* at) { target = at, down = {}; }
    QWidget& Target() { return target == &form ? *Window(form).Client() : On(*target); }
    void Mouse(QEvent::Type type, Qt::MouseButton button, QPointF at) {
        down.setFlag(button, type != QEvent::MouseButtonRelease && button != Qt::NoButton);
        Give(Target(), QMouseEvent(type, at, Target().mapToGlobal(at), button, down, keys));
    }
    void Press(Qt::MouseButton button) { Mouse(QEvent::MouseButtonPress, button, point); }
    void Double(Qt::MouseButton button) { Mouse(QEvent::MouseButtonDblClick, button, point); }
    void Release(Qt::MouseButton button) { Mouse(QEvent::MouseButtonRelease, button, point); }
    void Move(QPointF to) { Mouse(QEvent::MouseMove, Qt::NoButton, point = to); }
    void Type(int key) {
        Give(target == &form ? Window(form) : Target(),
             QKeyEvent(QEvent::KeyPress, key, keys & ~Qt::ControlModifier, key < 128 ? QChar(key).toLower() : QChar()));
    }
    bool Turn(QPoint pixels, QPoint eighths) {
        return Give(Target(), QWheelEvent(point, point, pixels, eighths, Qt::NoButton, keys, Qt::NoScrollPhase, false));
    }
    void Send(QEvent::Type type) { Give(Window(form), QEvent(type)); }
    void Show() { form.Show(), DoEvents(); }

    DriveListBox drives{"drives"};
    DirListBox rows{"rows"};
    std::vector<const Form*> shown{&form};
    std::vector<const Control*> seen;  // of which each pixel counts; without text
    Control* target = &box;
    Qt::MouseButtons down;
    Qt::KeyboardModifiers keys;
    QPointF point{30.5, 40}, pressed;
};

}  // namespace

TEST_F(Windows, WidgetsFollowTheirControls) {
    Form tool("tool", "", ScaleMode::Pixels, FormBorder::FixedToolWindow), bare("bare", "", {}, FormBorder::None);
    Form dialog("dialog", "Caixa", ScaleMode::Pixels, FormBorder::FixedDialog);
    for (Form* each : {&tool, &bare, &dialog}) each->Place(150, 300, 900, 600), shown.push_back(each);
    bare.SetRegion(Region{{5, 6, 20, 10}, {10, 0, 4, 30}});
    DO(Show());
    DO(tool.Show(), bare.Show(), dialog.Show());
    controls.insert(controls.end(), {&drives, &rows, &tool});
    seen = {&box, &edged, &inner, &image, &frame, &panel, &sheet};
    transcript.Walk(600, Properties() | STEP(drives.Follow(Chance() ? "/media/x/y" : "/home/a<b/Fotos")) |
                             STEP(rows.SetPath(folder / (Chance() ? "beta" : "alfa"))) |
                             STEP(bare.SetRegion(Chance() ? std::optional(Region{}) : std::nullopt)) |
                             STEP(void(link.Click = Chance() ? Handler() : Handler(transcript.Told("link")))) |
                             STEP(form.SetState(AnyState()), form.State()));
    form.SetVisible(true), form.SetEnabled(true), menu.SetEnabled(true), help.SetEnabled(true);
    DO(form.Place(1500, 1500, 6000, 4500));
    DO(Window(form).showNormal(), form.State());
    DO(Window(form).resize(500, 350));
    const int menus = Window(form).MenuBar().sizeHint().height();
    EXPECT_EQ(Window(form).Client()->geometry(), QRect(0, menus, 500, 350 - menus));
    for (QShortcut* shortcut : Window(form).findChildren<QShortcut*>()) DO(shortcut->activated());
    const QAction& first = *Window(form).MenuBar().actions().front();
    EXPECT_EQ(Window(form).MenuBar().activeAction(), &first);
    for (const int item : {0, 2}) DO(first.menu()->actions()[item]->trigger());
    DO(Window(form).close());
}

// Widgets without text, at every density of screen and picture. Of a board only what is another is painted, at once.
TEST_F(Windows, ShowTheirPixelsAtEveryDensity) {
    shown.clear();
    Form bare("bare", "", ScaleMode::Pixels, FormBorder::None);
    bare.Place(0, 0, 1200, 900), bare.SetRegion(Region{{0, 0, 80, 40}, {0, 40, 70, 20}});
    image.SetPicture(std::make_shared<Picture>(Picture{{13, 9}, PatternSurface({13, 9})}));
    inner.SetBackColor(Rgb(200, 0, 0)), form.SetBackColor(Rgb(0, 0, 120));
    for (const double at : {900, 1500, 1800}) {
        auto& [cell, figure] = sheet.Load();
        cell = {at, at / 9, 300, 240, Rgb(int(at) % 256, 255, 0), at != 1500, ""};
        figure.left = at + 30, figure.top = 200, figure.width = 240, figure.height = 150, figure.visible = at != 1500;
        figure.image = PatternSurface({at < 1000 ? 16 : 24, at < 1000 ? 10 : 15});
    }
    DO(Show(), bare.Show());
    seen = {&box, &edged, &image, &frame, &sheet};
    form.OnResize = {};  // some releases of the toolkit shrink a window for a moment on its way to another density
    for (const QScreen* screen : QGuiApplication::screens())
        for (const int density : {1, 2, 3}) {
            Window(form).move(screen->geometry().topLeft()), Window(bare).move(screen->geometry().topLeft());
            box.Image.SetDensity(Density(density));
            PaintPicture(box.Image, box.Image.Bounds(), PatternSurface({960, 450}));
            auto backdrop = std::make_shared<Surface>(80, 60);
            backdrop->SetDensity(Density(density));
            FillRect(*backdrop, {9, 9, 50, 30}, Rgb(0xE0, 0xDC, 0xD8));
            DO(bare.SetBackdrop(backdrop), sheet.Change(2).frame.left += 15, DoEvents());
            DO(PixelsOf(Window(bare).grab().toImage()));
            DO(desktop.ScaleOf(form));
            Paints paints;
            On(box).installEventFilter(&paints);
            for (int x = 30; x < 41; ++x, desktop.PaintNow()) SetPixel(box.Image, x, 20, 0), box.Image.Refresh();
            DO(FromText(Described(paints.region.boundingRect())) + " of " + std::to_string(paints.count));
        }
    for (const Volume::Kind kind : {Volume::Kind::Home, Volume::Kind::Pictures})
        for (const int side : {16, 20, 24, 48})
            DO(PixelsOf(PlaceIcon(kind, *QApplication::style()).pixmap(side).toImage()));
}

// Whatever comes to whatever control, in any order.
TEST_F(Windows, HearThePlayer) {
    DO(Show());
    DO(bar.SetMax(-5000), bar.SetLargeChange(1133), bar.SetSmallChange(3));
    const std::vector<Qt::MouseButton> buttons{L, L, L, R, M, Qt::ExtraButton3, Qt::ExtraButton24};
    std::vector<int> codes{Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter, Qt::Key_B};
    for (int key = Qt::Key_Home; key <= Qt::Key_PageDown; ++key) codes.push_back(key);
    const std::vector<int> modifiers{0, Qt::ShiftModifier, Qt::ControlModifier, 5 << 25};
    transcript.Walk(1200, Steps{} | STEP(Press(transcript.Draw(buttons))) | STEP(Press(L)) | STEP(Release(L)) |
                              STEP(Release(transcript.Draw(buttons))) | STEP(Double(transcript.Draw(buttons))) |
                              STEP(Move(QPointF(25, 24))) | STEP(Move(QPointF(12.5, 12))) |
                              STEP(Move(QPointF(90, -5))) | STEP(Aim(&Any())) | STEP(Aim(&box)) |
                              STEP(Type(transcript.Draw(codes))) | STEP(Type(transcript.Draw(codes))) |
                              STEP(Send(QEvent::WindowBlocked)) | STEP(box.SetVisible(!box.Visible())) |
                              STEP(box.Move(-box.Left(), -10)) | STEP(down = {}) |
                              STEP(keys = Qt::KeyboardModifiers(transcript.Draw(modifiers))) |
                              STEP(Turn({}, {60, -30})) | STEP(Turn({3, -7}, {8, -56})));
    keys = {};
    for (const int key : {Qt::Key_U, Qt::Key_Enter, Qt::Key_Up, Qt::Key_Return}) DO(Aim(&rows), Type(key));
    DO(Aim(&bar), bar.Wheel = box.Wheel, Turn({}, {0, -120}));
    DO(Aim(&drives), Turn({}, {0, -120}));
    auto& thumb = static_cast<QScrollBar&>(On(bar));
    DO(thumb.setSliderDown(true), thumb.setSliderPosition(700), thumb.setSliderPosition(800),
       thumb.setSliderDown(false));
    DO(static_cast<QComboBox&>(On(drives)).activated(1), DoEvents());
    auto& list = static_cast<QListWidget&>(On(rows));
    for (const Qt::MouseButton button : {R, L}) {
        const QPoint place = list.visualItemRect(list.item(0)).center();
        const QPoint onScreen = list.mapToGlobal(place);
        DO(Give(*list.viewport(), QMouseEvent(QEvent::MouseButtonDblClick, place, onScreen, button, button, {})));
    }
    const QPoint over(25, 24);
    DO(Give(On(sheet), QHelpEvent(QEvent::ToolTip, over, On(sheet).mapToGlobal(over))), FromText(QToolTip::text()));
}

TEST_F(Windows, AYieldForPaintsThrowsInputAwayAndOneForAllDeliversItWithTimers) {
    Show();
    const auto post = [this] {
        const QPointF at(3, 4);
        QCoreApplication::postEvent(&On(box), new QMouseEvent(QEvent::MouseButtonPress, at, at, L, L, {}));
    };
    Timer timer("timer", 1), never("never", 0), ended("ended", 1);
    timer.Tick = [&] { transcript.Hear("tick"), timer.SetEnabled(false); };
    never.Tick = ended.Tick = transcript.Told("wrong");
    DO(timer.SetEnabled(true), never.SetEnabled(true), ended.SetEnabled(true), ended.SetEnabled(false), post());
    QCoreApplication::postEvent(&Window(form), new QCloseEvent);
    DO(desktop.SleepUntil(SteadySeconds() + 0.003), DoEvents(Yield::PaintsAndTimers));
    DO(post(), DoEvents());
    DO(timer.SetInterval(2), timer.SetEnabled(true), desktop.SleepUntil(SteadySeconds() + 0.02), DoEvents());
}

TEST_F(Windows, ComeAndGoOverEachOther) {
    Form other("other", "", ScaleMode::Pixels, FormBorder::FixedDialog),
        inmost("inmost", "", {}, FormBorder::FixedDialog);
    Form tool("tool", "", ScaleMode::Pixels, FormBorder::FixedToolWindow);
    for (Form* each : {&other, &inmost, &tool}) each->Place(3000, 3000, 3000, 3000), shown.push_back(each);
    DO(Show());
    DO(Send(QEvent::WindowActivate));  // from another program
    other.OnActivate = [&] {
        DO(Send(QEvent::WindowActivate));
        DO(inmost.Show(Modality::Modal));
    };
    inmost.OnActivate = [&] { DO(other.Hide(), inmost.Hide()); };
    DO(Press(L), other.Show(Modality::Modal));
    DO(Send(QEvent::WindowActivate));
    tool.OnActivate = transcript.Told("tool");
    DO(tool.Show(), DoEvents());
    DO(form.Show(), Window(form).isActiveWindow());  // to the front
    DO(tool.Hide(), form.Hide());
}

// What was pressed follows to the release and no further, also if all of that is pending when it is told.
TEST_F(Windows, ADraggedBoxOrWindowFollowsFromThePressToTheRelease) {
    Show();
    const auto drag = [this](auto& what) {
        target = &what, down = {}, pressed = Target().mapToGlobal(point);
        what.MouseDown = [&](int16_t, int16_t, float, float) {
            QTimer::singleShot(0, [this] {
                for (const QPointF way : {QPointF(30, 200), {-40, 25}, {300, 300}}) {
                    const auto type = way.x() < 0 ? QEvent::MouseButtonRelease : QEvent::MouseMove;
                    const auto held = way.y() < 300 && way.x() > 0 ? L : Qt::NoButton;
                    QMouseEvent event(type, way, pressed + way, L, held, {});
                    QCoreApplication::sendEvent(&Target(), &event);
                }
            });
            what.DragAsWindow();
        };
        DO(Press(L), Release(L));
    };
    drag(panel), drag(edged), drag(form);
}

TEST_F(Windows, TakeASingleFileUnlessADialogIsOpen) {
    form.TakesFile = [](const std::string& path) { return path.ends_with(".pzl"); };
    HEAR(form.FileDropped);
    const auto drop = [this](const char* list, Qt::DropActions offered = Qt::CopyAction | Qt::MoveAction) {
        QMimeData carried;
        carried.setData("text/uri-list", list);
        const auto give = [this](QDropEvent&& event) {
            QCoreApplication::sendEvent(&Window(form), &event);
            return event.isAccepted() ? std::to_string(int(event.dropAction())) : "-";
        };
        std::string answers = give(QDragEnterEvent({5, 5}, offered, &carried, L, {}));
        answers += give(QDragMoveEvent({6, 5}, offered, &carried, L, {}));
        answers += give(QDropEvent({5, 5}, offered, &carried, L, {}));
        DoEvents();  // the handler runs when the other program has its answer
        return answers;
    };
    Show();
    for (const Qt::DropAction offered : {Qt::LinkAction, Qt::MoveAction}) DO(drop("file:/b.pzl", offered));
    for (const char* list : {"#\r\nfile:///a%20b/%FF.pzl\r\n", "file:///a.png", "file:///a.pzl\r\nfile:///b.pzl",
                             "http://x/a.pzl", "file://x", ""})
        DO(drop(list));
    Form modal("modal", "", ScaleMode::Twips, FormBorder::FixedDialog);
    modal.Place(0, 0, 3000, 3000);
    modal.OnActivate = [&] { DO(drop("file:///a.pzl"), modal.Unload()); };
    modal.Show(Modality::Modal);
    DO(drop("file://here/a.pzl"));
}

TEST_F(Windows, DialogsStandOverThemAndAnswerToTheirKeys) {
    Show();
    const auto ask = [this](int style, int key) {
        QTimer::singleShot(0, [&] {
            auto& dialog = dynamic_cast<QMessageBox&>(*QApplication::activeModalWidget());
            transcript.Hear(FromText(Differences(dialog, QWidget()) + QString(" icon %1").arg(dialog.icon())));
            for (const QAbstractButton* each : dialog.buttons())
                transcript.Hear(FromText(Differences(*each, QWidget())));
            const QPoint off = dialog.frameGeometry().center() - Window(form).frameGeometry().center();
            EXPECT_TRUE(off.manhattanLength() <= 4 && dialog.windowHandle()->transientParent());
            Give(dialog, QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier));
        });
        return int(MsgBox("Um <b>texto</b>", style, "Uma caixa"));
    };
    for (const int style : {int(OKOnly), int(Critical), YesNo | Question, YesNo | Exclamation})
        for (const int key : {Qt::Key_Return, Qt::Key_Escape}) DO(ask(style, key));
}

// Names typed into the dialog for files, and "!" for each that it refuses.
TEST_F(Windows, FilesAreOpenedWithOrWithoutTheirExtensionOrRefused) {
    for (const char* name : {"um.pzl", "dois.tres.pzl", "quatro", "cinco.pzl/x", "outro.txt"}) folder.Write(name, "x");
    FileDialogRequest request{false, "", {{"Jogos (*.pzl)", "*.pzl"}, {"Textos", "*.txt"}}, 1, 0, folder.Path()};
    const auto type = [&](bool saving, const std::vector<QString>& names, int index = 1) {
        request.save = saving, request.filterIndex = index, request.flags = index == 1 ? OFN_OVERWRITEPROMPT : 0;
        QTimer::singleShot(0, [&] {
            auto& dialog = dynamic_cast<QFileDialog&>(*QApplication::activeModalWidget());
            const QString texts = dialog.windowTitle() + dialog.selectedNameFilter() +
                                  dialog.labelText(QFileDialog::Accept) + dialog.directory().path();
            transcript.Hear(FromText(texts + Described(QRect({}, dialog.size()))));
            for (const QString& name : names) {
                QTimer::singleShot(0, [&] {
                    auto* refusal = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget());
                    if (refusal) transcript.Hear("!" + FromText(refusal->text())), refusal->accept();
                });
                dialog.findChild<QLineEdit*>("fileNameEdit")->setText(name);
                static_cast<QDialog&>(dialog).accept();
                QCoreApplication::processEvents();
            }
            if (dialog.isVisible()) dialog.reject();
        });
        return desktop.FileDialog(request).value_or("cancelled") + " " + std::to_string(request.filterIndex);
    };
    for (const char* name : {"um", "dois.tres", "quatro"}) DO(type(false, {name}));
    DO(type(false, {"nada", "nada.pzl", "cinco", "um.pzl"}));
    DO(type(false, {"um", "outro"}, 2));
    DO(type(true, {"novo"}, 2));
    DO(request.title = "Outro", type(true, {"um.pzl"}, 3));
}

TEST_F(Windows, ScreenSkinPlacesAndWordsAreTheDesktops) {
    shown.clear();
    for (const char* skin : {"QMenuBar { color: ", "  \n", "QMenuBar { color: #102030; }"}) DO(desktop.LoadSkin(skin));
    form.Load();
    DO(desktop.ApplySkin(form), !Window(form).styleSheet().isEmpty());
    DO(desktop.ScreenWidth(), desktop.ScreenHeight() - desktop.ScreenWidth());
    for (const Color colour : {WindowColor, ButtonFaceColor}) DO(ResolveColor(colour));
    const std::string home = qEnvironmentVariable("HOME").toStdString();
    transcript.changing = {home, "~"};
    std::filesystem::create_directory(home + "/Pictures");
    for (const Volume& volume : desktop.QtDesktop::Volumes())
        if (volume.kind != Volume::Kind::Drive) transcript.Write(volume.label + " " + volume.root);
    InstallPortuguese();
    DO(FromText(QCoreApplication::translate("QColorDialog", "&HTML:") + QLocale().name()));
}
