// Dragging a box about its container, or a window about the screen, as if by a title bar.
#include <QGuiApplication>
#include <QMouseEvent>
#include <QWindow>
#include <functional>

#include "platform/controls/picture_box.h"
#include "platform/qt/desktop.h"
#include "platform/qt/widgets/board.h"
#include "platform/qt/widgets/form_window.h"
#include "platform/qt/widgets/peer.h"
#include "platform/system/numbers.h"

namespace {

// Runs until all buttons are up. Takes every mouse event of the program and reports how far
// the pointer has come.
class DragLoop : public QObject {
public:
    DragLoop(QPoint start, std::function<void(QPoint)> moved) : moved_(std::move(moved)), start_(start) {
        qApp->installEventFilter(this);
    }

    // The press may lie back: what the player did since then comes in now, a release that ends it all included.
    void Run() { loop_.exec(); }

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override {
        switch (event->type()) {
            case QEvent::MouseMove:
            case QEvent::MouseButtonRelease:
            case QEvent::MouseButtonPress:
            case QEvent::MouseButtonDblClick: {
                if (over_ || receiver->isWindowType()) return false;  // a window's widget gets it next
                const auto& mouse = static_cast<QMouseEvent&>(*event);
                moved_(mouse.globalPosition().toPoint() - start_);
                if (mouse.buttons() == Qt::NoButton) End();
                return true;
            }
            case QEvent::WindowBlocked:
                End();
                return false;
            default:
                return false;
        }
    }

private:
    // The loop lets out only after all that is pending, moves after the release among it.
    void End() {
        over_ = true;
        loop_.quit();
    }

    QEventLoop loop_;
    bool over_ = false;
    std::function<void(QPoint)> moved_;
    const QPoint start_;
};

}  // namespace

void QtDesktop::DragBox(PictureBox& box) {
    const double left = box.Left(), top = box.Top();
    const double units = box.Parent() && box.Parent()->InnerScale() == ScaleMode::Twips ? double(TwipsPerPixel) : 1.0;
    DragLoop(pressedAt_, [&](QPoint way) { box.Move(left + way.x() * units, top + way.y() * units); }).Run();
    BoxWidget::ForgetHeld();
}

// A desktop asked to move a window itself takes it where the pointer is by then, and goes on after a release that
// nobody has seen yet. Wayland lets nobody else do it, but knows its own presses.
void QtDesktop::DragForm(Form& form) {
    FormWindow* window = FormWindow::Of(form);
    if (!window || !window->windowHandle()) return;
    if (OnWayland()) {
        window->windowHandle()->startSystemMove();
        return;
    }
    const QPoint from = window->pos();
    DragLoop(pressedAt_, [&](QPoint way) { window->move(from + way); }).Run();
}
