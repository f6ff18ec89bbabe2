// Paths, the program's one listing, and what may be opened.
#include "platform/system/files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/headless/desktop.h"
#include "tests/support/temp_folder.h"

namespace {

using testing::ElementsAre;

std::vector<std::string> RestOfListing() {
    std::vector<std::string> names;
    for (auto name = NextEntry(); name && !name->empty(); name = NextEntry()) names.push_back(*name);
    return names;
}

TEST(Paths, AreTakenApartAndPutTogether) {
    struct Case {
        const char *path, *folder, *title, *closed;
    };
    const Case cases[] = {{"/a/b.pzl", "/a", "b.pzl", "/a/b.pzl/"},
                          {"/b", "/", "b", "/b/"},
                          {"b", "", "b", "b/"},
                          {"/a/b//", "/a/b", "", "/a/b/"},
                          {"/", "/", "", "/"},
                          {"", "", "", "/"},
                          {"/a//b", "/a", "b", "/a//b/"},
                          {"C:\\x\\y", "", "y", "C:\\x\\y/"}};
    for (const Case& c : cases) {
        EXPECT_EQ(FolderOf(c.path), c.folder) << c.path;
        EXPECT_EQ(FileTitle(c.path), c.title) << c.path;
        EXPECT_EQ(WithSeparator(c.path), c.closed) << c.path;
    }
}

TEST(Listing, GivesDotsFirstThenFilesAndFoldersButNothingHidden) {
    TempFolder folder;
    for (const char* name : {"a.bmp", ".hidden", "\xFF\xFE.jpg"}) folder.Write(name, "");
    folder.MakeFolder("ferias.jpg");
    EXPECT_EQ(FirstEntry(folder.WithSlash()), ".");
    EXPECT_EQ(NextEntry(), "..");
    EXPECT_THAT(RestOfListing(), testing::UnorderedElementsAre("a.bmp", "ferias.jpg", "\xFF\xFE.jpg"));
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

TEST(FindIgnoringCase, PrefersTheExactSpelling) {
    TempFolder folder;
    folder.MakeFolder("IMAGENS");
    EXPECT_EQ(FindIgnoringCase(folder.WithSlash(), "Imagens"), folder / "IMAGENS");
    folder.MakeFolder("imagens");
    folder.MakeFolder("Imagens");
    EXPECT_EQ(FindIgnoringCase(folder.Path(), "Imagens"), folder / "Imagens");
    EXPECT_EQ(FindIgnoringCase(folder.Path(), "Imagem"), std::nullopt);
}

TEST(Files, KindsAreToldApartAndAFifoNeverBlocks) {
    TempFolder folder;
    const std::string fifo = folder / "fifo.jpg", link = folder / "link";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    std::filesystem::create_symlink("file", link);
    struct Case {
        std::string path;
        bool folderExists, fileExists, regular;
        std::optional<int64_t> length;
        std::optional<std::string> content;
    };
    const Case cases[] = {
        {folder.Write("file", "bytes"), false, true, true, 5, "bytes"},
        {link, false, true, true, 5, "bytes"},
        {folder.MakeFolder("ferias.jpg"), true, false, false, 0, {}},
        {fifo, false, true, false, 0, {}},
        {"/dev/zero", false, true, false, 0, {}},
        {folder / "missing", false, false, false, {}, {}},
        {folder / "file/below", false, false, false, {}, {}},
        {"", false, false, false, {}, {}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(FolderExists(c.path), c.folderExists) << c.path;
        EXPECT_EQ(FileExists(c.path), c.fileExists) << c.path;
        EXPECT_EQ(IsRegularFile(c.path), c.regular) << c.path;
        EXPECT_EQ(FileLen(c.path), c.length) << c.path;
        EXPECT_EQ(ReadFile(c.path), c.content) << c.path;
    }
    EXPECT_EQ(ReadFile(folder / "file", 5), "bytes");
    EXPECT_EQ(ReadFile(folder / "file", 4), std::nullopt);
}

TEST(LoadPicture, NothingButARegularFileReachesTheDesktop) {
    TempFolder folder;
    HeadlessDesktop desktop;
    const std::string fifo = folder / "fifo.bmp", inner = folder.MakeFolder("folder.bmp");
    const std::string file = folder.Write("file.bmp", "");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {fifo, inner, file})
        desktop.pictures[path] = {{4, 3}, [](Size) { return Surface(4, 3); }};
    for (const std::string& path : {fifo, inner}) EXPECT_FALSE(PictureSize(path) || LoadPicture(path)) << path;
    EXPECT_EQ(PictureSize(file), (Size{4, 3}));
    EXPECT_TRUE(LoadPicture(file));
}

}  // namespace
