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

// The grid in which a game is taken on a screen; {0, 0} if it is refused.
Size TakenGrid(const SavedGame& game, Size screen = {1920, 1080}) {
    const auto fit = FitOfPieces(game, screen);
    return fit ? Size{fit->GridCols, fit->GridRows} : Size{};
}
bool Taken(const SavedGame& game) { return TakenGrid(game) != Size{}; }

// The pieces of a grid, all at the board's corner.
std::vector<SavedPiece> PiecesOf(Size grid) {
    std::vector<SavedPiece> pieces;
    for (int i = 0; i < grid.width * grid.height; ++i)
        pieces.push_back({0, 0, int16_t(i % grid.width), int16_t(i / grid.width), 0, int16_t(i), 0});
    return pieces;
}

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
    const std::pair<const char*, std::string> headers[] = {
        {"empty", ""},
        {"no path", " 125 \r\n"},
        {"ends in the header", good.substr(0, good.find(" 44"))},
        {"seconds with letters", with(" 125 ", " 12x ")},
        {"two numbers in line 1", with(" 125 ", " 125  7 ")},
        {"seconds beyond 32 bits", with(" 125 ", " 2147483648 ")},
        {"fraction", with(" 84 ", " 84.5 ")},
        {"hexadecimal", with(" 84 ", " 0x54 ")},
        {"plus sign", with(" 84 ", " +84 ")},
        {"lone minus", with(" 84 ", " - ")},
        {"width beyond 16 bits", with(" 84 ", " 32768 ")},
        {"bound beyond 16 bits", with(" 3 \r\n-11", " 40000 \r\n-11")},
        {"zero byte in the path", with("praia", std::string("pr\0ia", 5))},
        {"zero byte among numbers", with(" 84 ", std::string(" 8\0004 ", 5))},
    };
    for (const auto& [what, text] : headers) EXPECT_FALSE(ParseSavedGame(text, NoFile)) << what;
    const std::pair<const char*, std::string> pieces[] = {
        {"missing", good.substr(0, good.find("-11"))},
        {"ending early", good.substr(0, good.rfind(" 3  5"))},
        {"bound to none", with(" 3 \r\n-11", "-1 \r\n-11")},
        {"bound to more than there are", with(" 3 \r\n-11", " 32767 \r\n-11")},
        {"X beyond 16 bits", with("-11 ", "-32769 ")},
        {"mask that is no number", with("-11  22  0  0  2  0  4", "-11  22  0  0  2  0  q")},
    };
    for (const auto& [what, text] : pieces) {
        const auto game = ParseSavedGame(text, NoFile);
        EXPECT_TRUE(game && game->PictureHeight == 80 && game->Pieces.empty()) << what;
    }
    EXPECT_EQ(ParseSavedGame(good, NoFile)->Pieces.size(), 4u);
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
        ASSERT_TRUE(game && Taken(*game)) << name;
        EXPECT_EQ(FormatSavedGame(*game), *bytes) << name;
    }
}

TEST(FitOfPieces, RefusesNumbersThatMakeNoGame) {
    const std::pair<const char*, std::function<void(SavedGame&)>> changes[] = {
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
        ASSERT_TRUE(Taken(game));
        change(game);
        EXPECT_FALSE(Taken(game)) << what;
    }
}

TEST(FitOfPieces, TakesAnyLevelAndAnyOrder) {
    SavedGame game = Sample();
    std::swap(game.Pieces[0], game.Pieces[3]);
    for (const int16_t level : std::initializer_list<int16_t>{-32768, 2, 6, 32767}) {
        game.GameLevel = level;
        EXPECT_TRUE(Taken(game)) << level;
    }
}

