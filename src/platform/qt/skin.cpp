// Dressing windows with a style sheet.
#include <QWidget>
#include <atomic>

#include "platform/qt/desktop.h"
#include "platform/qt/widgets/form_window.h"
#include "platform/qt/widgets/peer.h"

namespace {

std::atomic<bool> complained = false;

void NoteComplaint(QtMsgType, const QMessageLogContext&, const QString& message) {
    if (message.contains("Could not parse")) complained = true;
}

// The parser only complains in the log, at the moment a widget takes the sheet on.
bool IsStyleSheet(const QString& text) {
    if (text.trimmed().isEmpty()) return false;
    complained = false;
    const QtMessageHandler before = qInstallMessageHandler(NoteComplaint);
    {
        QWidget model;
        model.setStyleSheet(text);
        model.ensurePolished();
    }
    qInstallMessageHandler(before);
    return !complained;
}

}  // namespace

bool QtDesktop::LoadSkin(const std::string& text) {
    Q_INIT_RESOURCE(skin);
    const QString sheet = ToText(text);
    if (!IsStyleSheet(sheet)) return false;
    skin_ = sheet;
    return true;
}

// Windows have no parent in Qt's sense, so the sheet stays with this one and its menus.
void QtDesktop::ApplySkin(Form& form) {
    FormWindow* window = FormWindow::Of(form);
    if (window && window->styleSheet() != skin_) window->setStyleSheet(skin_);
}
