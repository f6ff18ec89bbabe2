// Labels. One with a Click handler is a link: the mouse, Enter and the space bar open it.
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>
#include <cmath>

#include "platform/controls/form.h"
#include "platform/controls/picture_box.h"
#include "platform/controls/simple_controls.h"
#include "platform/qt/widgets/peer.h"

namespace {

constexpr double LeastContrast = 3.0;  // below it a text can hardly be read

double Luminance(const QColor& color) {
    const auto linear = [](double v) { return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

bool Legible(const QColor& text, const QColor& ground) {
    const double a = Luminance(text) + 0.05, b = Luminance(ground) + 0.05;
    return std::max(a, b) / std::min(a, b) >= LeastContrast;
}

// The colour on which a label stands, if it is one of the desktop's own. The game's own colours are made
// to be read together; the desktop's can be dark where the game's text is.
std::optional<QColor> DesktopGround(const Label& label) {
    const auto ifDesktops = [](Color color) { return color < 0 ? std::optional(ToQColor(color)) : std::nullopt; };
    if (!label.Look().transparent) return ifDesktops(label.Look().backColor);
    for (const Control* c = label.Parent(); c; c = c->Parent()) {
        if (const auto* box = dynamic_cast<const PictureBox*>(c)) return ifDesktops(box->BackColor());
        if (const auto* form = dynamic_cast<const Form*>(c))
            return form->Backdrop() ? std::nullopt : ifDesktops(form->BackColor());
    }
    return std::nullopt;
}

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
        painter.setPen(TextColor());
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
    // The game's colour, unless it cannot be read on the desktop's.
    QColor TextColor() const {
        const QColor own = palette().color(QPalette::WindowText);
        if (dressed_) return own;
        const QColor chosen = ToQColor(label_.Look().foreColor);
        const std::optional<QColor> ground = DesktopGround(label_);
        if (!ground || Legible(chosen, *ground)) return chosen;
        const QColor link = palette().color(QPalette::Link);
        return label_.Click && Legible(link, *ground) ? link : own;
    }

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
