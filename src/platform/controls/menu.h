// A menu bar as a tree of items.
#pragma once
#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "platform/controls/peer.h"

class Form;

struct Shortcut {
    char key = 0;      // upper-case letter; 0 if none or a function key
    int function = 0;  // 1 for F1 and so on
    bool control = false;
    bool operator==(const Shortcut&) const = default;
};

// A caption "-" makes a separator. An item with sub-items opens a submenu.
class MenuItem {
public:
    explicit MenuItem(std::string name = {}, std::string caption = {}, Shortcut shortcut = {});
    MenuItem(const MenuItem&) = delete;
    MenuItem& operator=(const MenuItem&) = delete;

    MenuItem& Add(std::string name, std::string caption, Shortcut shortcut = {});

    const std::string& Name() const { return name_; }
    const std::string& Caption() const { return caption_; }
    const Shortcut& Key() const { return shortcut_; }
    std::deque<MenuItem>& Items() { return items_; }
    bool IsSeparator() const { return caption_ == "-"; }

    bool Enabled() const { return enabled_; }
    void SetEnabled(bool value);
    bool Checkable() const { return checkable_; }
    bool Checked() const { return checked_; }
    void SetChecked(bool value);  // makes the item checkable

    // Of an item with sub-items: runs when its menu opens, after the form's OnMenu. Of any other: the command.
    std::function<void()> Click;

    // The way in for a backend: the menu opens, or the item is chosen by mouse, key or
    // shortcut. A disabled item does nothing.
    void DeliverClick();

    void AttachPeer(std::unique_ptr<Peer> peer) { peer_ = std::move(peer); }
    Peer* GetPeer() const { return peer_.get(); }
    void SetForm(Form* form);  // for the whole tree below; the form that runs the handlers

private:
    std::string name_, caption_;
    Shortcut shortcut_;
    std::deque<MenuItem> items_;
    bool enabled_ = true, checkable_ = false, checked_ = false;
    Form* form_ = nullptr;
    std::unique_ptr<Peer> peer_;
};
