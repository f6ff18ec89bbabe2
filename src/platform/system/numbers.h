// Rounding and narrowing, the way the game's arithmetic wants it.
//
// Game numbers are stored in 16 or 32 bits. Compute in `int` or `double`, narrow
// once, at the store, with the helper that names the rounding. A value that does
// not fit is a failed step: the field keeps what it held, nothing ever wraps.
#pragma once
#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>

// Twips are 1/1440 inch; a pixel at 96 dots per inch is 15 of them.
inline constexpr int TwipsPerPixel = 15;

// Stored booleans.
inline constexpr int16_t False = 0;
inline constexpr int16_t True = -1;

// Nearest whole number, a tie going to the even neighbour. NaN stays NaN.
// Written out so that it does not depend on the floating-point environment.
double CInt(double value);

// Fraction cut off, towards zero.
inline double Fix(double value) { return std::trunc(value); }

// Largest whole number not above `value`.
inline double Int(double value) { return std::floor(value); }

// `value` rounded by CInt as a T, or nothing if it lies outside T or is NaN.
template <std::signed_integral T>
std::optional<T> Narrow(double value) {
    const double whole = CInt(value);
    if (!(whole >= double(std::numeric_limits<T>::min()) && whole <= double(std::numeric_limits<T>::max())))
        return std::nullopt;
    return T(whole);
}
inline std::optional<int16_t> CInt16(double value) { return Narrow<int16_t>(value); }
inline std::optional<int32_t> CInt32(double value) { return Narrow<int32_t>(value); }

// Stores `value`, rounded by CInt, in `field`. False, and `field` unchanged, if
// it does not fit.
template <std::signed_integral T>
bool Store(T& field, double value) {
    const std::optional<T> narrowed = Narrow<T>(value);
    if (narrowed) field = *narrowed;
    return narrowed.has_value();
}
