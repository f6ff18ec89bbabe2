// The program: its windows are put together on the desktop, and the splash leads in.
#include "platform/qt/application.h"
#include "platform/system/desktop.h"
#include "play/frm_main.h"
#include "shell/frm_splash.h"

int main(int, char** argv) {
    // There is no command line; the program's own name is all that is looked at.
    return RunOnDesktop(argv[0], [] {
        frmMain main;
        FrmSplash splash(main);
        splash.Show();
        TheDesktop().Run();
    });
}
