// Labels. One with a Click handler is a link: the mouse, Enter and the space bar open it.
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>

#include "platform/qt/qt_peer.h"
#include "platform/simple_controls.h"

namespace {

class LabelWidget : public QLabel {
public:
    LabelWidget(Label& label, QWidget* parent)
        : QLabel(parent), label_(label), dressed_(dynamic_cast<SkinLabel*>(&label) != nullptr) {
        setTextFormat(Qt::PlainText);
        setContextMenuPolicy(Qt::PreventContextMenu);
    }

    void TakeLook() {
        const Label::LabelLook& look = label_.Look();
        setFont(ControlFont(look.font));
        setFocusPolicy(label_.Click ? Qt::StrongFocus : Qt::NoFocus);
        if (label_.Click && label_.Pointer() == MousePointer::Default) setCursor(Qt::PointingHandCursor);
        update();
    }

protected:
    // Drawn here, so that a window's skin leaves the colours that the game has chosen.
    void paintEvent(QPaintEvent*) override {
        const Label::LabelLook& look = label_.Look();
        QPainter painter(this);
        if (!look.transparent) painter.fillRect(rect(), ToQColor(look.backColor));
        painter.setPen(dressed_ ? palette().color(QPalette::WindowText) : ToQColor(look.foreColor));
        painter.setFont(Fitting(Flags()));
        painter.drawText(rect(), Flags(), Shown());
        if (!hasFocus()) return;
        QStyleOptionFocusRect option;
        option.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }

    void mousePressEvent(QMouseEvent* event) override { event->accept(); }

    void mouseReleaseEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) label_.DeliverClick();
    }

    void keyPressEvent(QKeyEvent* event) override {
        const int key = event->key();
        if (label_.Click && (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space))
            label_.DeliverClick();
        else
            QLabel::keyPressEvent(event);
    }

private:
    int Flags() const {
        const Label::LabelLook& look = label_.Look();
        const Qt::Alignment side = look.alignment == Alignment::Left    ? Qt::AlignLeft
                                   : look.alignment == Alignment::Right ? Qt::AlignRight
                                                                        : Qt::AlignHCenter;
        return int(side) | int(Qt::AlignTop) | (look.wordWrap ? int(Qt::TextWordWrap) : 0);
    }

    // A carriage return breaks the line.
    QString Shown() const { return text().replace("\r\n", "\n").replace('\r', '\n'); }

    // The font of the label, drawn together as far as the text needs it to stay inside.
    QFont Fitting(int flags) const {
        QFont fitting = font();
        const auto fits = [&] {
            const QRect needed = QFontMetrics(fitting).boundingRect(rect(), flags, Shown());
            return needed.width() <= width() && needed.height() <= height() + 2;
        };
        for (int stretch = 100; stretch >= 80; stretch -= 5) {
            fitting.setStretch(stretch);
            if (fits()) return fitting;
        }
        for (int size = font().pixelSize() - 1; size >= 8; --size) {
            fitting.setPixelSize(size);
            if (fits()) break;
        }
        return fitting;
    }

    Label& label_;
    const bool dressed_;
};

class LabelPeer : public QtPeer {
public:
    LabelPeer(Label& label, QWidget* parent) : QtPeer(label, new LabelWidget(label, parent)), label_(label) {}

    void Mirror(Aspect aspect) override {
        if (!Widget()) return;
        QtPeer::Mirror(aspect);
        auto& widget = static_cast<LabelWidget&>(*Widget());
        if (aspect == Aspect::Text) widget.setText(ToText(label_.Caption()));
        if (aspect == Aspect::Look) widget.TakeLook();
    }

private:
    Label& label_;
};

}  // namespace

std::unique_ptr<QtPeer> MakeLabelPeer(Label& label, QWidget* parent) {
    return std::make_unique<LabelPeer>(label, parent);
}
