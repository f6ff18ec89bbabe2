// A scroll bar with 16-bit properties. Value lies between Min and Max in either
// order of the two, so Max may be negative.
#pragma once
#include "platform/controls/control.h"

enum class Orientation { Horizontal, Vertical };

class ScrollBar : public Control {
public:
    ScrollBar(std::string name, Orientation orientation) : Control(std::move(name)), orientation_(orientation) {}

    Orientation Direction() const { return orientation_; }
    int16_t Min() const { return min_; }
    int16_t Max() const { return max_; }
    int16_t Value() const { return value_; }
    int16_t SmallChange() const { return smallChange_; }
    int16_t LargeChange() const { return largeChange_; }

    // Each setter takes a number of any size, rounds it by CInt, and refuses
    // (false, nothing changed) what does not fit the property: 16 bits for all, Value
    // between Min and Max, the two steps from 1 up.
    // A new Min or Max that leaves Value outside moves Value to the nearer end and
    // raises Change; a Value that differs from the present one raises Change. A Change
    // handler may set Value again; a chain of such handlers ends after a fixed depth.
    bool SetMin(double value);
    bool SetMax(double value);
    bool SetValue(double value);
    bool SetSmallChange(double value);
    bool SetLargeChange(double value);

    Handler Change;      // Value has changed, by the program or at the end of the player's gesture
    Handler Scroll;      // Value follows the thumb while the player drags it
    WheelHandler Wheel;  // what the wheel does over the bar; without a handler the desktop moves the thumb

    // The way in for a backend. Dragging raises Scroll at each step, and the end of the
    // drag raises Change. Values outside the range come in clipped.
    void DeliverValue(int value, bool dragging);
    void DeliverWheel(const WheelTurn& turn) {
        if (Wheel) Raise(*this, [this, &turn] { Wheel(turn); });
    }

private:
    void MoveValue(int16_t value);
    bool SetEnd(int16_t& end, double value);
    Orientation orientation_;
    int16_t min_ = 0, max_ = 32767, value_ = 0, smallChange_ = 1, largeChange_ = 1;
    bool dragging_ = false;
    int nested_ = 0;  // Change handlers on the stack that a setter has called
};
