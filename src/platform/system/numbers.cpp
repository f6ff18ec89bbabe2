// Rounding to the nearest whole number, ties to the even neighbour.
#include "platform/system/numbers.h"

double CInt(double value) {
    // From 2^52 on a double is a whole number already; infinities and NaN go the same way.
    constexpr double allWhole = 4503599627370496.0;
    if (!(std::fabs(value) < allWhole)) return value;
    const double below = std::floor(value);
    const double fraction = value - below;  // exact
    if (fraction < 0.5) return below;
    if (fraction > 0.5) return below + 1;
    return std::fmod(below, 2) == 0 ? below : below + 1;
}
