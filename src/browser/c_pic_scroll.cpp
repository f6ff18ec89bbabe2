// The ranges and steps of a pair of scroll bars. The bars refuse what does not fit
// their 16 bits; a refusal leaves that one property as it was.
#include "browser/c_pic_scroll.h"

#include "platform/controls/scroll_bar.h"

void cPicScroll::SetUpScrollBars(ScrollBar* H_SB, ScrollBar& V_SB, int32_t lVer_MaxLen, int16_t iVer_SmallChange,
                                 int32_t lVer_LargeChange, int32_t lHor_MaxLen, int16_t iHor_SmallChange,
                                 int32_t lHor_LargeChange) {
    constexpr int32_t Longest = 32767;
    const bool tooLong = lVer_MaxLen > Longest;

    V_SB.SetMax(tooLong ? Longest : lVer_MaxLen);
    V_SB.SetSmallChange(iVer_SmallChange);
    // The length decides here too: a large step beyond 16 bits on a shorter bar is refused, not limited.
    V_SB.SetLargeChange(tooLong ? Longest : lVer_LargeChange);
    if (H_SB) {
        H_SB->SetMax(lHor_MaxLen);
        H_SB->SetSmallChange(iHor_SmallChange);
        H_SB->SetLargeChange(lHor_LargeChange);
    }
}
