// Peers in real widgets: what the player's events become, what state the widgets have; how windows go with each other.
#include "platform/qt/translations.h"
#include "platform/system/timer.h"
#include "tests/platform/qt/fixture.h"

namespace {

constexpr auto L = Qt::LeftButton, R = Qt::RightButton, M = Qt::MiddleButton;

// A window with a control of every kind, which tell what they hear.
class Windows : public QtFixture {
protected:
    Windows() {
        for (const char* name : {"alfa/um", "beta"}) folder.MakeFolder(name);
        transcript.changing = {folder.Path(), "~"};
        transcript.state = [this] {
            State state;
            for (const Form* each : shown) state = AddWindow(*each, folder.Path(), state);
            return state;
        };
        const auto add = [](Control& parent, Control& child, double x, double y, double width, double height) {
            parent.AddChild(child);
            child.Place(x, y, width, height);
        };
        form.Place(1500, 1500, 6000, 4500);
        edged.SetBorder(Border::Single), image.SetBorder(Border::Thin);
        link.SetLook({{12, true, true}, 0, Rgb(255, 255, 0), false, Alignment::Center, false, false});
        link.SetTabIndex(0), rows.SetTabIndex(1), bar.SetTabIndex(2), push.SetTabIndex(3);
        link.SetCaption("Elo"), box.SetAccessibleName("Tabuleiro"), rows.SetPath(folder / "alfa");
        add(form, box, -20, -10, 320, 150), add(form, edged, 300, 5, 60, 40), add(edged, inner, 5, 4, 20, 12);
        add(form, image, 310, 50, 52, 34), add(form, label, 300, 90, 80, 20), add(form, link, 300, 110, 80, 20);
        add(form, push, 300, 135, 80, 24), add(form, frame, 10, 150, 100, 60), add(frame, panel, 150, 150, 900, 300);
        add(form, bar, 380, 0, 20, 300), add(form, sheet, 120, 150, 170, 60), add(form, drives, 10, 220, 150, 22);
        add(form, rows, 180, 215, 190, 80);
        auto& [cell, figure] = sheet.Load();
        cell = {150, 150, 600, 450, 0, true, ""};
        figure.left = 300, figure.top = 300, figure.width = 300, figure.height = 150, figure.visible = true;
        figure.toolTip = "Baía   do <norte> ao sul com barcos.jpg - 11599 x 11199";
        MenuItem& menu = form.Menus.Add("mnu", "Jogo");
        menu.Add("save", "Salvar", {'S', 0, true}).Click = Hears("save");
        menu.Add("line", "-"), menu.Add("help", "Ajuda", {0, 3, false}).SetChecked(true);
        menu.Add("more", "Mais").Add("deep", "Fundo", {'Z', 0, false});
        for (PictureBox* each : {&box, &edged, &panel}) {
            each->MouseDown = HearsMouse(each->Name() + " down"), each->MouseUp = HearsMouse(each->Name() + " up");
            each->MouseMove = HearsMouse(each->Name() + " move");
        }
        box.Click = Hears("click"), box.DblClick = Hears("dbl"), link.Click = Hears("link"), push.Click = Hears("push");
        form.MouseDown = HearsMouse("form"), image.MouseDown = HearsMouse("image"), menu.Click = Hears("menu");
        form.OnMenu = Hears("any menu"), form.OnActivate = Hears("active"), form.OnUnload = Hears("unload");
        form.OnResize = [this] { transcript.Hear("wide " + std::to_string(int(form.ScaleWidth()))); };
        form.KeyDown = [this](Key key) { transcript.Hear("key " + std::to_string(int(key))); };
        bar.Change = Hears("change"), bar.Scroll = Hears("scroll"), drives.Change = Hears("drive");
        rows.Change = Hears("folder"), sheet.FigureClick = HearsCell("figure"), sheet.FrameClick = HearsCell("frame");
        sheet.FigureDblClick = HearsCell("double");
        const auto on = [this](const char* what) {
            return [this, what](int, int16_t a, int16_t b, float x, float y) { HearsMouse(what)(a, b, x, y); };
        };
        sheet.FigureMouseDown = on("on"), sheet.FigureMouseMove = on("along"), sheet.FigureMouseUp = on("off");
        box.Wheel = sheet.Wheel = [this](const WheelTurn& t) {
            transcript.Hear(FromText(QString("turn %1,%2 %3").arg(t.x).arg(t.y).arg(int(t.unit))));
        };
    }

