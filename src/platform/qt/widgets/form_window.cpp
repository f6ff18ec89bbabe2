// Windows: place and size, menu bar, shape, states, closing, blocking.
#include "platform/qt/widgets/form_window.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QMenuBar>
#include <QScreen>
#include <QShortcut>
#include <QWindow>
#include <algorithm>
#include <map>

#include "platform/qt/widgets/board.h"
#include "platform/qt/widgets/client_area.h"
#include "platform/qt/widgets/file_drops.h"
#include "platform/qt/widgets/peer.h"

namespace {

constexpr int LongestStateWait = 400;  // milliseconds for a window manager to grant a state

std::vector<FormWindow*> windows;

// A tool is in front of the program's other windows, not of other programs', and in no list of tasks.
Qt::WindowFlags FlagsOf(FormBorder border) {
    const Qt::WindowFlags titled =
        Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
    switch (border) {
        case FormBorder::Sizable:
            return Qt::Window;
        case FormBorder::None:
            return Qt::Tool | Qt::FramelessWindowHint;
        case FormBorder::FixedToolWindow:
            return Qt::Tool | titled;
        default:
            return Qt::Dialog | titled;
    }
}

class FormPeer : public QtPeer {
public:
    explicit FormPeer(Form& form) : QtPeer(form, new FormWindow(form)) {}

    QWidget* Content() const override { return Widget() ? static_cast<FormWindow*>(Widget())->Client() : nullptr; }

    void Mirror(Aspect aspect) override {
        if (!Widget()) return;
        auto& window = static_cast<FormWindow&>(*Widget());
        switch (aspect) {
            case Aspect::Geometry:
                window.TakeGeometry();
                break;
            case Aspect::Outline:
                window.TakeRegion();
                break;
            case Aspect::Look:
                QtPeer::Mirror(aspect);
                window.Client()->update();
                break;
            case Aspect::Content:
                window.Client()->update();
                break;
            case Aspect::Order:
                window.raise();
                break;
            case Aspect::Visible:
            case Aspect::State:
                break;  // ShowForm, HideForm and AwaitState do that
            default:
                QtPeer::Mirror(aspect);
        }
    }
};

}  // namespace

std::unique_ptr<QtPeer> MakeFormPeer(Form& form) { return std::make_unique<FormPeer>(form); }

FormWindow::FormWindow(Form& form)
    : QWidget(nullptr, FlagsOf(form.BorderStyle())), form_(form), client_(new ClientArea(form, this)) {
    windows.push_back(this);
    // The toolkit would show the program's name in place of an empty title.
    setWindowTitle(form.Caption().empty() ? " " : ToText(form.Caption()));
    setAttribute(Qt::WA_QuitOnClose, false);
    client_->setObjectName(ToText(form.Name()));
    if (form.TakesFile) TakeFileDrops(*this);
}

std::function<void(FormWindow&)> FormWindow::Activated;

FormWindow::~FormWindow() { std::erase(windows, this); }

const std::vector<FormWindow*>& FormWindow::All() { return windows; }

FormWindow* FormWindow::Of(const Form& form) {
    for (FormWindow* window : windows)
        if (&window->form_ == &form) return window;
    return nullptr;
}

// Window managers frame all windows of a kind alike, and most of them all kinds.
QMargins FormWindow::FrameOf(const Form& form) {
    if (form.BorderStyle() == FormBorder::None) return {};
    QMargins frame;
    for (const FormWindow* window : windows) {
        if (!window->isVisible() || window->form_.BorderStyle() == FormBorder::None || !window->windowHandle())
            continue;
        frame = window->windowHandle()->frameMargins();
        if (&window->form_ == &form) break;
    }
    return frame;
}

FormWindow* FormWindow::Frontmost() {
    FormWindow* best = nullptr;
    for (FormWindow* window : windows) {
        if (!window->isVisible() || window->isMinimized()) continue;
        // The later one was opened over the earlier one.
        if (!best || window->isActiveWindow() || window->isModal()) best = window;
    }
    return best;
}

void FormWindow::Attach(QWidget& child, QWidget* owner) {
    child.winId();  // makes the window of the desktop
    if (!owner || !owner->windowHandle() || owner == &child) return;
    child.windowHandle()->setTransientParent(owner->windowHandle());
    child.windowHandle()->requestActivate();  // nobody else gives it the keys where there is no window manager
}

QMenuBar& FormWindow::MenuBar() {
    if (!menuBar_) {
        menuBar_ = new QMenuBar(this);
        menuBar_->setNativeMenuBar(false);
        // The captions have no keys of their own; F10 leads to the first menu, as everywhere.
        auto* toMenus = new QShortcut(QKeySequence(Qt::Key_F10), this);
        connect(toMenus, &QShortcut::activated, this, [this] {
            if (!menuBar_->actions().isEmpty()) menuBar_->setActiveAction(menuBar_->actions().constFirst());
        });
    }
    return *menuBar_;
}

int FormWindow::MenuHeight() const {
    if (!menuBar_) return 0;
    const int tall = menuBar_->heightForWidth(width());
    return tall > 0 ? tall : menuBar_->sizeHint().height();
}

