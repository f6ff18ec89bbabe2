// The help sheet: three headings, each with its text below. Lengths are twips.
#include "shell/form1.h"

namespace {

constexpr Color Paper = Rgb(255, 255, 255), Strip = Rgb(224, 224, 224);

}  // namespace

Form1::Form1(Skin& skin) : Form("Form1", "Como Jogar", ScaleMode::Twips, FormBorder::FixedDialog), skin_(skin) {
    SetWidth(7080);
    SetHeight(4335);
    CenterOnScreen();
    Picture1.Place(105, 150, 6840, 4095);
    Picture1.SetBackColor(Paper);
    AddChild(Picture1);

    struct Row {
        Label& label;
        bool bold;
        Rect place;
    };
    const Row rows[] = {
        {Label1, true, {135, 105, 6555, 270}},  {Label2, false, {135, 390, 6555, 1320}},
        {Label3, true, {120, 1845, 6555, 270}}, {Label4, false, {120, 2130, 6555, 705}},
        {Label5, true, {120, 2985, 6555, 255}}, {Label6, false, {120, 3255, 6555, 585}},
    };
    for (const Row& row : rows) {
        row.label.Place(row.place.x, row.place.y, row.place.width, row.place.height);
        row.label.SetLook({.font = {.points = 9.75, .bold = row.bold}, .backColor = Strip, .transparent = false});
        Picture1.AddChild(row.label);
    }
    OnLoad = [this] { Form_Load(); };
    KeyDown = [this](Key key) {
        if (key == Key::Escape) Unload();
    };
}

void Form1::Form_Load() {
    skin_.ApplySkin(*this);
    Label1.SetCaption("Novo jogo:");
    Label2.SetCaption(
        "Clique em Menu/Jogo/Novo Jogo/Nível, selecione uma imagem e clique em OK para iniciar.\r"
        "Você pode selecionar qualquer imagem no formato: BMP, JPG, GIF que possuir, bastando selecionar a unidade de "
        "disco e a pasta desejada na tela de novo jogo.");
    Label3.SetCaption("Para mover a peça:");
    Label4.SetCaption("Clique na peça e arraste até o local desejado então solte o botão do mouse.");
    Label5.SetCaption("Para girar a peça:");
    Label6.SetCaption(
        "Clique na peça com o botão esquerdo do mouse e, mantendo o botão esquerdo apertado, aperte o botão direito");
}
