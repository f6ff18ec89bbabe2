// Items of a menu bar.
#include "platform/controls/menu.h"

#include "platform/controls/form.h"

MenuItem::MenuItem(std::string name, std::string caption, Shortcut shortcut)
    : name_(std::move(name)), caption_(std::move(caption)), shortcut_(shortcut) {}

MenuItem& MenuItem::Add(std::string name, std::string caption, Shortcut shortcut) {
    MenuItem& item = items_.emplace_back(std::move(name), std::move(caption), shortcut);
    item.form_ = form_;
    return item;
}

void MenuItem::SetEnabled(bool value) {
    if (value == enabled_) return;
    enabled_ = value;
    if (peer_) peer_->Mirror(Aspect::Enabled);
}

void MenuItem::SetChecked(bool value) {
    if (checkable_ && value == checked_) return;
    checkable_ = true;
    checked_ = value;
    if (peer_) peer_->Mirror(Aspect::Value);
}

void MenuItem::DeliverClick() {
    if (!enabled_ || IsSeparator() || !form_) return;
    if (!items_.empty()) Raise(*form_, form_->OnMenu);
    Raise(*form_, Click);
}

void MenuItem::SetForm(Form* form) {
    form_ = form;
    for (MenuItem& item : items_) item.SetForm(form);
}
