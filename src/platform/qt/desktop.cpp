// Windows, message loop, timers, clock and end of the desktop on Qt.
#include "platform/qt/desktop.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDesktopServices>
#include <QFontMetrics>
#include <QMouseEvent>
#include <QPalette>
#include <QScreen>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "platform/qt/widgets/board.h"
#include "platform/qt/widgets/form_window.h"
#include "platform/qt/widgets/peer.h"
#include "platform/system/timer.h"

namespace {

constexpr int ActivationRetry = 10;                                  // milliseconds
constexpr double LongestFirstPaint = 0.3;                            // seconds to wait for a new window to appear
constexpr double LeastTimeToFront = 0.05, LongestTimeToFront = 0.3;  // and for a window to come to the front

// What the player does, as opposed to what the desktop does.
bool IsInput(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::ContextMenu:
        case QEvent::Close:
        case QEvent::Drop:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TabletPress:
        case QEvent::TabletMove:
        case QEvent::TabletRelease:
        case QEvent::NativeGesture:
            return true;
        default:
            return false;
    }
}

}  // namespace

QtDesktop::QtDesktop() {
    FormWindow::Activated = [this](FormWindow& window) { NoteActivation(window); };
    qApp->setQuitOnLastWindowClosed(false);
    qApp->installEventFilter(this);
}

QtDesktop::~QtDesktop() {
    for (const auto& [timer, ticking] : timers_) delete ticking;
    FormWindow::Activated = nullptr;
}

// Input is taken at the widget, not at the window of the desktop: so Qt's own account of
// which buttons are down stays right.
bool QtDesktop::eventFilter(QObject* receiver, QEvent* event) {
    if (receiver->isWindowType()) return false;
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick)
        pressedAt_ = static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
    if (discarding_ == 0 || !IsInput(event->type())) return false;
    event->ignore();
    return true;
}

// --- Windows ---------------------------------------------------------------------------

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

// --- Message loop ----------------------------------------------------------------------

void QtDesktop::Run() {
    QEventLoop loop;
    for (;;) loop.exec();  // only End leaves
}

// A window just shown paints itself once the desktop has mapped it, which can take longer than
// one round of events.
void QtDesktop::AwaitFirstPaint(QEventLoop::ProcessEventsFlags flags) {
    const auto waiting = [] {
        const auto& all = FormWindow::All();
        return std::any_of(all.begin(), all.end(), [](const FormWindow* window) {
            return window->isVisible() && !window->isMinimized() && !window->Painted();
        });
    };
    const double end = SteadySeconds() + LongestFirstPaint;
    while (waiting() && SteadySeconds() < end) {
        SleepUntil(SteadySeconds() + 0.002);
        QCoreApplication::processEvents(flags);
    }
}

void QtDesktop::DoEvents(Yield yield) {
    const QEventLoop::ProcessEventsFlags flags =
        yield == Yield::KeepingInput ? QEventLoop::ExcludeUserInputEvents : QEventLoop::AllEvents;
    if (yield == Yield::PaintsAndTimers) ++discarding_;
    if (yield == Yield::KeepingInput) ++keeping_;
    QCoreApplication::processEvents(flags);
    AwaitFirstPaint(flags);
    // What was painted leaves for a Wayland display at the beginning of the next round only.
    if (OnWayland()) QCoreApplication::processEvents(flags);
    if (yield == Yield::PaintsAndTimers) --discarding_;
    if (yield == Yield::KeepingInput) {
        --keeping_;
        // The dispatcher looks at what it has kept only when something wakes it.
        QCoreApplication::eventDispatcher()->wakeUp();
    }
}

void QtDesktop::TimerChanged(Timer& timer, bool dying) {
    const auto found = timers_.find(&timer);
    if (dying || !timer.Enabled() || timer.Interval() <= 0) {
        if (found == timers_.end()) return;
        found->second->stop();
        // A timer may end itself in its own tick.
        found->second->deleteLater();
        timers_.erase(found);
        return;
    }
    QTimer*& ticking = timers_[&timer];
    if (!ticking) {
        ticking = new QTimer(this);
        ticking->setTimerType(Qt::PreciseTimer);
        ticking->callOnTimeout(this, [&timer] { timer.DeliverTick(); });
    }
    ticking->start(timer.Interval());
}

double QtDesktop::SteadySeconds() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

void QtDesktop::SleepUntil(double seconds) {
    const double left = seconds - SteadySeconds();
    if (left > 0) std::this_thread::sleep_for(std::chrono::duration<double>(left));
}

// The paints that are due, which would else wait for the message loop and there become one with those of the next
// drawing.
void QtDesktop::PaintNow() {
    for (FormWindow* window : FormWindow::All())
        if (window->isVisible()) QCoreApplication::sendPostedEvents(window, QEvent::UpdateRequest);
}

// Nothing is torn down: a sound daemon that hangs, or a form in mid-routine, can't hold the end up.
void QtDesktop::End() {
    std::fflush(nullptr);
    std::_Exit(0);
}

// --- Screen and surroundings -------------------------------------------------------------

double QtDesktop::ScreenWidth() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry().width() * TwipsPerPixelOfScreen : 0;
}

double QtDesktop::ScreenHeight() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry().height() * TwipsPerPixelOfScreen : 0;
}

Color QtDesktop::SystemColor(Color code) {
    const QPalette palette = QApplication::palette();
    const QColor color = code == WindowColor ? palette.color(QPalette::Base) : palette.color(QPalette::Window);
    return Rgb(color.red(), color.green(), color.blue());
}

// A machine without a browser is no matter, neither to the player nor to the terminal.
void QtDesktop::OpenPage(const std::string& address) {
    const QtMessageHandler before = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QDesktopServices::openUrl(QUrl(ToText(address), QUrl::StrictMode));
    qInstallMessageHandler(before);
}
