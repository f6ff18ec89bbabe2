// The string routines at their edges.
#include "shell/text_helpers.h"

#include <gmock/gmock.h>

using testing::ElementsAreArray;

TEST(Replace, SearchesWhatItPutInAndNeverRunsForEver) {
    const std::string nul(1, '\0');
    const struct {
        std::string text, find, with, expected;
    } cases[] = {
        {"aab", "ab", "b", "b"},  // the text put in completes a further one
        {"a|b|", "|", nul, "a" + nul + "b" + nul},
        {"abc", "b", "", "ac"},
        {"aXbX", "X", "YYY", "aYYYbYYY"},  // grows, but ends
        {"aaaaab", "ab", "bba", std::string(32, 'b') + "aaaaa"},
        {"abc", "B", "x", "abc"},  // case counts
        {"abc", "", "x", "abc"},
        {"abc", "b", "abba", "abc"},   // would never end
        {"aab", "ab", "bbaa", "aab"},  // nor would this, though what is put in holds no "ab"
        {"", "a", "b", ""},
    };
    for (const auto& c : cases) EXPECT_EQ(vb5::Replace(c.text, c.find, c.with), c.expected) << c.text << " " << c.find;
}

TEST(FieldAt, ClosesTheCallersTextAndCountsFieldsFromOne) {
    const struct {
        std::string text;
        int16_t index;
        std::string field, textAfter;
    } cases[] = {{"a,b", 1, "a", ",a,b,"},  {"a,b", 2, "b", ",a,b,"}, {",a", 1, "a", ",a,"},
                 {"a,,b", 2, "", ",a,,b,"}, {"a,b", 3, "", ",a,b,"},  {"a,b", 9, "", ",a,b,"},
                 {",", 1, "", ","},         {"", 1, "", ","},         {"a,b", 32767, "", ",a,b,"}};
    for (const auto& c : cases) {
        std::string text = c.text;
        EXPECT_EQ(vb5::FieldAt(text, ",", c.index), c.field) << c.text << " " << c.index;
        EXPECT_EQ(text, c.textAfter);
    }
}

TEST(Split, KeepsATrailingFieldDropsALeadingOneAndStopsAtTheMarker) {
    using Fields = std::vector<std::string>;
    const struct {
        std::string text, delimiter;
        Fields fields;
    } cases[] = {{"a,b", ",", {"a", "b"}},
                 {"a,b,", ",", {"a", "b", ""}},
                 {",a", ",", {"a"}},
                 {",,a", ",", {"", "a"}},
                 {"", ",", {}},
                 {"a", ",", {"a"}},
                 {"a--b", "--", {"a", "b"}},
                 {"abc", "", {}},
                 {"a,/#(!a53x,b", ",", {"a"}},
                 {"xa!yb", "!", {"xa", "yb"}}};  // the last delimiter stands in the marker
    for (const auto& c : cases) EXPECT_THAT(vb5::Split(c.text, c.delimiter), ElementsAreArray(c.fields)) << c.text;
    // A delimiter that overlaps itself hides the marker; the walk still ends.
    EXPECT_EQ(vb5::Split("xa", "aa").at(0), "x");
}
