// Message loop, timers, clock and end of the desktop on Qt.
#include "platform/qt/desktop.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDesktopServices>
#include <QMouseEvent>
#include <QPalette>
#include <QScreen>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "platform/qt/widgets/form_window.h"
#include "platform/qt/widgets/peer.h"
#include "platform/system/machine.h"
#include "platform/system/timer.h"

namespace {

constexpr double LongestFirstPaint = 0.3;  // seconds to wait for a new window to appear

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
    decoder_.setMaxThreadCount(1);
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
    if (left > 0) SleepSeconds(left);
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
