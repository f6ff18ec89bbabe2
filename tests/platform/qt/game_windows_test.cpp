// The game's own windows in real widgets: what a screen reader hears, the order of the keys.
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
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        if (form == &help || form == &about) DO(QCoreApplication::sendEvent(&Window(*form), &escape));
    }
}
