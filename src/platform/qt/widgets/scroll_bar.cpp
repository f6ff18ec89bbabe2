// Scroll bars. The inner bar runs from 0 up, whichever of Min and Max is the larger.
#include <QScrollBar>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <cstdlib>

#include "platform/controls/scroll_bar.h"
#include "platform/qt/widgets/board.h"
#include "platform/qt/widgets/peer.h"

namespace {

class BarWidget : public QScrollBar {
public:
    BarWidget(ScrollBar& bar, QWidget* parent)
        : QScrollBar(bar.Direction() == Orientation::Vertical ? Qt::Vertical : Qt::Horizontal, parent), bar_(bar) {}

protected:
    void wheelEvent(QWheelEvent* event) override {
        if (!bar_.Wheel) return QScrollBar::wheelEvent(event);
        event->accept();
        bar_.DeliverWheel(TurnOf(*event));
    }

private:
    ScrollBar& bar_;
};

class ScrollBarPeer : public QtPeer {
public:
    ScrollBarPeer(ScrollBar& bar, QWidget* parent) : QtPeer(bar, new BarWidget(bar, parent)), bar_(bar) {
        QScrollBar& inner = Inner();
        inner.setContextMenuPolicy(Qt::PreventContextMenu);
        inner.setFocusPolicy(bar.TabIndex() >= 0 ? Qt::TabFocus : Qt::NoFocus);
        QObject::connect(&inner, &QScrollBar::valueChanged, &inner,
                         [this](int value) { Deliver(value, Inner().isSliderDown()); });
        QObject::connect(&inner, &QScrollBar::sliderReleased, &inner, [this] { Deliver(Inner().value(), false); });
    }

    void Mirror(Aspect aspect) override {
        if (!Widget()) return;
        QtPeer::Mirror(aspect);
        const QSignalBlocker quiet(Widget());
        if (aspect == Aspect::Range) {
            Inner().setSingleStep(bar_.SmallChange());
            Inner().setPageStep(bar_.LargeChange());
            Inner().setRange(0, std::abs(bar_.Max() - bar_.Min()));
        }
        if (aspect == Aspect::Range || aspect == Aspect::Value) Inner().setValue(std::abs(bar_.Value() - bar_.Min()));
    }

private:
    QScrollBar& Inner() { return static_cast<QScrollBar&>(*Widget()); }

    void Deliver(int inner, bool dragging) {
        const int value = bar_.Max() >= bar_.Min() ? bar_.Min() + inner : bar_.Min() - inner;
        bar_.DeliverValue(value, dragging);
    }

    ScrollBar& bar_;
};

}  // namespace

std::unique_ptr<QtPeer> MakeScrollBarPeer(ScrollBar& bar, QWidget* parent) {
    return std::make_unique<ScrollBarPeer>(bar, parent);
}
