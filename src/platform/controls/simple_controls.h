// The controls without rules of their own: image, label, push button, frame.
#pragma once
#include "platform/controls/control.h"
#include "platform/drawing/picture.h"

// Shows a picture stretched to its own size.
class Image : public Control {
public:
    explicit Image(std::string name) : Control(std::move(name)) {}
    const std::shared_ptr<const Picture>& GetPicture() const { return picture_; }
    void SetPicture(std::shared_ptr<const Picture> picture);
    Border BorderStyle() const { return border_; }
    void SetBorder(Border border);
    MouseHandler MouseDown;
    void DeliverMouseDown(int16_t button, int16_t shift, float x, float y);

private:
    std::shared_ptr<const Picture> picture_;
    Border border_ = Border::None;
};

enum class Alignment { Left, Right, Center };

class Label : public Control {
public:
    explicit Label(std::string name) : Control(std::move(name)) {}
    const std::string& Caption() const { return caption_; }
    void SetCaption(std::string text);

    struct LabelLook {
        Font font;
        Color foreColor = 0;
        Color backColor = ButtonFaceColor;
        bool transparent = true;
        Alignment alignment = Alignment::Left;
        bool wordWrap = true;
        bool autoSize = false;  // as large as its text; aligned to the right, it keeps its right edge
        bool operator==(const LabelLook&) const = default;
    };
    const LabelLook& Look() const { return look_; }
    void SetLook(const LabelLook& look);

    // A label with a Click handler is a link: also reached by Tab and opened by Enter.
    Handler Click;
    void DeliverClick();

protected:
    void Adopted() override { FitText(); }

private:
    void FitText();
    std::string caption_;
    LabelLook look_;
};

// A label that a skin may dress; used like a plain one.
class SkinLabel : public Label {
public:
    using Label::Label;
};

// "&" in the caption marks the key that presses it together with Alt.
class CommandButton : public Control {
public:
    CommandButton(std::string name, std::string caption) : Control(std::move(name)), caption_(std::move(caption)) {}
    const std::string& Caption() const { return caption_; }
    Handler Click;
    void DeliverClick();

private:
    std::string caption_;
};

// A line round other controls.
class Frame : public Control {
public:
    Frame(std::string name, ScaleMode inner) : Control(std::move(name), inner) {}
};
