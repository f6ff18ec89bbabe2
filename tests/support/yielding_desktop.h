// A desktop that counts the program's yields and lets a test act in any of them, or once a
// dialog stands with its activation done.
#pragma once
#include "core/game_state.h"
#include "platform/headless/desktop.h"
#include "tests/support/picture_files.h"

class YieldingDesktop : public HeadlessDesktop {
public:
    YieldingDesktop() { PuzzleModule::ResetState(); }

    int yields = 0;
    std::function<void(int yield)> onYield;

    void DoEvents(Yield yield) override {
        HeadlessDesktop::DoEvents(yield);
        const int number = ++yields;
        if (onYield) onYield(number);
    }

    std::function<void(Form&)> whenStanding;
    void RunModal(Form& form) override {
        form.OnActivate = [this, &form, activate = form.OnActivate] {
            activate();
            if (whenStanding && form.IsShown()) Post([this, &form] { whenStanding(form); });
        };
        HeadlessDesktop::RunModal(form);
    }

    // A picture without a file.
    void Add(const std::string& path, Size natural) {
        pictures[path] = {natural, [](Size size) { return PatternSurface(size); }};
    }
};
