// Rounding at ties and at the ends of the types.
#include "platform/system/numbers.h"

#include <gtest/gtest.h>

#include <cfenv>
#include <vector>

namespace {

constexpr double Infinite = std::numeric_limits<double>::infinity();

TEST(CInt, GoesToTheNearestAndAtATieToTheEven) {
    const double justBelowHalf = std::nextafter(0.5, 0.0);
    constexpr double large = 4503599627370495.5;  // the largest tie a double can hold
    const std::pair<double, std::vector<double>> cases[] = {{0, {0.5, -0.5, 0.4, justBelowHalf, -justBelowHalf}},
                                                            {2, {1.5, 2.5}},
                                                            {-2, {-1.5, -2.5}},
                                                            {1, {0.6}},
                                                            {-1, {-0.6}},
                                                            {32766, {32766.5}},
                                                            {32768, {32767.5}},
                                                            {large + 0.5, {large}},
                                                            {-large - 0.5, {-large}},
                                                            {1e300, {1e300}},
                                                            {Infinite, {Infinite}}};
    for (const int mode : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        std::fesetround(mode);
        for (const auto& [expected, values] : cases)
            for (const double value : values) EXPECT_EQ(CInt(value), expected) << value << " in mode " << mode;
    }
    std::fesetround(FE_TONEAREST);
    EXPECT_TRUE(std::isnan(CInt(std::nan(""))));
}

TEST(Store, KeepsTheFieldWhereTheValueDoesNotFit) {
    const std::pair<double, std::optional<int16_t>> cases[] = {{32767.49, 32767},  {32767.5, {}},  {-32768.5, -32768},
                                                               {-32768.51, {}},    {Infinite, {}}, {-Infinite, {}},
                                                               {std::nan(""), {}}, {-0.2, 0}};
    for (const auto& [value, expected] : cases) {
        int16_t field = 77;
        EXPECT_EQ(Store(field, value), expected.has_value()) << value;
        EXPECT_EQ(field, expected.value_or(77)) << value;
    }
    EXPECT_EQ(CInt32(2147483647.5), std::nullopt);
    EXPECT_EQ(CInt32(-2147483648.5), std::numeric_limits<int32_t>::min());
}

}  // namespace
