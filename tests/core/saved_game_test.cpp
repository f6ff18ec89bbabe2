// Every byte of a saved game, and everything a reader must refuse.
#include "core/saved_game.h"

#include <algorithm>
#include <functional>

#include "core/fitting.h"
#include "platform/system/files.h"
#include "tests/core/small_game.h"

namespace PuzzleModule {
namespace {

bool NoFile(const std::string&) { return false; }
std::string existingFile;
bool TheFile(const std::string& path) { return path == existingFile; }

// 2 x 2 pieces of level 5 on a wide screen.
SavedGame Sample() {
    SavedGame game;
    game.ElapsedSeconds = 125;
    game.PicturePath = "/fotos/praia, \"norte\".jpg";
    game.GameLevel = 5;
    game.PictureWidth = 84;
    game.PictureHeight = 80;
    game.Sizes = {80, 44, 4, 3};
    game.Pieces = {
        {-11, 22, 0, 0, 2, 0, 4}, {0, 0, 1, 0, 0, 1, 3}, {32767, -32768, 0, 1, 3, 2, 4}, {1, 2, 1, 1, 1, 3, 5}};
    return game;
}

std::string Text(const std::function<void(SavedGame&)>& change = [](SavedGame&) {}) {
    SavedGame game = Sample();
    change(game);
    return FormatSavedGame(game).value_or("");
}

int cols, rows;  // as IsConsistent found them last
bool Consistent(const SavedGame& game) { return IsConsistent(game, cols, rows); }

TEST(FormatSavedGame, WritesEveryByte) {
    EXPECT_EQ(Text(),
              " 125 \r\n/fotos/praia, \"norte\".jpg\r\n 5 \r\n 84 \r\n 80 \r\n 80 \r\n 44 \r\n 4 \r\n 3 \r\n 3 \r\n"
              "-11  22  0  0  2  0  4 \r\n 0  0  1  0  0  1  3 \r\n 32767 -32768  0  1  3  2  4 \r\n"
              " 1  2  1  1  1  3  5 \r\n");
}

TEST(FormatSavedGame, RefusesAPathWithALineBreak) {
    for (const char* path : {"/a\nb.jpg", "/a\rb.jpg", "\n"})
        EXPECT_EQ(Text([path](SavedGame& game) { game.PicturePath = path; }), "");
}

TEST(ParseSavedGame, TakesPlainLineEndsAndNumbersSpreadOverLines) {
    std::string text = Text();
    std::erase(text, '\r');
    const auto plain = ParseSavedGame(text, NoFile);
    ASSERT_TRUE(plain);
    EXPECT_EQ(FormatSavedGame(*plain), Text());
    std::ranges::replace(text.begin() + long(text.find("-11")), text.end(), ' ', '\n');
    const auto spread = ParseSavedGame(text + "whatever follows", NoFile);
    ASSERT_TRUE(spread);
    EXPECT_EQ(FormatSavedGame(*spread), Text());
}

TEST(ParseSavedGame, RefusesBrokenFiles) {
    const std::string good = Text();
    const auto with = [&good](const std::string& from, const std::string& to) {
        std::string text = good;
        return text.replace(text.find(from), from.size(), to);
    };
    const std::pair<const char*, std::string> broken[] = {
        {"empty", ""},
        {"no path", " 125 \r\n"},
        {"ends in the header", good.substr(0, good.find(" 44"))},
        {"ends in the pieces", good.substr(0, good.rfind(" 3  5"))},
        {"seconds with letters", with(" 125 ", " 12x ")},
        {"two numbers in line 1", with(" 125 ", " 125  7 ")},
        {"seconds beyond 32 bits", with(" 125 ", " 2147483648 ")},
        {"fraction", with(" 84 ", " 84.5 ")},
        {"hexadecimal", with(" 84 ", " 0x54 ")},
        {"plus sign", with(" 84 ", " +84 ")},
        {"lone minus", with(" 84 ", " - ")},
        {"width beyond 16 bits", with(" 84 ", " 32768 ")},
        {"bound beyond 16 bits", with(" 3 \r\n-11", " 40000 \r\n-11")},
        {"bound without pieces", with(" 3 \r\n-11", "-1 \r\n-11")},
        {"bound of more pieces than there are", with(" 3 \r\n-11", " 32766 \r\n-11")},
        {"X beyond 16 bits", with("-11 ", "-32769 ")},
        {"mask that is no number", with("-11  22  0  0  2  0  4", "-11  22  0  0  2  0  q")},
        {"zero byte in the path", with("praia", std::string("pr\0ia", 5))},
        {"zero byte among numbers", with(" 84 ", std::string(" 8\0004 ", 5))},
    };
    ASSERT_TRUE(ParseSavedGame(good, NoFile));
    for (const auto& [what, text] : broken) EXPECT_FALSE(ParseSavedGame(text, NoFile)) << what;
}

TEST(ParseSavedGame, TakesTheReadingOfThePathUnderWhichAFileExists) {
    struct Case {
        const char *written, *bytes;
    };
    for (const Case& c : {Case{"/fotos/maçã €.jpg", "/fotos/ma\xE7\xE3 \x80.jpg"},  // has a place in the code page
                          Case{"/fotos/日本.jpg", "/fotos/日本.jpg"},               // has none: the bytes it is
                          Case{"/fotos/\xE7\xE3.jpg", "/fotos/\xE7\xE3.jpg"}}) {    // a name that is no UTF-8
        const std::string text = Text([&c](SavedGame& game) { game.PicturePath = c.written; });
        ASSERT_NE(text.find(std::string("\n") + c.bytes + "\r\n"), std::string::npos) << c.written;
        existingFile = c.written;
        EXPECT_EQ(ParseSavedGame(text, TheFile)->PicturePath, c.written);
    }
    // Neither exists: the message names the likelier one.
    const std::string text = Text([](SavedGame& game) { game.PicturePath = "/fotos/maçã.jpg"; });
    EXPECT_EQ(ParseSavedGame(text, NoFile)->PicturePath, "/fotos/maçã.jpg");
}

TEST(ParseSavedGame, AcceptsTheGamesFromWhichTheFuzzerStarts) {
    for (const char* name : {"kids_2x2", "medio_4x3", "dificil_7x5"}) {
        const auto bytes = ReadFile(std::string(FENTO_SOURCE_DIR "/tests/data/") + name + ".pzl");
        ASSERT_TRUE(bytes) << name;
        const auto game = ParseSavedGame(*bytes, NoFile);
        ASSERT_TRUE(game && Consistent(*game)) << name;
        EXPECT_EQ(FormatSavedGame(*game), *bytes) << name;
    }
}

TEST(IsConsistent, RefusesNumbersThatMakeNoGame) {
    const std::pair<const char*, std::function<void(SavedGame&)>> changes[] = {
        {"level 2", [](SavedGame& g) { g.GameLevel = 2; }},
        {"negative seconds", [](SavedGame& g) { g.ElapsedSeconds = -1; }},
        {"tile of another set", [](SavedGame& g) { g.Sizes.TileSize = 100; }},
        {"cell of another set", [](SavedGame& g) { g.Sizes.CellSize = 55; }},
        {"unit 7",
         [](SavedGame& g) {
             g.Sizes = {140, 77, 7, 1};
         }},
        {"no gap", [](SavedGame& g) { g.Sizes.ScatterGap = 0; }},
        {"width 0", [](SavedGame& g) { g.PictureWidth = 0; }},
        {"negative height", [](SavedGame& g) { g.PictureHeight = -80; }},
        {"width that makes a grid beyond 16 bits", [](SavedGame& g) { g.PictureWidth = 32760; }},
        {"rotation 4", [](SavedGame& g) { g.Pieces[1].Rotation = 4; }},
        {"negative rotation", [](SavedGame& g) { g.Pieces[1].Rotation = -1; }},
        {"a number twice", [](SavedGame& g) { g.Pieces[1] = g.Pieces[0]; }},
        {"a number out of range", [](SavedGame& g) { g.Pieces[3].PieceId = 4; }},
        {"row of another piece", [](SavedGame& g) { g.Pieces[3].Row = 0; }},
        {"negative column", [](SavedGame& g) { g.Pieces[0].Col = -1; }},
        {"a piece too few", [](SavedGame& g) { g.Pieces.pop_back(); }},
        {"a piece too many", [](SavedGame& g) { g.Pieces.emplace_back().PieceId = 4; }},
        {"no pieces", [](SavedGame& g) { g.Pieces.clear(); }},
        {"one row", [](SavedGame& g) { g.PictureHeight = 40, g.Pieces.resize(2); }},
    };
    for (const auto& [what, change] : changes) {
        SavedGame game = Sample();
        ASSERT_TRUE(Consistent(game));
        change(game);
        EXPECT_FALSE(Consistent(game)) << what;
    }
}

TEST(IsConsistent, TakesTheGridOfThePiecesWhereThePictureHasOutgrownIt) {
    SavedGame game = Sample();
    game.PictureWidth = 88;                     // two whole cells: reckoned anew it would get three
    std::swap(game.Pieces[0], game.Pieces[3]);  // by PieceId, whatever the order
    EXPECT_TRUE(Consistent(game) && cols == 2 && rows == 2) << cols << " x " << rows;
}

TEST(IsConsistent, TakesTheLargestGamesOfALargeScreenAndNoneThatFillTheMemory) {
    const auto game = [](int16_t level, const LevelSizes& sizes, Size grid) {
        SavedGame made = Sample();
        made.GameLevel = level;
        made.Sizes = sizes;
        made.PictureWidth = int16_t(grid.width * sizes.CellSize - 2);
        made.PictureHeight = int16_t(grid.height * sizes.CellSize - 2);
        made.Pieces.clear();
        for (int i = 0; i < grid.width * grid.height; ++i)
            made.Pieces.push_back({0, 0, int16_t(i % grid.width), int16_t(i / grid.width), 0, int16_t(i), 0});
        return made;
    };
    for (const int16_t level : std::initializer_list<int16_t>{0, 1, 3, 4, 5})
        for (const Size photo : {Size{6000, 4000}, {3000, 4000}, {20000, 2000}, {30000, 300}, {200, 9000}}) {
            const LevelSizes sizes = *SizesOfLevel(level, 7680);
            const auto fit = FitNewGame(photo, sizes.CellSize, 7680, 4320);
            ASSERT_TRUE(fit);
            EXPECT_TRUE(Consistent(game(level, sizes, {fit->GridCols, fit->GridRows})))
                << level << ": " << fit->GridCols << " x " << fit->GridRows;
        }
    EXPECT_FALSE(Consistent(game(0, *SizesOfLevel(0, 7680), {40, 40})));
    EXPECT_FALSE(Consistent(game(5, *SizesOfLevel(5, 7680), {180, 180})));
}

TEST(GameToSave, IsTheSortedBoardUnderThePictureItWasCutFrom) {
    SmallGame game(4, 5, 3, 2);
    PictureWidth = 130;
    PictureHeight = 86;
    PicturePath = "/chosen later.jpg";
    BoardPicturePath = "/cut.jpg";
    std::ranges::reverse(Pieces);
    const auto saved = GameToSave();
    ASSERT_TRUE(saved && Consistent(*saved));
    EXPECT_EQ(saved->PicturePath, "/cut.jpg");
    EXPECT_TRUE(std::ranges::is_sorted(saved->Pieces, {}, &SavedPiece::PieceId));
    EXPECT_EQ(Pieces[0].PieceId, 5) << "the board itself is not touched";
    Pieces.clear();
    EXPECT_FALSE(GameToSave());
}

// 104 columns: the key of column 100 in row 0 is that of column 0 in row 1.
TEST(SortPieces, OfAGridBeyond100ColumnsStillLoads) {
    SmallGame game(3, 0, 104, 2);
    PictureWidth = 104 * 33 - 4;
    PictureHeight = 62;
    ASSERT_TRUE(SortPieces());
    EXPECT_NE(Pieces[101].PieceId, 101);
    EXPECT_TRUE(Consistent(*GameToSave()) && cols == 104) << cols;
}

}  // namespace
}  // namespace PuzzleModule
