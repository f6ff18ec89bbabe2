// What all peers share: a widget that stands where its control stands.
#pragma once
#include <QPointer>
#include <QString>
#include <QWidget>
#include <memory>

#include "platform/controls/control.h"
#include "platform/controls/menu.h"

class QMouseEvent;

inline QString ToText(const std::string& text) { return QString::fromUtf8(text.data(), qsizetype(text.size())); }
inline std::string FromText(const QString& text) { return text.toStdString(); }

class QtPeer : public Peer {
public:
    QtPeer(Control& control, QWidget* widget) : control_(control), widget_(widget) {}
    ~QtPeer() override { delete widget_.data(); }

    QWidget* Widget() const { return widget_; }
    // What the children of the control stand in.
    virtual QWidget* Content() const { return widget_; }
    void Mirror(Aspect aspect) override;
    void MirrorAll();

protected:
    Control& control_;
    QPointer<QWidget> widget_;  // goes with its parent, if that goes first
};

// The peer of `control`, or nullptr.
QtPeer* PeerOf(const Control& control);
// The widget in which the peer of a child of `control`'s container is made.
QWidget* ContainerOf(const Control& control);

// Wayland places and moves windows itself, and cuts no shapes.
bool OnWayland();

// Mouse and pointer in the game's numbers.
int16_t ButtonBits(Qt::MouseButtons buttons);
int16_t ShiftBits(Qt::KeyboardModifiers modifiers);
void ShowPointer(QWidget& widget, MousePointer pointer);

// `text` for a tooltip that shows it as it is and on one line, whatever it holds: tooltips guess whether they are
// given markup, and break it where they like unless a whole paragraph says no.
inline QString PlainTip(const QString& text) {
    return "<p style=\"white-space: pre\">" + text.toHtmlEscaped() + "</p>";
}

// The font of the controls with fixed places: compact, its size in pixels at 96 dots per inch.
QFont ControlFont(const Font& font);
QColor ToQColor(Color color);

// The peer that the kind of a control asks for, dressed in its state; nothing for a control without a container.
std::unique_ptr<Peer> MakePeer(Control& control);

// Makers, one a kind of control.
class Form;
class PictureBox;
class Image;
class Label;
class CommandButton;
class Frame;
class ScrollBar;
class CellSheet;
class DriveListBox;
class DirListBox;
std::unique_ptr<QtPeer> MakeFormPeer(Form& form);
std::unique_ptr<QtPeer> MakeBoxPeer(PictureBox& box, QWidget* parent);
std::unique_ptr<QtPeer> MakeImagePeer(Image& image, QWidget* parent);
std::unique_ptr<QtPeer> MakeLabelPeer(Label& label, QWidget* parent);
std::unique_ptr<QtPeer> MakeButtonPeer(CommandButton& button, QWidget* parent);
std::unique_ptr<QtPeer> MakeFramePeer(Frame& frame, QWidget* parent);
std::unique_ptr<QtPeer> MakeScrollBarPeer(ScrollBar& bar, QWidget* parent);
std::unique_ptr<QtPeer> MakeCellSheetPeer(CellSheet& sheet, QWidget* parent);
std::unique_ptr<QtPeer> MakeDriveListPeer(DriveListBox& list, QWidget* parent);
std::unique_ptr<QtPeer> MakeDirListPeer(DirListBox& list, QWidget* parent);
std::unique_ptr<Peer> MakeMenuPeer(Form& form, MenuItem& item);
