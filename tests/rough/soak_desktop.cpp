// Boxes, dialogs, modal windows and yields, as the player without patience meets them.
#include "tests/rough/soak_player.h"

void SoakDesktop::DoEvents(Yield yield) {
    ++depth_;
    HeadlessDesktop::DoEvents(yield);
    --depth_;
    std::vector<std::function<void()>> turns;
    turns.swap(waiting_);
    for (const auto& turn : turns) turn();
    if (yield == Yield::Everything && onYield) onYield();
}

// The form gets its events one by one; at last it is closed, so that every dialog ends.
void SoakDesktop::RunModal(Form& form) {
    modals_.push_back({++lastModal_, &form});
    PostTurn(form, lastModal_, modalEvents());
    HeadlessDesktop::RunModal(form);
    modals_.pop_back();
    modalTrouble.clear();
}

// A turn that comes up within a yield waits for the yield's end: what happens within is onYield's.
void SoakDesktop::PostTurn(Form& form, int number, int left) {
    Post([this, &form, number, left] {
        // A form whose number is not on top is gone, or blocked by another one.
        if (modals_.empty() || modals_.back().number != number || !form.IsShown()) return;
        if (depth_ > 0) {
            waiting_.push_back([this, &form, number, left] { PostTurn(form, number, left); });
            return;
        }
        if (left == 0) return form.DeliverClose();
        onModal(form);
        PostTurn(form, number, left - 1);
    });
}

MsgBoxResult SoakDesktop::MsgBox(const std::string& text, int style, const std::string& title) {
    beforeAnswer();
    return HeadlessDesktop::MsgBox(text, style, title);
}

std::optional<std::string> SoakDesktop::FileDialog(FileDialogRequest& request) {
    beforeAnswer();
    return HeadlessDesktop::FileDialog(request);
}
