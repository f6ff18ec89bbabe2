// The About box: name, version, maker and two links. Lengths are twips.
#include "shell/frm_about.h"

#include "platform/system/desktop.h"
#include "shell/version.h"

namespace {

constexpr const char* QuestionsPage = "https://www.fento-lira.example/html/faq.html";
constexpr const char* ContactPage = "https://www.fento-lira.example/html/faleconosco.php?";
constexpr Color DarkGrey = Rgb(64, 64, 64), Blue = Rgb(0, 0, 255);

const Label::LabelLook LinkLook{.font = {.underline = true}, .foreColor = Blue, .alignment = Alignment::Right};

void Add(Control& container, Label& label, const char* caption, const Rect& place, const Label::LabelLook& look = {}) {
    label.Place(place.x, place.y, place.width, place.height);
    label.SetLook(look);
    label.SetCaption(caption);
    container.AddChild(label);
}

}  // namespace

FrmAbout::FrmAbout() : Form("FrmAbout", " Sobre o Fento-Lira Master", ScaleMode::Twips, FormBorder::FixedToolWindow) {
    SetWidth(4785);
    SetHeight(2940);
    Add(*this, Label2, "Fento-Lira Master", {60, 60, 2310, 300}, {.font = {.points = 12, .bold = true}});
    Add(*this, Label5, "Para Windows 95/98/Me/NT/2000/XP", {75, 375, 2880, 210});
    Add(*this, Label8, "", {3930, 540, 765, 195}, {.font = {}, .alignment = Alignment::Right});
    Command1.Place(3600, 2610, 1155, 300);
    AddChild(Command1);

    Frame1.Place(15, 705, 4755, 1845);
    AddChild(Frame1);
    Add(Frame1, Label3, "Fento-Lira", {150, 225, 3585, 195}, {.font = {}, .foreColor = DarkGrey});
    Add(Frame1, Label11, "Respostas para as perguntas mais frequentes", {105, 1470, 3255, 255}, LinkLook);
    Add(Frame1, Label6, "Fale conosco", {3540, 1470, 975, 255}, LinkLook);

    Command1.SetTabIndex(0);
    Label11.SetTabIndex(1);
    Label6.SetTabIndex(2);
    Label11.SetPointer(MousePointer::Hand);
    Label6.SetPointer(MousePointer::Hand);

    OnLoad = [this] { Form_Load(); };
    KeyDown = [this](Key key) {
        if (key == Key::Escape) Unload();
    };
    Command1.Click = [this] { Command1_Click(); };
    Label11.Click = [this] { Label11_Click(); };
    Label6.Click = [this] { Label6_Click(); };
}

void FrmAbout::Form_Load() {
    CenterForm(*this);
    Label8.SetCaption("Versão " + VersionText());
}

void FrmAbout::Command1_Click() { Unload(); }

// A desktop without a browser does nothing, and nobody is told.
void FrmAbout::Label11_Click() { TheDesktop().OpenPage(QuestionsPage); }

void FrmAbout::Label6_Click() { TheDesktop().OpenPage(ContactPage); }

void CenterForm(Form& form) { form.CenterOnScreen(); }
