#include "platform/qt/widgets/client_area.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>

#include "platform/controls/form.h"
#include "platform/qt/widgets/peer.h"

namespace {

// What lies outside the shape would show at its edge where the picture is stretched to a larger scale.
QImage CutOut(const QImage& whole, const QRegion& shape) {
    QImage cut(whole.size(), QImage::Format_ARGB32_Premultiplied);
    cut.setDevicePixelRatio(whole.devicePixelRatio());
    cut.fill(Qt::transparent);
    QPainter painter(&cut);
    painter.setClipRegion(shape);
    painter.drawImage(0, 0, whole);
    return cut;
}

}  // namespace

ClientArea::ClientArea(Form& form, QWidget* parent) : QWidget(parent), form_(form) {
    setContextMenuPolicy(Qt::PreventContextMenu);
}

void ClientArea::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (form_.Shape() && OnWayland()) painter.setClipRegion(ShapeOf(form_));
    painter.fillRect(event->rect(), ToQColor(form_.BackColor()));
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    if (const auto& picture = form_.Backdrop(); picture && !picture->IsUniform()) {
        const Rect pixels = picture->PixelBounds();
        QImage whole(reinterpret_cast<const uchar*>(picture->Row(0)), pixels.width, pixels.height,
                     qsizetype(picture->Stride()) * 4, QImage::Format_RGB32);
        whole.setDevicePixelRatio(picture->PixelDensity().PerUnit());
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(0, 0, form_.Shape() ? CutOut(whole, ShapeOf(form_)) : whole);
    }
}

void ClientArea::mousePressEvent(QMouseEvent* event) {
    event->accept();
    const QPointF at = event->position();
    form_.DeliverMouseDown(ButtonBits(event->button()), ShiftBits(event->modifiers()), float(at.x()), float(at.y()));
}

// QRegion takes a ready list only if it is sorted into bands, which rows of a picture are not always.
QRegion ShapeOf(const Form& form) {
    QRegion region;
    for (const Rect& r : *form.Shape()) region += QRect(r.x, r.y, r.width, r.height);
    return region;
}
