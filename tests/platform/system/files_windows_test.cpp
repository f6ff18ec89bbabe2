// Paths, files and homes where drives have letters, names are UTF-16 and rights are found out by trying.
#include <gtest/gtest.h>
#include <windows.h>

#include <array>

#include "platform/system/files.h"
#include "platform/system/machine.h"
#include "platform/system/user_settings.h"
#include "platform/system/wide.h"
#include "tests/support/temp_folder.h"
#include "tests/support/variables.h"

namespace {

TEST(Paths, AreTakenApartAndPutTogether) {
    const std::array<std::string, 4> cases[] = {
        {"C:\\a\\b.pzl", "C:\\a", "b.pzl", "C:\\a\\b.pzl"},
        {"c:/a//b", "c:/a", "b", "c:\\a\\b"},
        {"C:\\b", "C:\\", "b", "C:\\b"},
        {"C:\\", "C:\\", "", "C:\\"},
        {"C:", "", "C:", "C:\\"},
        {"C:\\a\\..\\..\\b\\.\\", "C:\\a\\..\\..\\b\\.", "", "C:\\b"},
        {"\\\\server\\share\\a\\..\\..", "\\\\server\\share\\a\\..", "..", "\\\\server\\share\\"},
        {"//server/share/b.jpg", "//server/share/", "b.jpg", "\\\\server\\share\\b.jpg"},
        {"\\\\server\\share", "\\\\server\\share", "share", "\\\\server\\share\\"}};
    for (const auto& [path, folder, title, normal] : cases)
        EXPECT_EQ((std::array{FolderOf(path), FileTitle(path), NormalPath(path)}), (std::array{folder, title, normal}));
    EXPECT_TRUE(SamePath("C:\\Fotos da AÇÃO", "c:\\fotos da ação"));
    EXPECT_EQ(FileOfAddress("", "/C:/a b/c.jpg"), "C:\\a b\\c.jpg");
    EXPECT_EQ(FileOfAddress("server", "/share/c.jpg"), "\\\\server\\share\\c.jpg");
}

TEST(Files, NamesInAnyScriptAreKeptAndMalformedOnesAreNoFiles) {
    const TempFolder folder;
    const std::string inner = folder / "José/日本 Ελλάδα", bad = folder / "ma\xE7\xE3.jpg";
    ASSERT_TRUE(MkDirs(inner) && CanBeListed(inner) && IsWritableFolder(inner));
    const std::string game = WithSeparator(inner) + "maçã.pzl";
    ASSERT_TRUE(WriteFileAtomically(game, "new"));
    EXPECT_EQ(ReadFile(game), "new");
    EXPECT_EQ(FindIgnoringCase(inner, "MAçã.PZL"), game);
    EXPECT_EQ(SubFolders(folder / "José"), std::vector<std::string>{"日本 Ελλάδα"});
    SetEnvironmentVariableW(L"APPDATA", Wide(inner).c_str());
    EXPECT_TRUE(SaveSetting("a", "b", "key", "value"));
    EXPECT_TRUE(FileExists(WithSeparator(inner) + "fento-lira-master\\settings.ini"));
    EXPECT_FALSE(FileExists(bad) || FolderExists(bad) || FileLen(bad) || ReadFile(bad) || FirstEntry(bad));
    EXPECT_EQ(ProgramFile().substr(1, 2), ":\\");
}

TEST(Files, DevicesAreNotOpenedUnderAnyName) {
    const TempFolder folder;
    for (const std::string& name : {folder / "NUL", folder / "COM1", std::string("con"), std::string("\\\\.\\pipe\\x"),
                                    std::string("\\\\?\\GLOBALROOT\\Device\\Null")}) {
        EXPECT_FALSE(FileExists(name) || FolderExists(name) || FileLen(name) || CanBeListed(name)) << name;
        EXPECT_FALSE(OpenRegular(name) != -1 || WriteFileAtomically(name, "bytes")) << name;
    }
}

TEST(Files, WhatIsHiddenOrTheSystemsOwnIsLeftOut) {
    const TempFolder folder;
    folder.Write("shown.jpg", "");
    SetFileAttributesA(folder.Write("Thumbs.jpg", "").c_str(), FILE_ATTRIBUTE_HIDDEN);
    SetFileAttributesA(folder.Write("system.jpg", "").c_str(), FILE_ATTRIBUTE_SYSTEM);
    SetFileAttributesA(folder.MakeFolder("hidden").c_str(), FILE_ATTRIBUTE_HIDDEN);
    std::string listed = FirstEntry(folder.Path()).value_or("?");
    for (int i = 0; i < 3; ++i) listed += NextEntry().value_or("?");
    EXPECT_EQ(listed, "...shown.jpg");
    EXPECT_TRUE(SubFolders(folder.Path()).empty());
}

TEST(WriteFileAtomically, ReplacesTheWholeOrLeavesTheOldFile) {
    const TempFolder folder;
    const std::string path = folder.Write("game.pzl", "old"), shut = folder.Write("shut.pzl", "old");
    EXPECT_TRUE(WriteFileAtomically(path, "a\r\n"));
    EXPECT_EQ(folder.Read("game.pzl"), "a\r\n");
    SetFileAttributesA(shut.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(WriteFileAtomically(shut, "new")) << "protected by the player";
    SetFileAttributesA(shut.c_str(), FILE_ATTRIBUTE_NORMAL);
    // Somebody reads it and lets nobody replace it.
    const HANDLE held = CreateFileA(shut.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_FALSE(WriteFileAtomically(shut, "new")) << "held open";
    CloseHandle(held);
    EXPECT_EQ(folder.Read("shut.pzl"), "old");
    for (const std::string& target : {folder.MakeFolder("folder"), folder / "missing/x", folder / "new/", path + "\\x"})
        EXPECT_FALSE(WriteFileAtomically(target, "bytes")) << target;
    EXPECT_FALSE(IsWritableFolder(folder / "missing") || IsWritableFolder(path));
    EXPECT_EQ(folder.Entries(), 3) << "nothing is left behind";
    EXPECT_TRUE(WriteFileAtomically(shut, "new")) << "free again";
}

}  // namespace