// Left and Top are the client area's, from the corner of the primary screen, which can lie anywhere among the
// monitors. A maximised window keeps the place it has.
void FormWindow::TakeGeometry() {
    const Rect r = form_.PixelRect();
    if (windowState() & (Qt::WindowMaximized | Qt::WindowMinimized)) return;
    const QScreen* primary = QGuiApplication::primaryScreen();
    const QPoint corner = primary ? primary->geometry().topLeft() : QPoint();
    const int menu = MenuHeight();
    const QRect place(corner.x() + r.x, corner.y() + r.y - menu, r.width, r.height + menu);
    if (form_.BorderStyle() != FormBorder::Sizable) {
        setFixedSize(place.size());
        setGeometry(place);
    } else if (r.width > 0 && r.height > 0) {
        setGeometry(place);
    }
}

void FormWindow::TakeRegion() {
    if (!form_.Shape()) {
        clearMask();
        return;
    }
    // An empty mask would count as none.
    const QRegion shape = ShapeOf(form_);
    setMask(shape.isEmpty() ? QRegion(-1, -1, 1, 1) : shape);
    if (OnWayland()) {  // the mask then only lets clicks through
        setAttribute(Qt::WA_TranslucentBackground);
        client_->update();
    }
}

void FormWindow::RequestState(WindowState state) {
    requested_ = state;
    sinceRequest_.start();
    Qt::WindowStates states = windowState() & ~(Qt::WindowMaximized | Qt::WindowMinimized);
    if (state == WindowState::Maximized) states |= Qt::WindowMaximized;
    if (state == WindowState::Minimized) states |= Qt::WindowMinimized;
    setWindowState(states);
}

// Qt counts a state as taken as soon as it was asked for; the size tells when it really is.
bool FormWindow::StateSettled() const {
    if (!sinceRequest_.isValid() || sinceRequest_.elapsed() > LongestStateWait) return true;
    if (requested_ != WindowState::Maximized) return false;
    const QRect room = screen()->availableGeometry();
    return Painted() && width() * 10 >= room.width() * 9 && frameGeometry().height() * 10 >= room.height() * 9;
}

// A window is painted in the very event that exposes it. It stays so on another workspace, where nothing is
// exposed and nobody is to wait for it.
bool FormWindow::Painted() const { return painted_ = painted_ || (windowHandle() && windowHandle()->isExposed()); }

void FormWindow::LayOut() {
    const int menu = std::min(MenuHeight(), height());
    if (menuBar_) menuBar_->setGeometry(0, 0, width(), menu);
    client_->setGeometry(0, menu, width(), height() - menu);
    if (isVisible()) form_.DeliverResize({client_->width(), client_->height()});
}

void FormWindow::resizeEvent(QResizeEvent*) { LayOut(); }

void FormWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (event->spontaneous()) return;
    painted_ = false;
    windowHandle()->installEventFilter(this);
    OrderTabs();
    LayOut();
    if (Activated) Activated(*this);
}

// Only the form hides its window.
void FormWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    form_.DeliverClose();
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
    static const std::map<int, Key> keys = {{Qt::Key_Escape, Key::Escape},
                                            {Qt::Key_Left, Key::Left},
                                            {Qt::Key_Right, Key::Right},
                                            {Qt::Key_Up, Key::Up},
                                            {Qt::Key_Down, Key::Down},
                                            {Qt::Key_PageUp, Key::PageUp},
                                            {Qt::Key_PageDown, Key::PageDown},
                                            {Qt::Key_Home, Key::Home},
                                            {Qt::Key_End, Key::End}};
    const auto key = keys.find(event->key());
    if (key == keys.end() || (event->modifiers() & ~Qt::KeypadModifier)) return event->ignore();
    form_.DeliverKeyDown(key->second);
}

void FormWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) {
        form_.DeliverState(isMinimized()   ? WindowState::Minimized
                           : isMaximized() ? WindowState::Maximized
                                           : WindowState::Normal);
    } else if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange) {
        // Menus of another height leave another client area.
        if (form_.BorderStyle() == FormBorder::Sizable) LayOut();
    }
}

bool FormWindow::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::WindowActivate:
            if (Activated) Activated(*this);
            break;
        case QEvent::WindowBlocked:
            BoxWidget::ReleaseHeld();
            break;
        case QEvent::WindowUnblocked:
            // What blocked it has the keys, unless the player is busy with another program.
            if (QGuiApplication::applicationState() == Qt::ApplicationActive) activateWindow();
            break;
        case QEvent::LayoutRequest:
            LayOut();
            break;
        default:
            break;
    }
    return QWidget::event(event);
}

// By the time it is exposed the window has its frame.
bool FormWindow::eventFilter(QObject* handle, QEvent* event) {
    if (event->type() == QEvent::Expose && windowHandle()->isExposed()) form_.DeliverFrame();
    return QWidget::eventFilter(handle, event);
}

namespace {

void CollectTabs(const Control& control, std::vector<std::pair<int, QWidget*>>& tabs) {
    for (const Control* child : control.Children()) {
        const QtPeer* peer = PeerOf(*child);
        if (!peer || !peer->Widget()) continue;
        if (child->TabIndex() >= 0 && (peer->Widget()->focusPolicy() & Qt::TabFocus))
            tabs.emplace_back(child->TabIndex(), peer->Widget());
        CollectTabs(*child, tabs);
    }
}

}  // namespace

void FormWindow::OrderTabs() {
    std::vector<std::pair<int, QWidget*>> tabs;
    CollectTabs(form_, tabs);
    std::stable_sort(tabs.begin(), tabs.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (size_t i = 1; i < tabs.size(); ++i) setTabOrder(tabs[i - 1].second, tabs[i].second);
    if (!tabs.empty()) tabs.front().second->setFocus(Qt::OtherFocusReason);
}