// Every small picture at every size, saved, restored and saved again: some grow to fill their cells, and some lose
// their last column or row by a pixel or three, so that another grid is reckoned from them.
TEST(FitOfPieces, KeepsEveryGameItsGridAndTakesNoFileCutShort) {
    struct Row {
        int unit, games;
        std::array<int, 2> rescues;  // at the first and the second restoring
    };
    for (const Row& row : {Row{3, 21609, {591, 6681}},
                           {4, 18496, {141, 5031}},
                           {5, 15625, {9, 1}},
                           {6, 12996, {1, 2889}},
                           {8, 8464, {0, 0}}}) {
        int games = 0;
        std::array<int, 2> rescues{};
        SavedGame game = Sample();
        game.Sizes = SizesOfUnit(row.unit);
        for (int width = 20; width < 180; ++width)
            for (int height = 20; height < 180; ++height) {
                auto fit = FitNewGame({width, height}, game.Sizes.CellSize, 1920, 1080);
                if (fit->TooSmall(game.Sizes.CellSize)) continue;
                ++games;
                const Size grid{fit->GridCols, fit->GridRows};
                for (int& rescued : rescues) {
                    game.PictureWidth = fit->PictureWidth;
                    game.PictureHeight = fit->PictureHeight;
                    game.Pieces = PiecesOf({grid.width, grid.height - 1});
                    ASSERT_FALSE(Taken(game)) << width << " x " << height;
                    game.Pieces = PiecesOf(grid);
                    ASSERT_EQ(TakenGrid(game), grid) << width << " x " << height;
                    const auto reckoned = FitOfHeader(game);
                    rescued += Size{reckoned->GridCols, reckoned->GridRows} != grid;
                    fit = FitOfPieces(game, {});
                }
            }
        EXPECT_EQ(games, row.games) << row.unit;
        EXPECT_EQ(rescues, row.rescues) << row.unit;
    }
}

// Whatever a screen can make of a picture it takes back, up to the largest that 16 bits can measure.
TEST(FitOfPieces, TakesTheLargestGamesOfEveryScreenAndNoneThatFillTheMemory) {
    SavedGame game = Sample();
    size_t most = 0;
    for (const int16_t level : std::initializer_list<int16_t>{0, 3, 5})
        for (const Size screen : {Size{800, 32767}, {7680, 4320}, {15900, 15900}, {26000, 9700}, {32767, 7700}})
            for (const Size photo : {Size{6000, 4000},
                                     {3000, 4000},
                                     {20000, 2000},
                                     {30000, 300},
                                     {200, 9000},
                                     {32000, 32000},
                                     {32000, 1800},
                                     {32000, 600}}) {
                game.Sizes = *SizesOfLevel(level, int16_t(screen.width));
                const auto fit = FitNewGame(photo, game.Sizes.CellSize, screen.width, screen.height);
                if (!fit || fit->TooSmall(game.Sizes.CellSize)) continue;  // more cells than 16 bits can count
                const Size grid{fit->GridCols, fit->GridRows};
                game.PictureWidth = fit->PictureWidth;
                game.PictureHeight = fit->PictureHeight;
                game.Pieces = PiecesOf(grid);
                ASSERT_EQ(TakenGrid(game, screen), grid) << level << " on " << screen.width;
                const int64_t pixels = int64_t(game.Pieces.size()) * game.Sizes.TileSize * game.Sizes.TileSize;
                EXPECT_EQ(Taken(game), pixels <= 1 << 25) << "on a smaller screen";
                most = std::max(most, game.Pieces.size());
            }
    EXPECT_GT(most, 6900u);
}

TEST(GameToSave, IsTheSortedBoardUnderThePictureItWasCutFrom) {
    SmallGame game(4, 5, 3, 2);
    PictureWidth = 130;
    PictureHeight = 86;
    PicturePath = "/chosen later.jpg";
    BoardPicturePath = "/cut.jpg";
    std::ranges::reverse(Pieces);
    const auto saved = GameToSave();
    ASSERT_TRUE(saved && Taken(*saved));
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
    EXPECT_EQ(TakenGrid(*GameToSave()), (Size{104, 2}));
}

}  // namespace
}  // namespace PuzzleModule
