// Whose first activation does what stands in frm_splash.cpp; here is only what holds the windows.
#include "shell/startup.h"

#include "core/frm_main.h"
#include "platform/system/desktop.h"
#include "shell/frm_splash.h"

void RunProgram() {
    frmMain main;
    FrmSplash splash(main);
    splash.Show();
    TheDesktop().Run();
}

std::string VersionText() {
    return std::to_string(AppMajor) + "." + std::to_string(AppMinor) + "." + std::to_string(AppRevision);
}
