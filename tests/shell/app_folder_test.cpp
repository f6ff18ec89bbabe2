// Where the program keeps the player's files, on small trees of folders.
#include "shell/app_folder.h"

#include <gtest/gtest.h>

#include "platform/headless/desktop.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temp_folder.h"

namespace {

struct AppFolder : testing::Test {
    // An installed program with two pictures and a skin.
    void Install(const std::string& bin = "prefix/games") {
        desktop.programPath = tree.Write(bin + "/fento-lira-master", "program");
        tree.Write(Shipped + "Puzzle.skn", "skin 1");
        tree.Write(Shipped + "Imagens/boat.bmp", "boat 1");
        tree.Write(Shipped + "Imagens/tree.bmp", "tree 1");
    }
    std::string Mine(const std::string& name) { return tree.Read(Own + name); }

    const std::string Shipped = "prefix/share/fento-lira-master/", Own = "home/data/fento-lira-master/";
    TempFolder tree;
    ScopedVariable dataHome{"XDG_DATA_HOME", tree / "home/data"};
    HeadlessDesktop desktop;
};

TEST_F(AppFolder, WhatIsNotInstalledStaysWhereItIs) {
    tree.Write(Shipped + "Puzzle.skn", "skin");
    for (const char* place : {"stick/game", "elsewhere/bin", "prefix/lib"}) {
        desktop.programPath = tree.Write(std::string(place) + "/fento-lira-master", "program");
        std::filesystem::permissions(tree / place, std::filesystem::perms(0555));  // a locked stick
        EXPECT_EQ(ChooseAppFolder(), tree / place + "/");
    }
    EXPECT_FALSE(tree.Has("home"));
}

TEST_F(AppFolder, AnInstalledProgramGetsAFolderOfThePlayersOwn) {
    for (const char* bin : {"prefix/games", "prefix/bin"}) {
        Install(bin);
        EXPECT_EQ(ChooseAppFolder(), tree / Own);
        EXPECT_EQ(Mine("Puzzle.skn"), "skin 1");
        EXPECT_EQ(Mine("Imagens/boat.bmp"), "boat 1");
        EXPECT_EQ(Mine("Imagens/tree.bmp"), "tree 1");
        std::filesystem::remove_all(tree / "home");
    }
    tree.Write("home", "no folder");  // then it reads what was installed
    EXPECT_EQ(ChooseAppFolder(), tree / Shipped);
}

TEST_F(AppFolder, CopiesFollowAnUpgradeUnlessThePlayerChangedOrDeletedThem) {
    Install();
    ChooseAppFolder();
    tree.Write(Own + "Puzzle.skn", "my skin");
    std::filesystem::remove(tree / (Own + "Imagens/tree.bmp"));
    tree.Write(Own + "Imagens/new.bmp", "the player's own");
    ChooseAppFolder();
    EXPECT_EQ(Mine("Puzzle.skn"), "my skin");
    EXPECT_FALSE(tree.Has(Own + "Imagens/tree.bmp"));

    for (const char* name :
         {"Puzzle.skn", "Imagens/boat.bmp", "Imagens/tree.bmp", "Imagens/new.bmp", "Imagens/more.bmp"})
        tree.Write(Shipped + name, std::string(name) + " 2");
    for (int start = 0; start < 2; ++start) {
        ChooseAppFolder();
        EXPECT_EQ(Mine("Puzzle.skn"), "my skin");
        EXPECT_EQ(Mine("Imagens/boat.bmp"), "Imagens/boat.bmp 2");
        EXPECT_FALSE(tree.Has(Own + "Imagens/tree.bmp"));
        EXPECT_EQ(Mine("Imagens/new.bmp"), "the player's own");
        EXPECT_EQ(Mine("Imagens/more.bmp"), "Imagens/more.bmp 2");
    }
    // The copy that followed once follows again, the next time by going.
    tree.Write(Shipped + "Imagens/boat.bmp", "boat 3");
    ChooseAppFolder();
    EXPECT_EQ(Mine("Imagens/boat.bmp"), "boat 3");
    tree.Write(Own + "Imagens/more.bmp", "painted over");
    for (const char* name : {"boat", "more", "new"})
        std::filesystem::rename(tree / (Shipped + "Imagens/" + name + ".bmp"),
                                tree / (Shipped + "Imagens/" + name + " renamed.bmp"));
    ChooseAppFolder();
    EXPECT_FALSE(tree.Has(Own + "Imagens/boat.bmp"));
    EXPECT_EQ(Mine("Imagens/boat renamed.bmp"), "boat 3");
    EXPECT_EQ(Mine("Imagens/more.bmp"), "painted over");
    EXPECT_EQ(Mine("Imagens/new.bmp"), "the player's own");
    std::filesystem::remove_all(tree / (Shipped + "Imagens"));  // out of reach is not withdrawn
    ChooseAppFolder();
    EXPECT_EQ(Mine("Imagens/boat renamed.bmp"), "boat 3");
}

TEST_F(AppFolder, ALostOrDamagedListCostsNoFile) {
    Install();
    ChooseAppFolder();
    tree.Write(Own + "Imagens/tree.bmp", "painted over");
    for (const char* list : {"", "zz\n1\n1 x\n\n12 3\nffffffffffffffffffff 1 Puzzle.skn\n0 0 ../../x\n"}) {
        tree.Write(Own + ".shipped", list);
        ChooseAppFolder();
        EXPECT_EQ(Mine("Imagens/tree.bmp") + Mine("Puzzle.skn"), "painted overskin 1");
    }
}

}  // namespace
