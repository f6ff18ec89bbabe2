// The list of drives and the list of folders.
#include <QComboBox>
#include <QKeyEvent>
#include <QListWidget>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QWheelEvent>

#include "platform/controls/folder_lists.h"
#include "platform/qt/widgets/peer.h"
#include "platform/qt/widgets/place_icons.h"

namespace {

// A turn of the wheel over the closed list is meant for something else.
class DriveBox : public QComboBox {
public:
    using QComboBox::QComboBox;

protected:
    void wheelEvent(QWheelEvent* event) override { event->accept(); }
};

class DriveListPeer : public QtPeer {
public:
    DriveListPeer(DriveListBox& list, QWidget* parent) : QtPeer(list, new DriveBox(parent)), list_(list) {
        Inner().setFont(ControlFont({}));
        // Queued: a choice makes the folder list anew and scans, which is no work for a closing popup.
        QObject::connect(
            &Inner(), &QComboBox::activated, &Inner(),
            [this](int index) {
                list_.DeliverChoice(size_t(index));
                Select();
            },
            Qt::QueuedConnection);
    }

    void Mirror(Aspect aspect) override {
        if (!Widget()) return;
        QtPeer::Mirror(aspect);
        if (aspect == Aspect::Entries) Fill();
        if (aspect == Aspect::Entries || aspect == Aspect::Value) Select();
    }

private:
    QComboBox& Inner() { return static_cast<QComboBox&>(*Widget()); }

    void Fill() {
        Inner().clear();
        for (const auto& volume : list_.Volumes()) {
            Inner().addItem(PlaceIcon(volume.kind, *Inner().style()), ToText(volume.label));
            Inner().setItemData(Inner().count() - 1, PlainTip(ToText(volume.root)), Qt::ToolTipRole);
        }
    }

    void Select() { Inner().setCurrentIndex(list_.Current()); }

    DriveListBox& list_;
};

// A row stands as far to the right as its folder lies deep, its icon with it; the whole row shows the selection.
class IndentDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    static constexpr int DepthRole = Qt::UserRole;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->decorationSize.rwidth() += IndentWidth * index.data(DepthRole).toInt();
        option->decorationAlignment = Qt::AlignRight | Qt::AlignVCenter;
    }

private:
    static constexpr int IndentWidth = 8;
};

class FolderWidget : public QListWidget {
public:
    FolderWidget(DirListBox& list, QWidget* parent) : QListWidget(parent), list_(list) {
        setFont(ControlFont({}));
        setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        setContextMenuPolicy(Qt::PreventContextMenu);
        setItemDelegate(new IndentDelegate(this));
    }

    void Fill() {
        const QSignalBlocker quiet(this);
        clear();
        const QIcon closed = style()->standardIcon(QStyle::SP_DirClosedIcon);
        const QIcon open = style()->standardIcon(QStyle::SP_DirOpenIcon);
        int current = 0;
        for (const auto& entry : list_.Entries()) {
            // The bare name, which is what a typed letter looks for.
            auto* item = new QListWidgetItem(entry.open ? open : closed, ToText(entry.label));
            item->setData(IndentDelegate::DepthRole, entry.depth);
            item->setToolTip(PlainTip(ToText(entry.path)));
            addItem(item);
            if (entry.open) current = count() - 1;
        }
        setCurrentRow(current);
        scrollToItem(item(current));
    }

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override {
        event->accept();
        if (event->button() == Qt::LeftButton) Open(row(itemAt(event->position().toPoint())));
    }

    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            Open(currentRow());
        else
            QListWidget::keyPressEvent(event);
    }

private:
    // Queued: the list is made anew on the way, which this event must not stand in.
    void Open(int index) {
        if (index < 0) return;
        QMetaObject::invokeMethod(
            this, [this, index] { list_.DeliverOpen(size_t(index)); }, Qt::QueuedConnection);
    }

    DirListBox& list_;
};

class DirListPeer : public QtPeer {
public:
    DirListPeer(DirListBox& list, QWidget* parent) : QtPeer(list, new FolderWidget(list, parent)) {}

    void Mirror(Aspect aspect) override {
        if (!Widget()) return;
        QtPeer::Mirror(aspect);
        if (aspect == Aspect::Entries || aspect == Aspect::Value) static_cast<FolderWidget&>(*Widget()).Fill();
    }
};

}  // namespace

std::unique_ptr<QtPeer> MakeDriveListPeer(DriveListBox& list, QWidget* parent) {
    return std::make_unique<DriveListPeer>(list, parent);
}

std::unique_ptr<QtPeer> MakeDirListPeer(DirListBox& list, QWidget* parent) {
    return std::make_unique<DirListPeer>(list, parent);
}