    Handler Hears(const char* what) {
        return [this, what] { transcript.Hear(what); };
    }
    std::function<void(int)> HearsCell(const char* what) {
        return [this, what](int index) { transcript.Hear(what + std::to_string(index)); };
    }
    MouseHandler HearsMouse(const std::string& what) {
        return [this, what](int16_t button, int16_t shift, float x, float y) {
            transcript.Hear(what + FromText(QString(" %1 %2 at %3,%4").arg(button).arg(shift).arg(x).arg(y)));
        };
    }

    void Aim(Control* at) { target = at, down = {}; }
    QWidget& Target() { return target == &form ? *Window(form).Client() : On(*target); }
    void Mouse(QEvent::Type type, Qt::MouseButton button, QPointF at) {
        down.setFlag(button, type != QEvent::MouseButtonRelease && button != Qt::NoButton);
        QWidget& to = Target();
        QMouseEvent event(type, at, to.mapToGlobal(at), button, down, keys);
        QCoreApplication::sendEvent(&to, &event);
        DoEvents();
    }
    void Press(Qt::MouseButton button) { Mouse(QEvent::MouseButtonPress, button, point); }
    void Double(Qt::MouseButton button) { Mouse(QEvent::MouseButtonDblClick, button, point); }
    void Release(Qt::MouseButton button) { Mouse(QEvent::MouseButtonRelease, button, point); }
    void Move(QPointF to) { Mouse(QEvent::MouseMove, Qt::NoButton, point = to); }
    void Type(int key) {
        QKeyEvent event(QEvent::KeyPress, key, keys & ~Qt::ControlModifier, key < 128 ? QChar(key).toLower() : QChar());
        QCoreApplication::sendEvent(target == &form ? &Window(form) : &Target(), &event);
        DoEvents();
    }
    bool Turn(QPoint pixels, QPoint eighths) {
        QWheelEvent event(point, point, pixels, eighths, Qt::NoButton, keys, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&Target(), &event);
        return event.isAccepted();
    }
    void Send(QEvent::Type type) {
        QEvent event(type);
        QCoreApplication::sendEvent(&Window(form), &event);
        DoEvents();
    }
    void Show() {
        form.Show();
        DoEvents();
    }

    Form form{"form", "Teste", ScaleMode::Pixels, FormBorder::Sizable};
    PictureBox box{"box"}, edged{"edged"}, inner{"inner"}, panel{"panel"};
    Image image{"image"};
    Label label{"label"}, link{"link"};
    CommandButton push{"push", "&OK"};
    Frame frame{"frame", ScaleMode::Twips};
    ScrollBar bar{"bar", Orientation::Vertical};
    CellSheet sheet{"sheet"};
    DriveListBox drives{"drives"};
    DirListBox rows{"rows"};
    std::vector<const Form*> shown{&form};
    Control* target = &box;
    Qt::MouseButtons down;
    Qt::KeyboardModifiers keys;
    QPointF point{30.5, 40}, pressed;
    Transcript transcript;
};

}  // namespace

