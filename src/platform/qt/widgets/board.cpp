// The board and every other picture box: shows the image where it changed, delivers the mouse.
#include "platform/qt/widgets/board.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <cmath>

#include "platform/controls/picture_box.h"
#include "platform/qt/widgets/peer.h"

namespace {

// The box in which buttons are held down; there is but one pointer.
QPointer<BoxWidget> holder;

// Rows copied at once. The toolkit hands more of them to other threads, and waking those costs more than they save.
constexpr int BandRows = 32;

}  // namespace

BoxWidget::BoxWidget(PictureBox& box, QWidget* parent) : QWidget(parent), box_(box) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setFocusPolicy(Qt::NoFocus);
    setMouseTracking(true);
}

BoxWidget::~BoxWidget() = default;

// Where the image is stretched, a pixel spreads over its neighbours.
void BoxWidget::RepaintImage(const Region& damage) {
    const int grow = ShowsPixels() ? 0 : 2;
    for (const Rect& r : damage) update(r.x - grow, r.y - grow, r.width + 2 * grow, r.height + 2 * grow);
}

// True if the image's pixels come to the screen as they are, or as whole squares.
bool BoxWidget::ShowsPixels() const {
    const qreal times = devicePixelRatioF() / box_.Image.PixelDensity().PerUnit();
    return times == std::floor(times);
}

// The view of the pixels is made afresh each time: a painter would first copy one that is kept.
void BoxWidget::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const Surface& image = box_.Image;
    if (image.IsUniform()) {
        for (const QRect& rect : event->region()) painter.fillRect(rect, QColor::fromRgb(image.Background()));
        return;
    }
    const Rect bounds = image.PixelBounds();
    const QImage view(reinterpret_cast<const uchar*>(image.Row(0)), bounds.width, bounds.height,
                      qsizetype(image.Stride()) * 4, QImage::Format_RGB32);
    for (const QRect& rect : event->region()) {
        if (!QRect(0, 0, image.Width(), image.Height()).contains(rect))
            painter.fillRect(rect, QColor::fromRgb(image.Background()));
        if (ShowsPixels())
            ShowPixels(painter, view, rect);
        else
            ShowStretched(painter, view, rect);
    }
}

// In pixels of the screen, so that the toolkit need not stretch anything. The copy goes from the bottom up: what was
// composed last lies lowest and is still in the processor's cache.
void BoxWidget::ShowPixels(QPainter& painter, const QImage& view, const QRect& rect) const {
    const int density = box_.Image.PixelDensity().PerUnit(), times = int(devicePixelRatioF()) / density;
    const QRect shown = QRect(rect.topLeft() * density, rect.size() * density) & view.rect();
    painter.save();
    painter.scale(1 / devicePixelRatioF(), 1 / devicePixelRatioF());
    for (int bottom = shown.bottom(); bottom >= shown.top(); bottom -= BandRows) {
        const QRect band(QPoint(shown.left(), std::max(bottom - BandRows + 1, shown.top())),
                         QPoint(shown.right(), bottom));
        painter.drawImage(QRect(band.topLeft() * times, band.size() * times), view, band);
    }
    painter.restore();
}

// Some pixels more on each side let the smooth stretch see the neighbours. The clip keeps the outermost ones, which
// have none themselves, off the other rectangles.
void BoxWidget::ShowStretched(QPainter& painter, const QImage& view, const QRect& rect) const {
    const int density = box_.Image.PixelDensity().PerUnit();
    const QRect inside(QPoint(), view.size() / density);
    const QRect shown = rect.adjusted(-4, -4, 4, 4) & inside;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setClipRect(rect.adjusted(-1, -1, 1, 1));
    painter.drawImage(shown, view, QRect(shown.topLeft() * density, shown.size() * density));
}

void BoxWidget::Press(const QMouseEvent& event) {
    holder = this;
    held_ = int16_t(held_ | ButtonBits(event.button()));
    shift_ = ShiftBits(event.modifiers());
    last_ = event.position();
    box_.DeliverMouseDown(ButtonBits(event.button()), shift_, float(last_.x()), float(last_.y()));
}

void BoxWidget::mousePressEvent(QMouseEvent* event) {
    event->accept();
    if (ButtonBits(event->button())) Press(*event);
}

// The desktop sends no second press with a double click; without one, quick turns would be lost.
void BoxWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    event->accept();
    if (!ButtonBits(event->button())) return;
    const QPointer<BoxWidget> self = this;
    Press(*event);
    if (self && event->button() == Qt::LeftButton) box_.DeliverDblClick();
}

