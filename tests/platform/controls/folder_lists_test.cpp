// Folder and drive lists on folders of their own.
#include <gmock/gmock.h>

#include "platform/controls/folder_lists.h"
#include "platform/headless/desktop.h"
#include "platform/system/files.h"
#include "tests/support/temp_folder.h"

namespace {

using testing::ElementsAre;

class Lists : public testing::Test {
protected:
    Lists() {
        for (const char* name : {"one/beta", "one/Alpha", "one/.hidden", "one-more"}) temp.MakeFolder(name);
        temp.Write("one/file.txt", "no folder");
        desktop.volumes = {{"/", "root"}, {temp.Path(), "temp"}, {temp / "one", "one"}};
    }
    TempFolder temp;
    HeadlessDesktop desktop;
    int changes = 0;
};

TEST_F(Lists, NormalPathsHaveNoDotsAndNoSpareSeparators) {
    const std::pair<std::string, std::string> cases[] = {{"//", "/"},
                                                         {"/a//b/", "/a/b"},
                                                         {"/a/./b/.", "/a/b"},
                                                         {"/a/b/..", "/a"},
                                                         {"/a/..", "/"},
                                                         {"/../../a", "/a"},
                                                         {"/a/b/../../c", "/c"},
                                                         {"/a/..b/...", "/a/..b/..."},
                                                         {"x", WithSeparator(CurrentFolder()) + "x"}};
    for (const auto& [path, normal] : cases) EXPECT_EQ(NormalPath(path), normal) << path;
}

TEST_F(Lists, ListsTheWayDownFromTheVolumeAndTheSubFolders) {
    desktop.volumes.pop_back();
    DirListBox list("Dir1");
    ASSERT_TRUE(list.SetPath(temp / "one"));
    std::vector<std::string> lines;
    for (const DirListBox::Entry& entry : list.Entries())
        lines.push_back(std::to_string(entry.depth) + (entry.open ? " open " : " ") + entry.label);
    EXPECT_THAT(lines, ElementsAre("0 open " + temp.Path(), "1 open one", "2 Alpha", "2 beta"));
    EXPECT_EQ(list.Entries()[2].path, temp / "one/Alpha");
    ASSERT_TRUE(list.SetPath("/"));
    EXPECT_EQ(list.Entries()[0].label, "/");
    EXPECT_EQ(list.Entries()[1].depth, 1);
}

TEST_F(Lists, ChangeComesOnlyForAnotherFolder) {
    DirListBox list("Dir1");
    list.Change = [this] { ++changes; };
    EXPECT_TRUE(list.SetPath(temp / "one"));
    EXPECT_TRUE(list.SetPath(temp.Path() + "//one/beta/.././"));
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(list.SetPath(temp / "missing"));
    EXPECT_FALSE(list.SetPath(temp / "one/file.txt"));
    EXPECT_EQ(list.Path(), temp / "one");
    EXPECT_EQ(changes, 1);
    list.DeliverOpen(list.Entries().size() - 1);
    EXPECT_EQ(list.Path(), temp / "one/beta");
    list.DeliverOpen(0);
    EXPECT_EQ(list.Path(), temp / "one") << "the root of the list is that of the innermost volume";
    list.DeliverOpen(1000);
    EXPECT_EQ(changes, 3);
}

TEST_F(Lists, ADriveIsTheVolumeWithTheLongestRootAboveThePath) {
    DriveListBox drives("Drive1");
    drives.Change = [this] { ++changes; };
    EXPECT_EQ(drives.Drive(), "/");
    const std::pair<std::string, std::string> cases[] = {{temp / "one/beta", temp / "one"},
                                                         {temp / "one", temp / "one"},
                                                         {temp / "one-more", temp.Path()},
                                                         {temp / "one/..", temp.Path()},
                                                         {"/usr", "/"}};
    for (const auto& [path, drive] : cases) {
        EXPECT_TRUE(drives.SetDrive(path));
        EXPECT_EQ(drives.Drive(), drive) << path;
    }
    EXPECT_EQ(changes, 3);
    drives.DeliverChoice(0);
    drives.DeliverChoice(9);
    EXPECT_EQ(changes, 3);
    drives.DeliverChoice(2);
    EXPECT_EQ(drives.Drive(), temp / "one");
    EXPECT_EQ(changes, 4);
}

TEST_F(Lists, APlaceIsChosenAndShownButIsNoPathsDrive) {
    desktop.volumes.pop_back();
    DriveListBox drives("Drive1");
    drives.Change = [this] { ++changes; };
    drives.AddPlace({temp / "one/", "Imagens", Volume::Kind::GamePictures});
    const std::pair<std::string, int> cases[] = {
        {temp / "one", 2}, {temp / "one/beta", 1}, {temp / "one/beta/..", 2}, {temp.Path(), 1}, {"/usr", 0}};
    for (const auto& [path, shown] : cases) {
        drives.Follow(path);
        EXPECT_EQ(drives.Current(), shown) << path;
    }
    EXPECT_EQ(changes, 0);
    drives.DeliverChoice(2);
    EXPECT_EQ(NormalPath(drives.Drive()), temp / "one");
    EXPECT_TRUE(drives.SetDrive(temp / "one-more")) << "the place lies on that volume";
    EXPECT_EQ(drives.Current(), 2);
    EXPECT_EQ(changes, 1);
}

}  // namespace
