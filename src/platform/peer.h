// The mirror image of one control on a desktop. A control owns its state and its
// rules; its peer only shows them and brings the player's actions in.
#pragma once
#include "platform/geometry.h"

// Scoped names below are also names of types; GCC takes that for shadowing.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"
#endif
// What has changed in a control. A peer reads the new value from the control.
enum class Aspect {
    Geometry,  // Left, Top, Width, Height, or the inner scale
    Visible,
    Enabled,
    Order,    // brought to the front
    Text,     // Caption
    Look,     // colours, font, alignment, border, pointer
    Picture,  // an image's picture
    Range,    // Min, Max, SmallChange, LargeChange of a bar
    Value,    // a bar's Value, a check mark, a list's current entry
    Entries,  // what a list shows
    Region,   // a form's shape
    State,    // a form's WindowState
};
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif

class Peer {
public:
    virtual ~Peer() = default;

    // Shows the new state. Never calls back into the control (no echo).
    virtual void Mirror(Aspect aspect) = 0;

    // Brings rectangles of a picture box's image to the screen, at the next paint.
    virtual void Repaint(const Region& /*damage*/) {}
};
