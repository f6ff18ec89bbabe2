// What all controls share: a name, a place in a container, whether they are shown
// and enabled, and the peer that mirrors them.
//
// Lengths are in the scale of the container (pixels or twips); a top-level form's
// are twips. Controls are members of their form or composite control: containers
// know their children but do not own them. A control without a peer is just as
// real: its rules run the same.
#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/controls/peer.h"
#include "platform/drawing/geometry.h"
#include "platform/system/color.h"

class Form;

enum class ScaleMode { Pixels, Twips };
enum class Border { None, Single, Thin };

// Mouse events: Button 1 left, 2 right, 4 middle, 8 to 16384 further ones; Shift 1 Shift,
// 2 Ctrl, 4 Alt; X, Y in the pixels of the surface that took the press.
using MouseHandler = std::function<void(int16_t Button, int16_t Shift, float X, float Y)>;
using Handler = std::function<void()>;

// A turn of the wheel or a sweep over a touchpad: positive towards the left and the top, as a wheel is
// turned away from the player. In notches of a wheel, whole or in parts, or in pixels where the device
// tells them.
struct WheelTurn {
    enum class Unit { Notches, Pixels };
    double x = 0, y = 0;
    Unit unit = Unit::Notches;
};
using WheelHandler = std::function<void(const WheelTurn& turn)>;

enum class MousePointer : int16_t { Default = 0, Arrow = 1, Hourglass = 11, Hand = 99 };

struct Font {
    double points = 8.25;
    bool bold = false;
    bool underline = false;
    bool operator==(const Font&) const = default;
};

class Control {
public:
    explicit Control(std::string name, ScaleMode inner = ScaleMode::Pixels);
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    const std::string& Name() const { return name_; }

    // What a screen reader says of this control, where its text does not tell.
    void SetAccessibleName(std::string text);
    const std::string& AccessibleName() const { return accessibleName_; }

    // The tree. Children stand back to front; a child leaves its container when it dies.
    void AddChild(Control& child);
    void RemoveChild(Control& child);
    Control* Parent() const { return parent_; }
    const std::vector<Control*>& Children() const { return children_; }
    Form* OwnerForm();  // the form at the root, or nullptr
    void ZOrder();      // to the front of its container

    // Geometry, in the container's scale. Negative widths and heights are refused.
    double Left() const { return left_; }
    double Top() const { return top_; }
    double Width() const { return width_; }
    double Height() const { return height_; }
    void SetLeft(double value);
    void SetTop(double value);
    bool SetWidth(double value);
    bool SetHeight(double value);
    void Move(double left, double top);
    bool Place(double left, double top, double width, double height);

    // The scale in which the children of this control are placed.
    ScaleMode InnerScale() const { return inner_; }
    // The same place in whole pixels, relative to the container.
    virtual Rect PixelRect() const;

    bool Visible() const { return visible_; }
    void SetVisible(bool value);
    bool Enabled() const { return enabled_; }
    void SetEnabled(bool value);

    MousePointer Pointer() const { return pointer_; }
    void SetPointer(MousePointer pointer);

    int TabIndex() const { return tabIndex_; }  // -1: not in the tab order
    void SetTabIndex(int index) { tabIndex_ = index; }

    // The peer of a control appears with that of its form and goes with it.
    void AttachPeer(std::unique_ptr<Peer> peer) { peer_ = std::move(peer); }
    Peer* GetPeer() const { return peer_.get(); }

protected:
    // Called after Width or Height took another value.
    virtual void Resized() {}
    // Called after the control came into a container, whose scale counts from now on.
    virtual void Adopted() {}
    // Place without a word to the peer, for what the desktop itself has done.
    bool PlaceQuietly(double left, double top, double width, double height);
    double ContainerUnitsPerPixel() const;
    // Peers of this control and all below it: containers before their children, children
    // back to front; away again in the opposite order.
    void CreatePeers();
    void DropPeers();
    void Tell(Aspect aspect) {
        if (peer_) peer_->Mirror(aspect);
    }

private:
    bool Settle(double left, double top, double width, double height, bool tell);

    std::string name_, accessibleName_;
    ScaleMode inner_;
    Control* parent_ = nullptr;
    std::vector<Control*> children_;
    double left_ = 0, top_ = 0, width_ = 0, height_ = 0;
    bool visible_ = true, enabled_ = true;
    MousePointer pointer_ = MousePointer::Default;
    int tabIndex_ = -1;
    std::unique_ptr<Peer> peer_;
};

// Edges are rounded, not sizes, so that what touches in the container's units touches in
// pixels too. A half goes right and down.
Rect ToPixelRect(double left, double top, double width, double height, double unitsPerPixel);

// False if the control, a container of it or its form is disabled or hidden, or the form
// unloaded: nothing the player does arrives then.
bool AcceptsInput(Control& control);

// Runs a handler for something the player did: keeps the form alive until the handler has
// returned, and drops the call unless the control accepts input.
void Raise(Control& control, const Handler& handler);

// The same for something the program itself did, such as a new Value of a bar: runs in any state.
void RaiseFromProgram(Control& control, const Handler& handler);