void BoxWidget::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
    last_ = event->position();
    shift_ = ShiftBits(event->modifiers());
    const QPointer<BoxWidget> self = this;
    ReleaseMissing(ButtonBits(event->buttons()));
    if (!self) return;
    box_.DeliverMouseMove(int16_t(held_ & ButtonBits(event->buttons())), shift_, float(last_.x()), float(last_.y()));
}

void BoxWidget::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    const int16_t button = ButtonBits(event->button());
    if (!(held_ & button)) return;  // let go of before, or never pressed here
    held_ = int16_t(held_ & ~button);
    last_ = event->position();
    const QPointer<BoxWidget> self = this;
    const bool click = button == 1 && rect().contains(last_.toPoint());
    box_.DeliverMouseUp(button, ShiftBits(event->modifiers()), float(last_.x()), float(last_.y()));
    if (self && click) box_.DeliverClick();
}

void BoxWidget::wheelEvent(QWheelEvent* event) {
    if (!box_.Wheel) {
        event->ignore();
        return;
    }
    event->accept();
    box_.DeliverWheel(TurnOf(*event));
}

// The pointer stays where it is on the screen.
void BoxWidget::moveEvent(QMoveEvent* event) { last_ -= event->pos() - event->oldPos(); }

void BoxWidget::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    if (holder == this) ReleaseHeld();
}

void BoxWidget::ReleaseHeld() {
    if (holder) holder->ReleaseMissing(0);
}

// Releases what counts as held but is not among the buttons `down`.
void BoxWidget::ReleaseMissing(int16_t down) {
    const QPointer<BoxWidget> self = this;
    for (int button = 1; button <= held_; button <<= 1) {
        if (!(held_ & button) || (down & button)) continue;
        held_ = int16_t(held_ & ~button);
        box_.DeliverMouseUp(int16_t(button), shift_, float(last_.x()), float(last_.y()));
        if (!self) return;
    }
}

void BoxWidget::ForgetHeld() {
    if (holder) holder->held_ = 0;
}

// X11 tells pixels that are none.
WheelTurn TurnOf(const QWheelEvent& event) {
    const bool pixels = !event.pixelDelta().isNull() && QGuiApplication::platformName() != "xcb";
    const QPointF turn = pixels ? QPointF(event.pixelDelta()) : QPointF(event.angleDelta()) / 120;
    const WheelTurn::Unit unit = pixels ? WheelTurn::Unit::Pixels : WheelTurn::Unit::Notches;
    if (event.modifiers() & Qt::ShiftModifier) return {turn.x() + turn.y(), 0, unit};
    return {turn.x(), turn.y(), unit};
}

namespace {

// The line round a box. Drawn by hand, so that no style changes the room inside.
class EdgeWidget : public QWidget {
public:
    EdgeWidget(Border border, QWidget* parent) : QWidget(parent), border_(border) {
        setContextMenuPolicy(Qt::PreventContextMenu);
    }

protected:
    void paintEvent(QPaintEvent*) override { DrawEdge(*this, border_); }

private:
    Border border_;
};

// A box with a border is an edge with the box inside. The border is the one set before
// the window was made.
class BoxPeer : public QtPeer {
public:
    BoxPeer(PictureBox& box, BoxWidget* plain) : QtPeer(box, plain), content_(plain) {}
    BoxPeer(PictureBox& box, EdgeWidget* edge) : QtPeer(box, edge), content_(new BoxWidget(box, edge)) {}

    QWidget* Content() const override { return content_; }

    void Mirror(Aspect aspect) override {
        if (!Widget() || !content_) return;
        if (aspect == Aspect::Enabled) return;  // the box lets no events through then; what it shows stays as it is
        QtPeer::Mirror(aspect);
        if (aspect == Aspect::Look) content_->update();
        if (aspect == Aspect::Geometry && content_ != Widget())
            content_->setGeometry(Widget()->rect().adjusted(EdgeWidth, EdgeWidth, -EdgeWidth, -EdgeWidth));
    }

    void Repaint(const Region& damage) override {
        if (content_) content_->RepaintImage(damage);
    }

private:
    QPointer<BoxWidget> content_;
};

}  // namespace

void DrawEdge(QWidget& widget, Border border) {
    if (border == Border::None) return;
    QPainter painter(&widget);
    painter.setPen(border == Border::Thin ? widget.palette().color(QPalette::WindowText)
                                          : widget.palette().color(QPalette::Dark));
    painter.drawRect(QRectF(widget.rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

std::unique_ptr<QtPeer> MakeBoxPeer(PictureBox& box, QWidget* parent) {
    if (box.BorderStyle() == Border::None) return std::make_unique<BoxPeer>(box, new BoxWidget(box, parent));
    return std::make_unique<BoxPeer>(box, new EdgeWidget(box.BorderStyle(), parent));
}
