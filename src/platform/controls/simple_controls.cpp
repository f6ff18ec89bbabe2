// Properties and events of image, label and push button.
#include "platform/controls/simple_controls.h"

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
    Tell(Aspect::Text);
}

void Label::SetLook(const LabelLook& look) {
    if (look == look_) return;
    look_ = look;
    Tell(Aspect::Look);
}

void Label::DeliverClick() { Raise(*this, Click); }

void CommandButton::DeliverClick() { Raise(*this, Click); }
