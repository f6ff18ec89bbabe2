// Properties and events of image, label and push button.
#include "platform/controls/simple_controls.h"

#include "platform/controls/window_system.h"

void Image::SetPicture(std::shared_ptr<const Picture> picture) {
    picture_ = std::move(picture);
    Tell(Aspect::Content);
}

void Image::SetBorder(Border border) {
    if (border == border_) return;
    border_ = border;
    Tell(Aspect::Look);
}

void Image::DeliverMouseDown(int16_t button, int16_t shift, float x, float y) {
    if (MouseDown) Raise(*this, [=, this] { MouseDown(button, shift, x, y); });
}

void Label::SetCaption(std::string text) {
    if (text == caption_) return;
    caption_ = std::move(text);
    FitText();
    Tell(Aspect::Text);
}

void Label::SetLook(const LabelLook& look) {
    if (look == look_) return;
    look_ = look;
    FitText();
    Tell(Aspect::Look);
}

// Its lengths are known once it stands in a container.
void Label::FitText() {
    if (!look_.autoSize || !Parent()) return;
    const Size text = TheWindows().TextSize(look_.font, caption_);
    const double width = text.width * ContainerUnitsPerPixel(), height = text.height * ContainerUnitsPerPixel();
    const double left = look_.alignment == Alignment::Right ? Left() + Width() - width : Left();
    Place(left, Top(), width, height);
}

void Label::DeliverClick() { Raise(*this, Click); }

void CommandButton::DeliverClick() { Raise(*this, Click); }
