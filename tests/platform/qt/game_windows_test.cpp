// The game's own windows in real widgets: what a screen reader hears, the order of the keys, the skin's tick.
#include "browser/frm_thumbs.h"
#include "play/frm_main.h"
#include "shell/form1.h"
#include "shell/frm_about.h"
#include "shell/frm_splash.h"
#include "tests/platform/qt/fixture.h"

class GameWindows : public QtFixture {};

TEST_F(GameWindows, AreMadeOfTheseWidgets) {
    Transcript transcript;
    frmMain main;
    main.OnLoad = {};
    frmThumbs thumbs(main.Skin1, {});
    Form1 help(main.Skin1);
    FrmAbout about;
    FrmSplash splash(main);
    for (Form* form : std::initializer_list<Form*>{&main, &thumbs, &help, &about, &splash}) {
        form->OnActivate = {};
        transcript.state = [form] { return AddWindow(*form, "/nowhere"); };
        DO(form == &main ? form->Load() : form->Show());
        if (form == &help || form == &about)
            DO(Give(Window(*form), QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier)));
    }
}

TEST_F(GameWindows, TheSkinsTickIsSeenInEveryStateOfItsItem) {
    ASSERT_TRUE(desktop.LoadSkin(ReadFile(FENTO_SOURCE_DIR "/assets/Puzzle.skn").value_or("")));
    frmMain main;
    main.OnLoad = {};
    main.Load();
    desktop.ApplySkin(main);
    QMenu* menu = Window(main).MenuBar().actions().at(1)->menu();
    menu->adjustSize();
    QAction* item = menu->actions().at(3);
    const auto shown = [&](bool checked) {
        item->setChecked(checked);
        return menu->grab(menu->actionGeometry(item)).toImage();
    };
    for (QAction* active : {static_cast<QAction*>(nullptr), item})
        for (const bool enabled : {false, true}) {
            menu->setActiveAction(active), item->setEnabled(enabled);
            EXPECT_GT(Apart(shown(true), shown(false)), 60) << enabled;
        }
}
