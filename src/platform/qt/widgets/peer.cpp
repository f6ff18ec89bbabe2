// The peers' common part, and which kind of control gets which peer.
#include "platform/qt/widgets/peer.h"

#include <QCursor>
#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <cmath>

#include "platform/controls/cell_sheet.h"
#include "platform/controls/folder_lists.h"
#include "platform/controls/form.h"
#include "platform/controls/picture_box.h"
#include "platform/controls/scroll_bar.h"
#include "platform/controls/simple_controls.h"

void QtPeer::Mirror(Aspect aspect) {
    if (!widget_) return;
    switch (aspect) {
        case Aspect::Geometry: {
            const Rect r = control_.PixelRect();
            widget_->setGeometry(r.x, r.y, r.width, r.height);
            break;
        }
        case Aspect::Visible:
            widget_->setVisible(control_.Visible());
            break;
        case Aspect::Enabled:
            widget_->setEnabled(control_.Enabled());
            break;
        case Aspect::Order:
            widget_->raise();
            break;
        case Aspect::Text:
            widget_->setAccessibleName(ToText(control_.AccessibleName()));
            break;
        case Aspect::Look:
            ShowPointer(*widget_, control_.Pointer());
            break;
        default:
            break;
    }
}

void QtPeer::MirrorAll() {
    for (const Aspect aspect :
         {Aspect::Geometry, Aspect::Enabled, Aspect::Text, Aspect::Look, Aspect::Content, Aspect::Range, Aspect::Value,
          Aspect::Entries, Aspect::Outline, Aspect::State, Aspect::Visible})
        Mirror(aspect);
}

QtPeer* PeerOf(const Control& control) { return dynamic_cast<QtPeer*>(control.GetPeer()); }

QWidget* ContainerOf(const Control& control) {
    for (const Control* c = control.Parent(); c; c = c->Parent())
        if (const QtPeer* peer = PeerOf(*c)) return peer->Content();
    return nullptr;
}

bool OnWayland() { return QGuiApplication::platformName().startsWith("wayland"); }

int16_t ButtonBits(Qt::MouseButtons buttons) {
    static_assert(Qt::LeftButton == 1 && Qt::RightButton == 2 && Qt::MiddleButton == 4);
    // The last bit stands for all buttons beyond it.
    constexpr int last = 0x4000;
    const int bits = int(buttons);
    return int16_t((bits & (last - 1)) | (bits >= last ? last : 0));
}

int16_t ShiftBits(Qt::KeyboardModifiers modifiers) {
    int bits = 0;
    if (modifiers & Qt::ShiftModifier) bits |= 1;
    if (modifiers & Qt::ControlModifier) bits |= 2;
    if (modifiers & Qt::AltModifier) bits |= 4;
    return int16_t(bits);
}

void ShowPointer(QWidget& widget, MousePointer pointer) {
    switch (pointer) {
        case MousePointer::Default:
            widget.unsetCursor();
            break;
        case MousePointer::Arrow:
            widget.setCursor(Qt::ArrowCursor);
            break;
        case MousePointer::Hourglass:
            widget.setCursor(Qt::WaitCursor);
            break;
        case MousePointer::Hand:
            widget.setCursor(Qt::PointingHandCursor);
            break;
    }
}

// The windows were laid out for a narrow face; wide ones would be cut off at the edges.
QFont ControlFont(const Font& font) {
    static const QString family = [] {
        for (const char* name : {"Liberation Sans", "Arial", "Helvetica", "Noto Sans", "DejaVu Sans"})
            if (QFontDatabase::hasFamily(name)) return QString(name);
        return QFont().family();
    }();
    QFont result(family);
    result.setPixelSize(int(std::lround(font.points * 96 / 72)));
    result.setBold(font.bold);
    result.setUnderline(font.underline);
    return result;
}

QColor ToQColor(Color color) { return QColor::fromRgb(ToPixel(ResolveColor(color))); }

namespace {

// A control made of others has nothing to show of its own.
std::unique_ptr<QtPeer> MakeContainerPeer(Control& control, QWidget* parent) {
    return std::make_unique<QtPeer>(control, new QWidget(parent));
}

std::unique_ptr<QtPeer> MakeByKind(Control& control) {
    if (auto* form = dynamic_cast<Form*>(&control)) return MakeFormPeer(*form);
    QWidget* parent = ContainerOf(control);
    if (!parent) return nullptr;
    if (auto* box = dynamic_cast<PictureBox*>(&control)) return MakeBoxPeer(*box, parent);
    if (auto* image = dynamic_cast<Image*>(&control)) return MakeImagePeer(*image, parent);
    if (auto* label = dynamic_cast<Label*>(&control)) return MakeLabelPeer(*label, parent);
    if (auto* button = dynamic_cast<CommandButton*>(&control)) return MakeButtonPeer(*button, parent);
    if (auto* frame = dynamic_cast<Frame*>(&control)) return MakeFramePeer(*frame, parent);
    if (auto* bar = dynamic_cast<ScrollBar*>(&control)) return MakeScrollBarPeer(*bar, parent);
    if (auto* sheet = dynamic_cast<CellSheet*>(&control)) return MakeCellSheetPeer(*sheet, parent);
    if (auto* drives = dynamic_cast<DriveListBox*>(&control)) return MakeDriveListPeer(*drives, parent);
    if (auto* folders = dynamic_cast<DirListBox*>(&control)) return MakeDirListPeer(*folders, parent);
    return MakeContainerPeer(control, parent);
}

}  // namespace

std::unique_ptr<Peer> MakePeer(Control& control) {
    std::unique_ptr<QtPeer> peer = MakeByKind(control);
    if (peer && peer->Widget()) {
        peer->Widget()->setObjectName(ToText(control.Name()));
        // A press is the control's own, whether it has a use for it or not: none goes on to the container.
        peer->Widget()->setAttribute(Qt::WA_NoMousePropagation);
        if (peer->Content()) peer->Content()->setAttribute(Qt::WA_NoMousePropagation);
        peer->MirrorAll();
    }
    return peer;
}
