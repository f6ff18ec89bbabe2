// Settings files as people and other programs leave them.
#include "platform/system/profile_file.h"

#include <gtest/gtest.h>

#include "platform/system/files.h"
#include "platform/system/user_settings.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temp_folder.h"

namespace {

using namespace std::string_literals;

TEST(ProfileFile, ReadsOddButLawfulFiles) {
    const std::string longValue(300, 'v');
    struct Case {
        const char* what;
        std::string content;
        std::optional<std::string> som;
    };
    const Case cases[] = {
        {"as written", "[SETUP]\nSom=False\n", "False"},
        {"byte-order mark and CR LF", "\xEF\xBB\xBF[SETUP]\r\nSom=False\r\n", "False"},
        {"blanks everywhere", " [ SETUP ] \n\t Som \t=  False \t\n", "False"},
        {"other case", "[setup]\nSOM=False\n", "False"},
        {"comments", "; [SETUP]\n[SETUP]\n;Som=True\n  ; Som=True\nSom=False ; late\n", "False ; late"},
        {"first section of two", "[SETUP]\nColor=1\n[SETUP]\nSom=False\n", {}},
        {"first key of two", "[SETUP]\nSom=False\nSom=True\n", "False"},
        {"before any section", "Som=True\n[SETUP]\n", {}},
        {"in another section", "[OTHER]\nSom=True\n[SETUP]\nColor=1\n", {}},
        {"no equal sign", "[SETUP]\nSom\n", {}},
        {"empty value", "[SETUP]\nSom=\n", ""},
        {"quotes", "[SETUP]\nSom=\" a b \"\n", " a b "},
        {"unequal quotes", "[SETUP]\nSom=\"a'\n", "\"a'"},
        {"unclosed section line", "[SETUP\nSom=False\n", "False"},
        {"long value", "[SETUP]\nSom=" + longValue + "\n", longValue},
        {"NUL in the value", "[SETUP]\nSom=a\0b\nColor=1\n"s, "a\0b"s},
        {"carriage return alone", "\r\n\r[SETUP]", {}},
    };
    TempFolder folder;
    for (const Case& c : cases)
        EXPECT_EQ(ProfileFile(folder.Write("config.ini", c.content)).Read("SETUP", "Som"), c.som) << c.what;
    EXPECT_EQ(ProfileFile(folder / "missing.ini").Read("SETUP", "Som"), std::nullopt);
}

TEST(ProfileFile, WritingOneKeyLeavesEverythingElseAsItWas) {
    struct Case {
        const char *what, *before, *after;
    };
    const Case cases[] = {
        {"new file", "", "[SETUP]\nSom=False\n"},
        {"replace", "[SETUP]\nColor=1\nSom=True\nX=2\n", "[SETUP]\nColor=1\nSom=False\nX=2\n"},
        {"keep name and blanks", "[Setup]\r\n som\t= \"True\"\r\n", "[Setup]\r\n som\t= False\r\n"},
        {"no final newline, replace", "[SETUP]\nSom=True", "[SETUP]\nSom=False"},
        {"no final newline, add", "[SETUP]\nColor=1", "[SETUP]\nColor=1\nSom=False\n"},
        {"bare section line", "[SETUP]", "[SETUP]\nSom=False\n"},
        {"before the blank lines", "[SETUP]\r\nColor=1\r\n\r\n[OTHER]\r\nSom=1\r\n",
         "[SETUP]\r\nColor=1\r\nSom=False\r\n\r\n[OTHER]\r\nSom=1\r\n"},
        {"new section", "; mine\r\n[OTHER]\r\nSom=1", "; mine\r\n[OTHER]\r\nSom=1\r\n[SETUP]\r\nSom=False\r\n"},
        {"first of two sections", "[SETUP]\n[SETUP]\nSom=1\n", "[SETUP]\nSom=False\n[SETUP]\nSom=1\n"},
        {"byte-order mark", "\xEF\xBB\xBF[SETUP]\nSom=1\n", "\xEF\xBB\xBF[SETUP]\nSom=False\n"},
        {"comment on the key", "[SETUP]\n;Som=True\n", "[SETUP]\n;Som=True\nSom=False\n"},
        {"foreign lines", "garbage\n[SETUP]\nwhat?\n=\nSom=1\n", "garbage\n[SETUP]\nwhat?\n=\nSom=False\n"},
    };
    TempFolder folder;
    for (const Case& c : cases) {
        const std::string path = folder / "config.ini";
        std::filesystem::remove(path);
        if (*c.before) folder.Write("config.ini", c.before);
        EXPECT_TRUE(ProfileFile(path).Write("SETUP", "Som", "False")) << c.what;
        EXPECT_EQ(folder.Read("config.ini"), c.after) << c.what;
    }
}

TEST(ProfileFile, WhatIsWrittenIsReadBack) {
    TempFolder folder;
    const ProfileFile file(folder / "config.ini");
    for (const std::string& value :
         {"True"s, ""s, " a "s, "\"quoted\""s, "'q'"s, "a=b;c"s, "[x]"s, "\""s, std::string(5000, 'x')}) {
        ASSERT_TRUE(file.Write("SETUP", "Key", value));
        EXPECT_EQ(file.Read("SETUP", "Key"), value);
    }
    EXPECT_FALSE(file.Write("SETUP", "Key", "two\nlines"));
    EXPECT_EQ(file.Read("SETUP", "Key"), std::string(5000, 'x'));
}

TEST(ProfileFile, NothingIsReplacedThatCannotBeRead) {
    TempFolder folder;
    EXPECT_FALSE(ProfileFile(folder.MakeFolder("config.ini")).Write("SETUP", "Som", "False"));
    EXPECT_FALSE(ProfileFile(folder / "missing/config.ini").Write("SETUP", "Som", "False"));
    EXPECT_EQ(folder.Entries(), 1);
}

TEST(UserSettings, AreKeptByApplicationAndSection) {
    TempFolder folder;
    const ScopedVariable home(SettingsVariable, folder / "config/");
    EXPECT_EQ(GetSetting("fento-lira-master", "cDialog", "RegColors", "Key"), "Key");
    EXPECT_EQ(folder.Entries(), 0) << "reading makes nothing";
    EXPECT_TRUE(SaveSetting("fento-lira-master", "cDialog", "RegColors", "1,2"));
    EXPECT_TRUE(SaveSetting("other", "cDialog", "RegColors", "3"));
    EXPECT_EQ(GetSetting("fento-lira-master", "cDialog", "RegColors", "Key"), "1,2");
    EXPECT_EQ(GetSetting("other", "cDialog", "RegColors", "Key"), "3");
    EXPECT_TRUE(folder.Has("config/fento-lira-master/settings.ini"));
}

}  // namespace
