// A desktop on Qt without a screen, the same on every machine; its windows as text.
#pragma once
#include <gtest/gtest.h>

#include <QtWidgets>

#include "platform/controls/folder_lists.h"
#include "platform/qt/desktop.h"
#include "platform/qt/widgets/form_window.h"
#include "platform/qt/widgets/peer.h"
#include "tests/support/every_control.h"
#include "tests/support/picture_files.h"
#include "tests/support/temp_folder.h"

class QtFixture : public testing::Test {
protected:
    struct Desktop : QtDesktop {
        std::vector<Volume> Volumes() override {
            return {{"/", "Computador", Volume::Kind::Computer},
                    {"/home/a<b", "Pasta pessoal", Volume::Kind::Home},
                    {"/home/a<b/Fotos", "Minhas imagens", Volume::Kind::Pictures},
                    {"/jogo", "Imagens", Volume::Kind::GamePictures},
                    {"/media/x", "x"}};
        }
    };
    QtFixture() : before_(InstallBackend(&desktop)) {}
    ~QtFixture() override { InstallBackend(before_); }
    static FormWindow& Window(const Form& form) { return *FormWindow::Of(form); }
    static QWidget& On(const Control& control) { return *PeerOf(control)->Content(); }

    // Hands an event to a widget and lets in what follows. Whether the widget took it.
    template <typename Event>
    static bool Give(QWidget& to, Event&& event) {
        QCoreApplication::sendEvent(&to, &event);
        DoEvents();
        return event.isAccepted();
    }

    Desktop desktop;
    const TempFolder folder;

private:
    Backend* before_;
};

// The greatest difference of a colour.
inline int Apart(const QImage& a, const QImage& b) {
    int most = a.size() == b.size() ? 0 : 256;
    for (int i = 0; i < a.sizeInBytes() && most < 256; ++i)
        if (i % 4 < 3) most = std::max(most, std::abs(a.constBits()[i] - b.constBits()[i]));
    return most;
}

// In what an object differs from a plain one. Nothing that hangs on the machine's fonts.
inline QString Differences(const QObject& object, const QObject& plain) {
    QString text;
    for (const QByteArray& name :
         QByteArray("text title windowTitle accessibleName enabled checkable checked shortcut focus focusPolicy "
                    "contextMenuPolicy mouseTracking acceptDrops windowModality minimum maximum value singleStep "
                    "pageStep orientation default textFormat currentIndex")
             .split(' '))
        if (const QVariant value = object.property(name); value.isValid() && value != plain.property(name))
            text += " " + name + "=" + (value.canConvert<QString>() ? value : QVariant(value.toInt())).toString();
    return text;
}
inline QString Described(const QRect& r) {
    return QString("%1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

inline void AddWidgets(const Control& control, const QString& home, State& state) {
    for (const Control* child : control.Children()) {
        AddWidgets(*child, home, state);
        const QtPeer* peer = PeerOf(*child);
        if (!peer || !peer->Widget()) continue;
        QWidget &widget = *peer->Widget(), &content = *peer->Content();
        const auto* label = dynamic_cast<const Label*>(child);
        QString text = label && label->Look().autoSize ? "fitted" : Described(widget.geometry());
        text += (widget.isHidden() ? " hidden" : "") + Differences(widget, QWidget());
        if (&content != &widget) text += " inside " + Described(content.geometry()) + Differences(content, QWidget());
        if (widget.testAttribute(Qt::WA_SetCursor)) text += QString(" pointer %1").arg(int(widget.cursor().shape()));
        if (!content.testAttribute(Qt::WA_NoMousePropagation)) text += " lets presses through";
        if (const QFont font = widget.font(); font.pixelSize() > 0)
            text +=
                QString(" font %1").arg(font.pixelSize()) + (font.bold() ? "b" : "") + (font.underline() ? "u" : "");
        if (const QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(&widget))
            text += " heard " + heard->text(QAccessible::Name);
        if (const auto* box = dynamic_cast<QComboBox*>(&widget))
            for (int i = 0; i < box->count(); ++i)
                text += " | " + box->itemText(i) + " " + box->itemData(i, Qt::ToolTipRole).toString();
        if (const auto* list = dynamic_cast<QListWidget*>(&widget))
            for (int i = 0; i < list->count(); ++i)
                if (const auto& row = *list->item(i); row.toolTip().contains(home + "/"))
                    text += (&row == list->currentItem() ? " | > " : " | ") + row.text() + " " +
                            row.toolTip().replace(home, "~");
        state[FromText(widget.objectName())] = FromText(text);
    }
}

inline void AddMenu(const QList<QAction*>& actions, const std::string& path, State& state) {
    for (const QAction* action : actions) {
        const std::string name = path + " " + std::to_string(actions.indexOf(action));
        state[name] = FromText(Differences(*action, QAction()));
        if (action->menu()) AddMenu(action->menu()->actions(), name, state);
    }
}

// The window of a form, everything in it, and the order of its keys.
inline State AddWindow(const Form& form, const std::string& home, State state = {}) {
    const FormWindow* window = FormWindow::Of(form);
    if (!window) return state;
    const QRect place = window->geometry().translated(-QGuiApplication::primaryScreen()->geometry().topLeft());
    const auto* bar = window->findChild<QMenuBar*>();  // of a height that hangs on its font
    QString text = Described(bar ? QRect(place.x(), place.bottom() + 1, place.width(), 0) : place);
    text += window->minimumSize() == window->maximumSize() ? " fixed" : "";
    text += QString(" flags %1").arg(uint(window->windowFlags()), 0, 16) + (window->isVisible() ? " shown" : "");
    if (FormWindow::Frontmost() == window) text += " in front";
    if (const QWindow* owner = window->windowHandle(); owner && owner->transientParent())
        text += " over " + owner->transientParent()->title();
    text += Differences(*window, QWidget()) + " mask " + Described(window->mask().boundingRect()) + ", keys";
    for (const QWidget* at = window->nextInFocusChain(); at != window; at = at->nextInFocusChain())
        if ((at->focusPolicy() & Qt::TabFocus) && !at->objectName().startsWith("qt_")) text += " " + at->objectName();
    state[form.Name()] = FromText(text);
    AddWidgets(form, ToText(home), state);
    if (bar) AddMenu(bar->actions(), form.Name() + " menu", state);
    return state;
}