TEST_F(Windows, WidgetsFollowTheirControls) {
    Form tool("tool", "", ScaleMode::Pixels, FormBorder::FixedToolWindow), bare("bare", "", {}, FormBorder::None);
    Form dialog("dialog", "Caixa", ScaleMode::Pixels, FormBorder::FixedDialog);
    for (Form* each : {&tool, &bare, &dialog}) each->Place(150, 300, 900, 600), shown.push_back(each);
    bare.SetRegion(Region{{5, 6, 20, 10}, {10, 0, 4, 30}});
    DO(Show());
    DO(tool.Show(), bare.Show(), dialog.Show());
    for (const bool changed : {true, false}) {
        DO(form.Menus.Items().front().Items()[0].SetEnabled(!changed));
        DO(form.Menus.Items().front().Items()[2].SetChecked(!changed));
        DO(edged.SetEnabled(!changed), push.SetEnabled(!changed), inner.SetVisible(!changed));
        DO(inner.Move(changed ? 15 : 5, 4), edged.SetWidth(changed ? 50 : 60));
        DO(image.SetPointer(changed ? MousePointer::Hourglass : MousePointer::Default));
        DO(box.SetPointer(changed ? MousePointer::Hand : MousePointer::Arrow));
        DO(link.Click = changed ? Handler() : Hears("link"), label.SetCaption(changed ? "Isto" : "Aquilo"));
        DO(link.SetLook({{8.25, false, changed}, 0, 0, true, Alignment::Left, true, false}));
        DO(bar.SetMin(0), bar.SetMax(changed ? -1390 : 1000), bar.SetLargeChange(changed ? 463 : 7));
        DO(bar.SetSmallChange(changed ? 5 : 1), bar.SetValue(changed ? -90 : 80));
        DO(bar.SetValue(changed ? 1 : -1));
        DO(drives.Follow(changed ? "/media/x/y" : "/home/a<b/Fotos"));
        DO(rows.SetPath(folder / (changed ? "beta" : "alfa")));
        DO(bare.SetRegion(changed ? std::optional(Region{}) : std::nullopt));
        DO(tool.Move(changed ? 450 : 150, 300), form.Place(1500, 1500, changed ? 6600 : 6000, 4800));
        DO(edged.SetBorder(changed ? Border::None : Border::Single));  // stays as it was made
    }
    for (const WindowState state : {WindowState::Maximized, WindowState::Normal, WindowState::Minimized}) {
        DO(form.SetState(state), form.State());
        DO(form.Move(1600 + 100 * int(state), 1500));
    }
    DO(Window(form).showNormal(), form.State());
    DO(Window(form).resize(500, 350));
    const int menus = Window(form).MenuBar().sizeHint().height();
    EXPECT_EQ(Window(form).Client()->geometry(), QRect(0, menus, 500, 350 - menus));
    Window(form).setStyleSheet("QMenuBar { padding: 9px; }");
    DoEvents();
    EXPECT_GT(Window(form).Client()->y(), menus + 9);
    for (QShortcut* shortcut : Window(form).findChildren<QShortcut*>()) DO(shortcut->activated());
    const QAction& first = *Window(form).MenuBar().actions().front();
    EXPECT_EQ(Window(form).MenuBar().activeAction(), &first);
    EXPECT_GE(first.menu()->minimumWidth(), first.menu()->sizeHint().width());
    EXPECT_GT(first.menu()->minimumWidth(), 0);
    for (const int item : {0, 2}) DO(first.menu()->actions()[item]->trigger());
    DO(Window(form).close());
}

// Whatever comes to whatever control, in any order.
TEST_F(Windows, HearThePlayer) {
    DO(Show());
    DO(bar.SetMax(-5000), bar.SetLargeChange(1133), bar.SetSmallChange(3));
    const std::vector<Qt::MouseButton> buttons{L, L, L, R, M, Qt::ExtraButton3, Qt::ExtraButton24};
    const std::vector<Control*> mouse{&box,   &box,  &box,  &edged, &inner, &image,
                                      &label, &link, &push, &frame, &sheet, &form};
    std::vector<int> codes{Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter, Qt::Key_B};
    for (int key = Qt::Key_Home; key <= Qt::Key_PageDown; ++key) codes.push_back(key);
    transcript.Walk(700,
                    Steps{} | STEP(Press(transcript.Draw(buttons))) | STEP(Press(L)) | STEP(Release(L)) |
                        STEP(Release(transcript.Draw(buttons))) | STEP(Double(transcript.Draw(buttons))) |
                        STEP(Move(QPointF(25, 24))) | STEP(Move(QPointF(12.5, 12))) | STEP(Move(QPointF(90, -5))) |
                        STEP(Aim(transcript.Draw(mouse))) | STEP(Send(QEvent::WindowBlocked)) |
                        STEP(box.SetVisible(!box.Visible())) | STEP(box.Move(-box.Left(), -10)) | STEP(down = {}) |
                        STEP(keys = Qt::KeyboardModifiers(transcript.Draw(std::vector<int>{0, 1 << 25, 5 << 25}))) |
                        STEP(Turn({}, {60, -30})) | STEP(Turn({3, -7}, {8, -56})));
    keys = {};
    const std::vector<Control*> typed{&form, &link, &push, &bar};
    transcript.Walk(200, Steps{} | STEP(Aim(transcript.Draw(typed))) | STEP(Type(transcript.Draw(codes))) |
                             STEP(Type(transcript.Draw(codes))) | STEP(Type(transcript.Draw(codes))));
    keys = {};
    DO(Aim(&rows), Type(Qt::Key_U));
    for (const int key : {Qt::Key_Enter, Qt::Key_Up, Qt::Key_Return}) DO(Type(key));
    keys = Qt::ControlModifier;
    DO(Aim(&bar), Turn({}, {0, -120}));
    DO(bar.Wheel = box.Wheel, Turn({}, {0, -120}));
    DO(Aim(&drives), Turn({}, {0, -120}));
    auto& thumb = static_cast<QScrollBar&>(On(bar));
    DO(thumb.setSliderDown(true), thumb.setSliderPosition(700), thumb.setSliderPosition(800),
       thumb.setSliderDown(false));
    DO(static_cast<QComboBox&>(On(drives)).activated(1), DoEvents());
    auto& list = static_cast<QListWidget&>(On(rows));
    for (const Qt::MouseButton button : {R, L}) {
        const QPoint place = list.visualItemRect(list.item(0)).center();
        QMouseEvent event(QEvent::MouseButtonDblClick, place, list.mapToGlobal(place), button, button, {});
        DO(QCoreApplication::sendEvent(list.viewport(), &event), DoEvents());
    }
    QHelpEvent tip(QEvent::ToolTip, {25, 24}, On(sheet).mapToGlobal(QPoint(25, 24)));
    DO(QCoreApplication::sendEvent(&On(sheet), &tip), FromText(QToolTip::text()));
    for (const QWidget* window : QApplication::topLevelWidgets())
        EXPECT_TRUE(!window->inherits("QTipLabel") || window->height() < 2 * window->fontMetrics().height());
}

