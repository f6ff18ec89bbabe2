// A window of real widgets as text: a line for each control, menu item and row, with all in which it differs from a
// plain widget. Nothing that hangs on the machine's fonts.
#pragma once
#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QGuiApplication>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>

#include "platform/controls/simple_controls.h"
#include "platform/qt/widgets/form_window.h"
#include "platform/qt/widgets/peer.h"

inline QString Described(const QVariant& value) {
    return value.typeId() == QMetaType::QString ? "\"" + value.toString() + "\"" : QString::number(value.toInt());
}

inline QString Described(const QRect& r) {
    return QString(" %1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

// The properties in which `object` differs from `plain`, for menus and dialogs too.
inline QString Properties(const QObject& object, const QObject& plain = QWidget()) {
    QString text;
    for (const char* name : {"text",
                             "title",
                             "windowTitle",
                             "accessibleName",
                             "toolTip",
                             "enabled",
                             "checkable",
                             "checked",
                             "focusPolicy",
                             "contextMenuPolicy",
                             "mouseTracking",
                             "acceptDrops",
                             "windowModality",
                             "minimum",
                             "maximum",
                             "value",
                             "singleStep",
                             "pageStep",
                             "orientation",
                             "autoDefault",
                             "default",
                             "textFormat",
                             "horizontalScrollBarPolicy",
                             "currentIndex"})
        if (const QVariant value = object.property(name); value.isValid() && value != plain.property(name))
            text += QString(" %1=%2").arg(name, Described(value));
    return text;
}

// `home` stands for a folder whose name is another each time; rows of a list outside it are left out.
class WidgetDump {
public:
    explicit WidgetDump(const std::string& home = "/") : home_(ToText(home)) {}

    std::string Of(const Form& form) {
        FormWindow& window = *FormWindow::Of(form);
        const QPoint corner = QGuiApplication::primaryScreen()->geometry().topLeft();
        const QRect place = window.geometry().translated(-corner);
        const auto* bar = window.findChild<QMenuBar*>();  // of a height that hangs on its font
        Line(0, "window" + Described(bar ? QRect(place.x(), place.bottom() + 1, place.width(), 0) : place) +
                    (window.minimumSize() == window.maximumSize() ? " fixed" : "") +
                    QString(" flags %1").arg(uint(window.windowFlags()), 0, 16) + Properties(window));
        Line(0, "mask" + Described(window.mask().boundingRect()) + QString(" of %1").arg(window.mask().rectCount()));
        if (!form.Children().empty()) Below(form, 1);
        if (bar) Menu(bar->actions(), 1);
        QString tabs = "tabs";
        for (const QWidget* at = window.nextInFocusChain(); at != &window; at = at->nextInFocusChain())
            if ((at->focusPolicy() & Qt::TabFocus) && !at->objectName().startsWith("qt_"))
                tabs += " " + at->objectName();
        Line(0, tabs + (window.focusWidget() ? ", now " + window.focusWidget()->objectName() : ""));
        return std::exchange(text_, {}).toStdString();
    }

private:
    void Line(int depth, QString words) {
        text_ += QString(2 * depth, ' ') + words.replace(home_, "~").replace("\n", "\\n") + "\n";
    }

    void Below(const Control& control, int depth) {
        for (const Control* child : control.Children()) {
            const QtPeer* peer = PeerOf(*child);
            if (peer && peer->Widget()) Widget(*child, *peer->Widget(), *peer->Content(), depth);
            Below(*child, depth + 1);
        }
    }

    void Widget(const Control& control, QWidget& widget, QWidget& content, int depth) {
        const auto* label = dynamic_cast<const Label*>(&control);
        const bool fitted = label && label->Look().autoSize;  // to its text, as wide as the font makes it
        QString words = widget.objectName() +
                        (fitted ? QString(" at %1").arg(widget.y()) : Described(widget.geometry())) +
                        (widget.isHidden() ? " hidden" : "");
        if (&content != &widget) words += " inside" + Described(content.geometry()) + Properties(content);
        if (const QFont font = widget.font(); font.pixelSize() > 0)
            words +=
                QString(" font %1%2%3").arg(font.pixelSize()).arg(font.bold() ? "b" : "", font.underline() ? "u" : "");
        if (widget.testAttribute(Qt::WA_SetCursor)) words += QString(" pointer %1").arg(int(widget.cursor().shape()));
        if (!content.testAttribute(Qt::WA_NoMousePropagation)) words += " lets presses through";
        const QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(&widget);
        if (heard && !heard->text(QAccessible::Name).isEmpty())
            words += " heard \"" + heard->text(QAccessible::Name) + "\"";
        Line(depth, words + Properties(widget));
        if (auto* box = dynamic_cast<QComboBox*>(&widget))
            for (int i = 0; i < box->count(); ++i)
                Line(depth + 1, box->itemText(i) + " (" + box->itemData(i, Qt::ToolTipRole).toString() + ")" +
                                    (box->itemIcon(i).isNull() ? "" : " icon"));
        if (auto* list = dynamic_cast<QListWidget*>(&widget)) Rows(*list, depth + 1);
    }

    void Rows(const QListWidget& list, int depth) {
        int root = -1;
        for (int i = 0; i < list.count(); ++i) {
            const QListWidgetItem& row = *list.item(i);
            if (!row.toolTip().contains(home_)) continue;
            if (root < 0)
                root = row.data(Qt::UserRole).toInt() - 1;
            else
                Line(depth + row.data(Qt::UserRole).toInt() - root,
                     row.text() + " (" + row.toolTip() + ")" + (&row == list.currentItem() ? " chosen" : ""));
        }
    }

    void Menu(const QList<QAction*>& actions, int depth) {
        for (const QAction* action : actions) {
            const QAction plain;
            Line(depth, "item" + Properties(*action, plain) + " " + action->shortcut().toString());
            if (action->menu()) Menu(action->menu()->actions(), depth + 1);
        }
    }

    QString text_;
    const QString home_;
};
