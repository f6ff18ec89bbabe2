// The tree of controls, their places, and the way events go to their handlers.
#include "platform/controls/control.h"

#include <cmath>

#include "platform/controls/form.h"
#include "platform/controls/window_system.h"
#include "platform/system/numbers.h"

Control::Control(std::string name, ScaleMode inner) : name_(std::move(name)), inner_(inner) {}

Control::~Control() {
    for (Control* child : children_) child->parent_ = nullptr;
    if (parent_) parent_->RemoveChild(*this);
}

void Control::SetAccessibleName(std::string text) {
    if (text == accessibleName_) return;
    accessibleName_ = std::move(text);
    Tell(Aspect::Text);
}

void Control::AddChild(Control& child) {
    if (child.parent_) child.parent_->RemoveChild(child);
    children_.push_back(&child);
    child.parent_ = this;
    child.Adopted();
    const Form* form = OwnerForm();
    if (form && form->IsLoaded() && !form->IsUnloaded()) child.CreatePeers();
}

void Control::RemoveChild(Control& child) {
    if (child.parent_ != this) return;
    child.DropPeers();
    std::erase(children_, &child);
    child.parent_ = nullptr;
}

Form* Control::OwnerForm() {
    Control* root = this;
    while (root->parent_) root = root->parent_;
    return dynamic_cast<Form*>(root);
}

void Control::ZOrder() {
    if (!parent_ || parent_->children_.back() == this) return;
    std::erase(parent_->children_, this);
    parent_->children_.push_back(this);
    Tell(Aspect::Order);
}

void Control::SetLeft(double value) { Settle(value, top_, width_, height_, true); }
void Control::SetTop(double value) { Settle(left_, value, width_, height_, true); }
bool Control::SetWidth(double value) { return Settle(left_, top_, value, height_, true); }
bool Control::SetHeight(double value) { return Settle(left_, top_, width_, value, true); }
void Control::Move(double left, double top) { Settle(left, top, width_, height_, true); }

bool Control::Place(double left, double top, double width, double height) {
    return Settle(left, top, width, height, true);
}

bool Control::PlaceQuietly(double left, double top, double width, double height) {
    return Settle(left, top, width, height, false);
}

// The peer hears first: what Resized sets off (a layout, a yield) finds the new place on the screen.
bool Control::Settle(double left, double top, double width, double height, bool tell) {
    if (!std::isfinite(left) || !std::isfinite(top) || !std::isfinite(width) || !std::isfinite(height)) return false;
    if (width < 0 || height < 0) return false;
    const bool resized = width != width_ || height != height_;
    if (!resized && left == left_ && top == top_) return true;
    left_ = left;
    top_ = top;
    width_ = width;
    height_ = height;
    if (tell) Tell(Aspect::Geometry);
    if (resized) Resized();
    return true;
}

double Control::ContainerUnitsPerPixel() const {
    return parent_ && parent_->inner_ == ScaleMode::Twips ? double(TwipsPerPixel) : 1.0;
}

Rect Control::PixelRect() const { return ToPixelRect(left_, top_, width_, height_, ContainerUnitsPerPixel()); }

void Control::SetVisible(bool value) {
    if (value == visible_) return;
    visible_ = value;
    Tell(Aspect::Visible);
}

void Control::SetEnabled(bool value) {
    if (value == enabled_) return;
    enabled_ = value;
    Tell(Aspect::Enabled);
}

void Control::SetPointer(MousePointer pointer) {
    if (pointer == pointer_) return;
    pointer_ = pointer;
    Tell(Aspect::Look);
}

void Control::CreatePeers() {
    if (!HasWindows()) return;
    AttachPeer(TheWindows().CreatePeer(*this));
    for (Control* child : children_) child->CreatePeers();
}

void Control::DropPeers() {
    for (auto child = children_.rbegin(); child != children_.rend(); ++child) (*child)->DropPeers();
    peer_.reset();
}

Rect ToPixelRect(double left, double top, double width, double height, double unitsPerPixel) {
    const auto edge = [unitsPerPixel](double units) { return int(std::floor(units / unitsPerPixel + 0.5)); };
    const int x = edge(left), y = edge(top);
    return {x, y, edge(left + width) - x, edge(top + height) - y};
}

bool AcceptsInput(Control& control) {
    for (const Control* c = &control; c; c = c->Parent())
        if (!c->Enabled() || !c->Visible()) return false;
    const Form* form = control.OwnerForm();
    return !form || (form->IsShown() && !form->IsUnloaded());
}

void Raise(Control& control, const Handler& handler) {
    if (AcceptsInput(control)) RaiseFromProgram(control, handler);
}

void RaiseFromProgram(Control& control, const Handler& handler) {
    if (!handler) return;
    const Form::Running running(control.OwnerForm());
    const Handler run = handler;  // the handler may be bound anew while it runs
    run();
}