TEST_F(Windows, AYieldForPaintsThrowsInputAwayAndOneForAllDeliversItWithTimers) {
    Show();
    const auto post = [this] {
        QCoreApplication::postEvent(&On(box),
                                    new QMouseEvent(QEvent::MouseButtonPress, QPoint(3, 4), QPoint(3, 4), L, L, {}));
    };
    Timer timer("timer", 1), never("never", 0), ended("ended", 1);
    timer.Tick = [&] { transcript.Hear("tick"), timer.SetEnabled(false); };
    never.Tick = ended.Tick = Hears("wrong");
    DO(timer.SetEnabled(true), never.SetEnabled(true), ended.SetEnabled(true), ended.SetEnabled(false), post());
    QCoreApplication::postEvent(&Window(form), new QCloseEvent);
    DO(desktop.SleepUntil(SteadySeconds() + 0.003), DoEvents(Yield::PaintsAndTimers));
    DO(post(), DoEvents());
    DO(timer.SetInterval(2), timer.SetEnabled(true), Comes([&] { return !timer.Enabled(); }));
}

TEST_F(Windows, ComeAndGoOverEachOther) {
    Form other("other", "", ScaleMode::Pixels, FormBorder::FixedDialog), deep("deep", "", {}, FormBorder::FixedDialog);
    Form tool("tool", "", ScaleMode::Pixels, FormBorder::FixedToolWindow);
    for (Form* each : {&other, &deep, &tool}) each->Place(3000, 3000, 3000, 3000), shown.push_back(each);
    const auto front = [] { return FormWindow::Frontmost() ? FormWindow::Frontmost()->TheForm().Name() : "none"; };
    const auto owner = [](const Form& of) {
        const QWindow* parent = Window(of).windowHandle()->transientParent();
        for (const FormWindow* each : FormWindow::All())
            if (parent && each->windowHandle() == parent) return each->TheForm().Name();
        return std::string("none");
    };
    DO(Show(), front());
    DO(Send(QEvent::WindowActivate));  // from another program
    other.OnActivate = [&] {
        DO(Send(QEvent::WindowActivate), owner(other) + " " + front());
        DO(deep.Show(Modality::Modal));
    };
    deep.OnActivate = [&] { DO(other.Hide(), deep.Hide(), front()); };
    DO(Press(L), other.Show(Modality::Modal));
    DO(Send(QEvent::WindowActivate));
    tool.OnActivate = Hears("tool");
    DO(tool.Show(), DoEvents(), owner(tool));
    const double start = SteadySeconds();
    form.Show();  // to the front
    EXPECT_TRUE(Window(form).isActiveWindow());
    EXPECT_LT(SteadySeconds(), start + 0.25);
    const FrameMargins margins = desktop.FrameOf(tool);
    EXPECT_EQ(margins.left + 10 * margins.top + 100 * margins.right + 1000 * margins.bottom, 2222);
    DO(tool.Hide(), form.Hide(), front());
}

// What was pressed follows to the release and no further, also if all of that is pending when it is told.
TEST_F(Windows, ADraggedBoxOrWindowFollowsFromThePressToTheRelease) {
    Show();
    const auto pending = [this](bool later) {
        QTimer::singleShot(0, [this, later] {
            const auto send = [this](QEvent::Type type, QPointF way, Qt::MouseButtons with) {
                QMouseEvent event(type, way, pressed + way, L, with, {});
                QCoreApplication::sendEvent(&Target(), &event);
            };
            send(QEvent::MouseMove, {30, 200}, L);
            send(QEvent::MouseButtonRelease, {-40, 25}, {});
            if (later) send(QEvent::MouseMove, {300, 300}, {});
        });
    };
    for (PictureBox* each : {&panel, &edged}) {
        each->MouseDown = [&, each](int16_t, int16_t, float, float) { pending(false), each->DragAsWindow(); };
        target = each, down = {}, pressed = Target().mapToGlobal(point);
        DO(Press(L), Release(L));
    }
    form.MouseDown = [&](int16_t, int16_t, float, float) { pending(true), form.DragAsWindow(); };
    target = &form, pressed = Target().mapToGlobal(point);
    DO(Press(L));
}

