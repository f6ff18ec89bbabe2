// Windows shown, brought to the front, hidden; their states, frames and activation.
#include <QApplication>
#include <QFontMetrics>
#include <QTimer>
#include <algorithm>

#include "platform/qt/desktop.h"
#include "platform/qt/widgets/form_window.h"
#include "platform/qt/widgets/peer.h"
#include "platform/system/machine.h"

namespace {

constexpr int ActivationRetry = 10;                                  // milliseconds
constexpr double LeastTimeToFront = 0.05, LongestTimeToFront = 0.3;  // seconds for a window to come to the front

}  // namespace

std::unique_ptr<Peer> QtDesktop::CreatePeer(Control& control) { return MakePeer(control); }
std::unique_ptr<Peer> QtDesktop::CreateMenuPeer(Form& form, MenuItem& item) { return MakeMenuPeer(form, item); }

void QtDesktop::ShowWindow(FormWindow& window, bool modal) {
    FormWindow* const owner = FormWindow::Frontmost();
    const Form& form = window.TheForm();
    window.setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
    FormWindow::Attach(window, modal ? owner : nullptr);
    window.RequestState(form.State());
    window.show();
    // Where no window manager sees to it.
    for (FormWindow* other : FormWindow::All())
        if (other->TheForm().BorderStyle() == FormBorder::None && other->isVisible()) other->raise();
}

void QtDesktop::ShowForm(Form& form) {
    FormWindow* window = FormWindow::Of(form);
    if (!window) return;
    if (window->isVisible())
        BringToFront(*window);
    else
        ShowWindow(*window, false);
}

// A window manager does it in its own time, and only then comes the order to paint what was covered. Nothing
// follows by which to know it but, mostly, the activation.
void QtDesktop::BringToFront(FormWindow& window) {
    window.raise();
    window.activateWindow();
    const double start = SteadySeconds();
    const QPointer<FormWindow> alive = &window;
    for (double passed = 0; passed < LeastTimeToFront || (passed < LongestTimeToFront && !window.isActiveWindow());
         passed = SteadySeconds() - start) {
        DoEvents(Yield::KeepingInput);
        if (!alive) return;
        SleepUntil(SteadySeconds() + 0.002);
    }
}

void QtDesktop::RunModal(Form& form) {
    FormWindow* window = FormWindow::Of(form);
    if (!window || !form.IsShown()) return;
    QEventLoop loop;
    modal_.push_back({&form, &loop});
    ShowWindow(*window, true);
    if (form.IsShown()) loop.exec();
    std::erase_if(modal_, [&](const ModalLoop& entry) { return entry.loop == &loop; });
    decoded_.reset();
    // By then the stack has unwound and the form is gone, with all its thumbnails.
    QTimer::singleShot(0, this, GiveMemoryBack);
}

// The loop of a form that is hidden from deep inside ends when the stack has unwound to it.
void QtDesktop::HideForm(Form& form) {
    if (active_ == &form) active_ = nullptr;
    for (const ModalLoop& entry : modal_)
        if (entry.form == &form) entry.loop->quit();
    FormWindow* window = FormWindow::Of(form);
    if (!window || !window->isVisible()) return;
    const bool hadKeys = window->isActiveWindow();
    window->hide();
    // Where no window manager does it; a window that was blocked sees to it itself.
    FormWindow* front = FormWindow::Frontmost();
    if (hadKeys && !window->isModal() && front) front->activateWindow();
}

Size QtDesktop::TextSize(const Font& font, const std::string& text) {
    const QSize size = QFontMetrics(ControlFont(font)).boundingRect(QRect(), Qt::TextSingleLine, ToText(text)).size();
    return {size.width(), size.height()};
}

FrameMargins QtDesktop::FrameOf(const Form& form) {
    const QMargins frame = FormWindow::FrameOf(form);
    return {frame.left(), frame.top(), frame.right(), frame.bottom()};
}

void QtDesktop::AwaitState(Form& form, WindowState state, Yield meanwhile) {
    FormWindow* window = FormWindow::Of(form);
    if (!window || !window->isVisible()) return;
    const Qt::WindowStates wanted = state == WindowState::Maximized   ? Qt::WindowMaximized
                                    : state == WindowState::Minimized ? Qt::WindowMinimized
                                                                      : Qt::WindowNoState;
    if ((window->windowState() & (Qt::WindowMaximized | Qt::WindowMinimized)) != wanted) window->RequestState(state);
    if (state != WindowState::Maximized) {
        DoEvents(meanwhile);
        return;
    }
    const QPointer<FormWindow> alive = window;
    while (alive && alive->isVisible() && !alive->StateSettled()) {
        DoEvents(meanwhile);
        SleepUntil(SteadySeconds() + 0.002);
    }
}

double QtDesktop::ScaleOf(Form& form) {
    const FormWindow* window = FormWindow::Of(form);
    return window ? window->devicePixelRatioF() : 1;
}

// Activation is told from the message loop: it comes at varying moments, some of them in the
// middle of showing a window.
void QtDesktop::NoteActivation(FormWindow& window) {
    QMetaObject::invokeMethod(
        &window,
        [this, &window] {
            if (!window.isVisible() || active_ == &window.TheForm()) return;
            if (discarding_ + keeping_ > 0) {  // a routine of the game is in mid-work; once more when it is through
                QTimer::singleShot(ActivationRetry, &window, [this, &window] { NoteActivation(window); });
                return;
            }
            // A blocked window is told when it is free and active again.
            const QWidget* modal = QApplication::activeModalWidget();
            if (modal && modal != &window) return;
            active_ = &window.TheForm();
            window.TheForm().DeliverActivate();
        },
        Qt::QueuedConnection);
}
