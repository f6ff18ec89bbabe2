// The desktop on Qt: windows, message loop, clock, dialogs, pictures, sound.
//
//   desktop.cpp      message loop, timers, clock, end
//   windows.cpp      windows shown and hidden, their states and activation
//   decoding.cpp     pictures decoded beside the events
//   drag.cpp         dragging a box or a window
//   dialogs.cpp      boxes, the colour dialog, running a dialog
//   file_dialog.cpp  opening and saving files
//   skin.cpp         style sheets of windows
//   volumes.cpp      volumes, the program's own file
#pragma once
#include <QEventLoop>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <QThreadPool>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "platform/controls/backend.h"
#include "platform/qt/sound/sound.h"

class FormWindow;
class QDialog;
class QTimer;

class QtDesktop : public QObject, public Backend {
public:
    QtDesktop();
    ~QtDesktop() override;

    std::unique_ptr<Peer> CreatePeer(Control& control) override;
    std::unique_ptr<Peer> CreateMenuPeer(Form& form, MenuItem& item) override;

    void ShowForm(Form& form) override;
    void RunModal(Form& form) override;
    void HideForm(Form& form) override;
    Size TextSize(const Font& font, const std::string& text) override;
    FrameMargins FrameOf(const Form& form) override;
    void AwaitState(Form& form, WindowState state, Yield meanwhile) override;
    double ScaleOf(Form& form) override;
    void DragBox(PictureBox& box) override;
    void DragForm(Form& form) override;

    void Run() override;
    void DoEvents(Yield yield) override;
    void TimerChanged(Timer& timer, bool dying) override;
    double SteadySeconds() override;
    void SleepUntil(double seconds) override;
    void PaintNow() override;
    [[noreturn]] void End() override;

    MsgBoxResult MsgBox(const std::string& text, int style, const std::string& title) override;
    std::optional<std::string> FileDialog(FileDialogRequest& request) override;
    std::optional<Color> ColorDialog(Color initial, bool fullOpen, std::span<Color, 16> custom) override;
    void OpenPage(const std::string& address) override;

    double ScreenWidth() override;
    double ScreenHeight() override;
    Color SystemColor(Color code) override;

    void OpenSound() { sound_.Open(); }
    void PlayWave(std::span<const std::byte> wave) override { sound_.Play(wave); }
    bool LoadSkin(const std::string& text) override;
    void ApplySkin(Form& form) override;

    std::optional<Size> PictureSize(const std::string& path) override;
    std::optional<Picture> DecodePicture(const std::string& path, Size atLeast) override;
    void DoEventsDecoding(const std::string& path, Size atLeast, const std::function<bool()>& wanted) override;
    std::vector<Volume> Volumes() override;
    std::string ProgramPath() override;

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    struct ModalLoop {
        const Form* form;
        QEventLoop* loop;
    };
    struct Decoded {
        std::string path;
        Size atLeast;
        std::optional<Picture> picture;
    };
    struct Decoding;
    void DropUnwanted();
    // Runs `dialog` over the active window, which keeps its style sheet to itself.
    int RunDialog(QDialog& dialog);
    void ShowWindow(FormWindow& window, bool modal);
    void BringToFront(FormWindow& window);
    // A window became the active one. Its form hears of it from the message loop, and only
    // if another form was active before.
    void NoteActivation(FormWindow& window);
    void AwaitFirstPaint(QEventLoop::ProcessEventsFlags flags);

    std::map<Timer*, QTimer*> timers_;
    std::vector<ModalLoop> modal_;                      // innermost last
    const Form* active_ = nullptr;                      // the form that was told last that it is active
    int discarding_ = 0;                                // yields under way in which input is thrown away
    int keeping_ = 0;                                   // and in which it waits
    QPoint pressedAt_;                                  // where on the desktop a button was last pressed
    std::optional<Decoded> decoded_;                    // during a yield, not yet asked for
    std::vector<std::shared_ptr<Decoding>> decodings_;  // yields under way, innermost last
    QThreadPool decoder_;                               // one thread
    QString skin_;
    QtSound sound_;
};
