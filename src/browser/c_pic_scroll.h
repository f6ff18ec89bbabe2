// Sets up a pair of scroll bars for a picture larger than its view.
#pragma once
#include <cstdint>

class ScrollBar;

class cPicScroll {
public:
    // `H_SB` may be nullptr. Each step that fails leaves its property and the next one runs.
    void SetUpScrollBars(ScrollBar* H_SB, ScrollBar& V_SB, int32_t lVer_MaxLen, int16_t iVer_SmallChange,
                         int32_t lVer_LargeChange, int32_t lHor_MaxLen, int16_t iHor_SmallChange,
                         int32_t lHor_LargeChange);
};
