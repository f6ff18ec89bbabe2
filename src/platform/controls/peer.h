// The mirror image of one control on a desktop. A control owns its state and its
// rules; its peer only shows them and brings the player's actions in.
#pragma once
#include "platform/drawing/geometry.h"

// What has changed in a control. A peer reads the new value from the control.
enum class Aspect {
    Geometry,  // Left, Top, Width, Height, or the inner scale
    Visible,
    Enabled,
    Order,    // brought to the front
    Text,     // Caption
    Look,     // colours, font, alignment, border, pointer
    Content,  // an image's picture, a form's backdrop
    Range,    // Min, Max, SmallChange, LargeChange of a bar
    Value,    // a bar's Value, a check mark, a list's current entry
    Entries,  // what a list shows
    Outline,  // a form's shape
    State,    // a form's WindowState
};

class Peer {
public:
    virtual ~Peer() = default;

    // Shows the new state. Never calls back into the control (no echo).
    virtual void Mirror(Aspect aspect) = 0;

    // Brings rectangles of a picture box's image to the screen, at the next paint.
    virtual void Repaint(const Region& /*damage*/) {}
};