TEST_F(Windows, DialogsStandOverThemAndAnswerToTheirKeys) {
    Show();
    const auto ask = [this](int style, int key, const QString& title = "Uma caixa") {
        QTimer::singleShot(0, [&] {
            auto& dialog = dynamic_cast<QMessageBox&>(*QApplication::activeModalWidget());
            transcript.Hear(FromText(Differences(dialog, QWidget()) + QString(" icon %1").arg(dialog.icon())));
            for (const QAbstractButton* each : dialog.buttons())
                transcript.Hear(FromText(Differences(*each, QWidget())));
            const QPoint off = dialog.frameGeometry().center() - Window(form).frameGeometry().center();
            EXPECT_TRUE(off.manhattanLength() <= 4 && dialog.windowHandle()->transientParent());
            EXPECT_GE(dialog.width(), 260 + dialog.fontMetrics().horizontalAdvance(title) / 2);
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
            key ? void(QCoreApplication::sendEvent(&dialog, &event)) : dialog.buttons().back()->click();
        });
        return int(MsgBox("Um <b>texto</b>", style, FromText(title)));
    };
    for (const int style : {int(OKOnly), int(Critical), YesNo | Question})
        for (const int key : {Qt::Key_Return, Qt::Key_Escape}) DO(ask(style, key));
    DO(ask(YesNo | Exclamation, 0, QString(25, 'M')));
    std::array<Color, 16> custom{};
    const auto colour = [&](bool accepts) {
        QTimer::singleShot(0, [&, accepts] {
            auto& dialog = dynamic_cast<QColorDialog&>(*QApplication::activeModalWidget());
            transcript.Hear(
                FromText(dialog.currentColor().name() + QColorDialog::customColor(15).name() + dialog.windowTitle()));
            dialog.setCurrentColor(QColor(40, 50, 60));
            QColorDialog::setCustomColor(3, QColor(accepts, 8, 9));
            dialog.QDialog::done(accepts);
        });
        const Color chosen = desktop.ColorDialog(Rgb(10, 20, 30), true, custom).value_or(-1);
        return std::pair(chosen, custom[3]);
    };
    for (int i = 0; i < 16; ++i) custom[size_t(i)] = Rgb(i, 100, 200);
    for (const bool accepts : {true, false}) DO(colour(accepts));
}

// Names typed into the dialog for files, and "!" for each that it refuses.
TEST_F(Windows, FilesAreOpenedWithOrWithoutTheirExtensionOrRefused) {
    for (const char* name : {"um.pzl", "dois.tres.pzl", "quatro", "cinco.pzl/x", "outro.txt"}) folder.Write(name, "x");
    FileDialogRequest request{false, "", {{"Jogos (*.pzl)", "*.pzl"}, {"Textos", "*.txt"}}, 1, 0, folder.Path()};
    const auto type = [&](bool save, const std::vector<QString>& names, int index = 1) {
        request.save = save, request.filterIndex = index, request.flags = index == 1 ? OFN_OVERWRITEPROMPT : 0;
        QTimer::singleShot(0, [&] {
            auto& dialog = dynamic_cast<QFileDialog&>(*QApplication::activeModalWidget());
            QString texts =
                dialog.windowTitle() + " " + dialog.nameFilters().join(";") + " " + dialog.selectedNameFilter();
            for (const int part : {0, 1, 2, 3, 4}) texts += " " + dialog.labelText(QFileDialog::DialogLabel(part));
            texts += dialog.testOption(QFileDialog::DontConfirmOverwrite) ? " silent" : "";
            transcript.Hear(FromText(texts + " " + Described(QRect({}, dialog.size())) + dialog.directory().path()));
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
    DO(type(false, {"nada"}, 9));
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
    EXPECT_TRUE(desktop.ProgramPath().ends_with("/qt_tests"));
    InstallPortuguese();
    DO(FromText(QCoreApplication::translate("QColorDialog", "&HTML:") + QLocale().name()));
    EXPECT_NE(QCoreApplication::translate("QFileDialog", "Look in:"), "Look in:");
}
