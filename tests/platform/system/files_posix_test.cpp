// Paths, files and homes where there is one root and names are bytes.
#include <gtest/gtest.h>

#include "platform/system/files.h"
#include "platform/system/user_settings.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temp_folder.h"

namespace {

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
    const std::string fifo = folder.MakeFifo("fifo.jpg"), link = folder / "link";
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

TEST(UserSettings, HomesFollowTheirVariablesUnlessRelative) {
    const ScopedVariable home("HOME", "/home/ana"), config("XDG_CONFIG_HOME", "relative"),
        data("XDG_DATA_HOME", "/data/");
    EXPECT_EQ(ConfigurationHome(), "/home/ana/.config");
    EXPECT_EQ(DataHome(), "/data");
}

}  // namespace
