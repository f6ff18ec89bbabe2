// The toolkit's drag and drop as the form's one event.
#include "platform/qt/widgets/file_drops.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <optional>

#include "platform/qt/widgets/form_window.h"
#include "platform/system/paths.h"

namespace {

// The one local file that is carried, by its bytes: its name need not be text. Nothing for several, or for none.
std::optional<std::string> CarriedFile(const QMimeData& carried) {
    std::optional<std::string> path;
    for (QByteArray line : carried.data("text/uri-list").split('\n')) {
        line = line.trimmed();
        if (line.isEmpty() || line.startsWith('#')) continue;
        if (path || !line.startsWith("file:")) return std::nullopt;
        // file:/path, file:///path, or with the name of a machine
        const bool named = line.startsWith("file://");
        const qsizetype start = named ? line.indexOf('/', 7) : 5;
        if (start < 0) return std::nullopt;
        const QByteArray machine = named ? line.mid(7, start - 7) : QByteArray();
        path = FileOfAddress(machine.toStdString(), QByteArray::fromPercentEncoding(line.mid(start)).toStdString());
    }
    return path;
}

bool IsBlocked(const QWidget& window) {
    const QWidget* modal = QApplication::activeModalWidget();
    return modal && modal != &window;
}

class FileDrops : public QObject {
public:
    explicit FileDrops(FormWindow& window) : QObject(&window), window_(window) {
        window.setAcceptDrops(true);
        window.installEventFilter(this);
    }

protected:
    // What is carried is looked at once, when it comes in; while it moves about nothing changes but dialogs.
    bool eventFilter(QObject* /*receiver*/, QEvent* event) override {
        const bool enters = event->type() == QEvent::DragEnter, drops = event->type() == QEvent::Drop;
        if (!enters && !drops && event->type() != QEvent::DragMove) return false;
        auto& drag = static_cast<QDropEvent&>(*event);
        if (enters) file_ = CarriedFile(*drag.mimeData());
        if (enters && file_ && !window_.TheForm().WouldTake(*file_)) file_.reset();
        // Never a move, which would have the other program delete its file.
        const Qt::DropActions offered = drag.possibleActions() & (Qt::CopyAction | Qt::LinkAction);
        if (!file_ || !offered || IsBlocked(window_)) {
            drag.ignore();
            return true;
        }
        drag.setDropAction(offered & Qt::CopyAction ? Qt::CopyAction : Qt::LinkAction);
        drag.accept();
        if (drops) Deliver(*file_);
        return true;
    }

private:
    // Queued: the other program waits for the end of this event, and a game takes its time.
    void Deliver(const std::string& path) {
        QMetaObject::invokeMethod(
            this,
            [this, path] {
                if (!IsBlocked(window_)) window_.TheForm().DeliverFile(path);
            },
            Qt::QueuedConnection);
    }

    FormWindow& window_;
    std::optional<std::string> file_;  // of the drag over this window; nothing if it is refused
};

}  // namespace

void TakeFileDrops(FormWindow& window) { new FileDrops(window); }
