// The window of a form: its menu bar above, its client area below.
#pragma once
#include <QElapsedTimer>
#include <QWidget>
#include <functional>
#include <vector>

#include "platform/controls/form.h"

class QMenuBar;

class FormWindow : public QWidget {
public:
    explicit FormWindow(Form& form);
    ~FormWindow() override;

    Form& TheForm() const { return form_; }
    QWidget* Client() const { return client_; }
    QMenuBar& MenuBar();  // made at the first call

    // Window size and place from the form's.
    void TakeGeometry();
    void TakeRegion();
    void RequestState(WindowState state);
    // True once the window has the size of the state asked for, or the wait for it is over.
    bool StateSettled() const;
    // Places menu bar and client area, and tells the form its size.
    void LayOut();
    void OrderTabs();
    // True once the desktop has had the window painted since it was last shown.
    bool Painted() const;

    // Hears that a window was shown or has become the active one.
    static std::function<void(FormWindow&)> Activated;

    static const std::vector<FormWindow*>& All();
    static FormWindow* Of(const Form& form);
    // The frame of a form's window, or of another one as long as it has none itself.
    static QMargins FrameOf(const Form& form);
    // The window of the program on which a dialog belongs; nullptr if none is shown.
    static FormWindow* Frontmost();
    // Makes `child` a window that belongs to `owner`, without its style sheet, and gets the keys once it is shown.
    static void Attach(QWidget& child, QWidget* owner);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* handle, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    int MenuHeight() const;

    Form& form_;
    QWidget* client_;
    QMenuBar* menuBar_ = nullptr;
    QElapsedTimer sinceRequest_;
    WindowState requested_ = WindowState::Normal;
    mutable bool painted_ = false;  // as far as anybody has asked
};
