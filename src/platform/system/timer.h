// A repeating timer on the message loop. It keeps no more than one tick waiting: ticks
// that fall due while the program is busy come as one. A handler that yields is not
// called again before it has returned.
#pragma once
#include <cstdint>
#include <functional>
#include <string>

class Timer {
public:
    explicit Timer(std::string name, int32_t interval = 0) : name_(std::move(name)), interval_(interval) {}
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    const std::string& Name() const { return name_; }
    int32_t Interval() const { return interval_; }  // milliseconds; 0 never ticks
    void SetInterval(int32_t milliseconds);
    bool Enabled() const { return enabled_; }
    // Enabling an enabled timer changes nothing; enabling a disabled one starts a whole interval.
    void SetEnabled(bool value);

    std::function<void()> Tick;

    // The way in for a backend.
    void DeliverTick() {
        if (enabled_ && Tick) Tick();
    }

private:
    void Announce();
    std::string name_;
    int32_t interval_;
    bool enabled_ = false;
};
