// A desktop that counts the program's yields and lets a test act in any of them, or once a
// dialog stands with its activation done.
#pragma once
#include "core/game_state.h"
#include "platform/headless/desktop.h"
#include "tests/support/picture_files.h"

class YieldingDesktop : public HeadlessDesktop {
public:
    explicit YieldingDesktop(Size screen = {1366, 768}) : HeadlessDesktop(screen) { PuzzleModule::ResetState(); }

    int yields = 0;
    std::function<void(int yield)> onYield;

    void DoEvents(Yield yield) override {
        HeadlessDesktop::DoEvents(yield);
        const int number = ++yields;
        if (onYield) onYield(number);
    }

    std::function<void(Form&)> whenStanding;
    void RunModal(Form& form) override {
        form.OnActivate = [this, &form, activate = form.OnActivate, stands = false]() mutable {
            if (activate) activate();
            if (whenStanding && form.IsShown() && !std::exchange(stands, true))
                Post([this, &form] { whenStanding(form); });
        };
        HeadlessDesktop::RunModal(form);
    }

    // A picture whose decoding takes so long; its file need not exist.
    void Add(const std::string& path, Size natural, double seconds = 0) {
        pictures[path] = {natural, [this, seconds](Size size) { return Advance(seconds), PatternSurface(size); }};
    }
};
