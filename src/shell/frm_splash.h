// The splash that opens the program and drives the start-up.
#pragma once
#include "platform/controls/form.h"
#include "platform/controls/simple_controls.h"

class FrmSplash : public Form {
public:
    // `main`: the main window, loaded and shown in the order of the start.
    explicit FrmSplash(Form& main);
    Label Label8{"Label8"};
    void Form_Load();
    void Form_Activate();
    void Form_MouseDown(int16_t Button, int16_t Shift, float X, float Y);

private:
    Form& main_;
    bool Activated = false;
};
