// The help sheet "Como Jogar".
#pragma once
#include "platform/controls/form.h"
#include "platform/controls/picture_box.h"
#include "platform/controls/simple_controls.h"
#include "shell/skin.h"

class Form1 : public Form {
public:
    explicit Form1(Skin& skin);
    PictureBox Picture1{"Picture1", ScaleMode::Twips};
    Label Label1{"Label1"}, Label2{"Label2"}, Label3{"Label3"}, Label4{"Label4"}, Label5{"Label5"}, Label6{"Label6"};
    void Form_Load();

private:
    Skin& skin_;
};
