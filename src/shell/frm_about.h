// The About box.
#pragma once
#include "platform/controls/form.h"
#include "platform/controls/simple_controls.h"

class FrmAbout : public Form {
public:
    FrmAbout();
    Label Label2{"Label2"}, Label5{"Label5"}, Label8{"Label8"};
    Frame Frame1{"Frame1", ScaleMode::Twips};
    Label Label3{"Label3"}, Label11{"Label11"}, Label6{"Label6"};
    CommandButton Command1{"Command1", "&OK"};
    void Form_Load();
    void Command1_Click();
    void Label11_Click();
    void Label6_Click();
};

// Centres a form on the screen.
void CenterForm(Form& form);
