// Dragging a box about its container, or a window about the screen, as if by a title bar.
#include <QCursor>
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
    explicit DragLoop(std::function<void(QPoint)> moved) : moved_(std::move(moved)) { qApp->installEventFilter(this); }

    void Run() {
        if (QGuiApplication::mouseButtons() != Qt::NoButton) loop_.exec();
    }

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override {
        switch (event->type()) {
            case QEvent::MouseMove:
            case QEvent::MouseButtonRelease:
            case QEvent::MouseButtonPress:
            case QEvent::MouseButtonDblClick: {
                if (receiver->isWindowType()) return false;  // its widget gets it next
                const auto& mouse = static_cast<QMouseEvent&>(*event);
                moved_(mouse.globalPosition().toPoint() - start_);
                if (mouse.buttons() == Qt::NoButton) loop_.quit();
                return true;
            }
            case QEvent::WindowBlocked:
            case QEvent::ApplicationDeactivate:
                loop_.quit();
                return false;
            default:
                return false;
        }
    }

private:
    QEventLoop loop_;
    std::function<void(QPoint)> moved_;
    const QPoint start_ = QCursor::pos();
};

}  // namespace

void QtDesktop::DragBox(PictureBox& box) {
    const double left = box.Left(), top = box.Top();
    const double units = box.Parent() && box.Parent()->InnerScale() == ScaleMode::Twips ? double(TwipsPerPixel) : 1.0;
    DragLoop([&](QPoint way) { box.Move(left + way.x() * units, top + way.y() * units); }).Run();
    BoxWidget::ForgetHeld();
}

// The desktop moves its windows itself where it can; the call returns at once then.
void QtDesktop::DragForm(Form& form) {
    FormWindow* window = FormWindow::Of(form);
    if (!window || !window->windowHandle()) return;
    if (window->windowHandle()->startSystemMove()) return;
    const QPoint from = window->pos();
    DragLoop([&](QPoint way) { window->move(from + way); }).Run();
}
