// The menu bar: each item is an action, an item with sub-items a menu.
#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <algorithm>

#include "platform/qt/widgets/form_window.h"
#include "platform/qt/widgets/peer.h"

namespace {

constexpr int ShortcutGap = 18;  // pixels

QKeySequence KeysOf(const Shortcut& shortcut) {
    int key = 0;
    if (shortcut.key) key = Qt::Key_A + (shortcut.key - 'A');
    if (shortcut.function) key = Qt::Key_F1 + (shortcut.function - 1);
    if (key == 0) return {};
    const auto modifiers = shortcut.control ? Qt::ControlModifier : Qt::NoModifier;
    return QKeySequence(QKeyCombination(modifiers, Qt::Key(key)));
}

class MenuPeer : public Peer {
public:
    // `owner`: the menu that holds the item, or nullptr for one in the bar itself.
    MenuPeer(FormWindow& window, MenuItem& item, QMenu* owner) : item_(item) {
        if (!item.Items().empty() || !owner)
            MakeMenu(window, owner);
        else
            MakeAction(*owner);
        Mirror(Aspect::Enabled);
        Mirror(Aspect::Value);
    }

    ~MenuPeer() override {
        if (menu_)
            delete menu_.data();
        else
            delete action_.data();
    }

    QMenu* Menu() const { return menu_; }

    void Mirror(Aspect aspect) override {
        if (!action_) return;
        if (aspect == Aspect::Enabled) action_->setEnabled(item_.Enabled());
        if (aspect == Aspect::Value && item_.Checkable()) {
            action_->setCheckable(true);
            action_->setChecked(item_.Checked());
        }
    }

private:
    void MakeMenu(FormWindow& window, QMenu* owner) {
        menu_ = owner ? owner->addMenu(ToText(item_.Caption())) : window.MenuBar().addMenu(ToText(item_.Caption()));
        action_ = menu_->menuAction();
        QObject::connect(menu_, &QMenu::aboutToShow, menu_, [this] {
            SpreadShortcuts();
            item_.DeliverClick();
        });
    }

    // The toolkit leaves hardly a blank between the longest caption and the shortcuts, which stand at the right.
    void SpreadShortcuts() {
        const auto& items = item_.Items();
        const auto hasKey = [](const MenuItem& item) { return item.Key() != Shortcut{}; };
        if (menu_->minimumWidth() == 0 && std::any_of(items.begin(), items.end(), hasKey))
            menu_->setMinimumWidth(menu_->sizeHint().width() + ShortcutGap);
    }

    void MakeAction(QMenu& owner) {
        if (item_.IsSeparator()) {
            action_ = owner.addSeparator();
            return;
        }
        action_ = owner.addAction(ToText(item_.Caption()));
        action_->setShortcut(KeysOf(item_.Key()));
        QObject::connect(action_, &QAction::triggered, action_, [this] {
            const QPointer<QAction> alive = action_;
            item_.DeliverClick();
            // The action has ticked itself; the item says what counts.
            if (alive && item_.Checkable()) alive->setChecked(item_.Checked());
        });
    }

    MenuItem& item_;
    QPointer<QMenu> menu_;
    QPointer<QAction> action_;
};

// The item of which `item` is a sub-item, at any depth below `root`.
MenuItem* ParentOf(MenuItem& root, const MenuItem& item) {
    for (MenuItem& child : root.Items()) {
        if (&child == &item) return &root;
        if (MenuItem* found = ParentOf(child, item)) return found;
    }
    return nullptr;
}

}  // namespace

std::unique_ptr<Peer> MakeMenuPeer(Form& form, MenuItem& item) {
    FormWindow* window = FormWindow::Of(form);
    MenuItem* parent = ParentOf(form.Menus, item);
    if (!window || !parent) return nullptr;
    const auto* owner = parent == &form.Menus ? nullptr : dynamic_cast<MenuPeer*>(parent->GetPeer());
    return std::make_unique<MenuPeer>(*window, item, owner ? owner->Menu() : nullptr);
}
