// The program's one listing.
#include "platform/system/files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/temp_folder.h"

namespace {

using std::string_literals::operator""s;
using testing::ElementsAre;

std::vector<std::string> RestOfListing() {
    std::vector<std::string> names;
    for (auto name = NextEntry(); name && !name->empty(); name = NextEntry()) names.push_back(*name);
    return names;
}

TEST(Listing, GivesDotsFirstThenFilesAndFoldersButNothingHidden) {
    TempFolder folder;
    for (const std::string& name : {"a.bmp"s, ".hidden"s, OddName + ".jpg"}) folder.Write(name, "");
    folder.MakeFolder("ferias.jpg");
    EXPECT_EQ(FirstEntry(folder.WithSlash()), ".");
    EXPECT_EQ(NextEntry(), "..");
    EXPECT_THAT(RestOfListing(), testing::UnorderedElementsAre("a.bmp", "ferias.jpg", OddName + ".jpg"));
    EXPECT_EQ(NextEntry(), std::nullopt) << "asking past the end fails";
    EXPECT_EQ(NextEntry(), std::nullopt);
}

TEST(Listing, SecondListingTakesTheCursorFromTheFirst) {
    TempFolder first, second;
    first.Write("first.bmp", "");
    second.Write("second.bmp", "");
    ASSERT_EQ(FirstEntry(first.Path()), ".");
    const uint64_t number = ListingNumber();
    ASSERT_EQ(FirstEntry(second.Path()), ".");
    EXPECT_NE(ListingNumber(), number);
    EXPECT_THAT(RestOfListing(), ElementsAre("..", "second.bmp"));
    EXPECT_EQ(NextEntry(), std::nullopt) << "the first listing does not go on";
}

TEST(Listing, FolderThatCannotBeReadEndsTheListingBefore) {
    TempFolder folder;
    ASSERT_EQ(FirstEntry(folder.Path()), ".");
    EXPECT_EQ(FirstEntry(folder / "missing"), std::nullopt);
    EXPECT_EQ(NextEntry(), std::nullopt);
    EXPECT_EQ(FirstEntry(folder.Write("file", "")), std::nullopt);
}

}  // namespace
