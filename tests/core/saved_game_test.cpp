// Every byte of a saved game, and the grids that are taken from it. What a reader must refuse: all_or_nothing_test.cpp.
#include "core/saved_game.h"

#include <algorithm>
#include <map>

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

std::string Text(const std::string& path = Sample().PicturePath) {
    SavedGame game = Sample();
    game.PicturePath = path;
    return FormatSavedGame(game).value();
}

// The grid in which a game is taken on a screen; {0, 0} if it is refused.
Size TakenGrid(const SavedGame& game, Size screen = {1920, 1080}) {
    const auto fit = FitOfPieces(game, screen);
    return fit ? Size{fit->GridCols, fit->GridRows} : Size{};
}

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

TEST(ParseSavedGame, TakesTheReadingOfThePathUnderWhichAFileExists) {
    struct Case {
        const char *written, *bytes;
    };
    for (const Case& c : {Case{"/fotos/maçã €.jpg", "/fotos/ma\xE7\xE3 \x80.jpg"},  // has a place in the code page
                          Case{"/fotos/日本.jpg", "/fotos/日本.jpg"},               // has none: the bytes it is
                          Case{"/fotos/\xE7\xE3.jpg", "/fotos/\xE7\xE3.jpg"}}) {    // a name that is no UTF-8
        const std::string text = Text(c.written);
        ASSERT_NE(text.find(std::string("\n") + c.bytes + "\r\n"), std::string::npos) << c.written;
        existingFile = c.written;
        EXPECT_EQ(ParseSavedGame(text, TheFile)->PicturePath, c.written);
    }
    // Neither exists: the message names the likelier one.
    EXPECT_EQ(ParseSavedGame(Text("/fotos/maçã.jpg"), NoFile)->PicturePath, "/fotos/maçã.jpg");
}

TEST(ParseSavedGame, AcceptsTheGamesFromWhichTheFuzzerStarts) {
    for (const char* name : {"kids_2x2", "medio_4x3", "dificil_7x5"}) {
        const auto bytes = ReadFile(std::string(FENTO_SOURCE_DIR "/tests/data/") + name + ".pzl");
        ASSERT_TRUE(bytes) << name;
        const auto game = ParseSavedGame(*bytes, NoFile);
        ASSERT_TRUE(game && FitOfPieces(*game, {})) << name;
        EXPECT_EQ(FormatSavedGame(*game), *bytes) << name;
    }
}

// Every small picture at every size, saved, restored and saved again: some grow to fill their cells, and some lose
// their last column or row by a pixel or three, so that another grid is reckoned from them.
TEST(FitOfPieces, KeepsEveryGameItsGridAndTakesNoFileCutShort) {
    using Counts = std::array<int, 3>;  // of games, and of other grids at the first and the second restoring
    const std::map<int, Counts> ofUnit{
        {3, {21609, 591, 6681}}, {4, {18496, 141, 5031}}, {5, {15625, 9, 1}}, {6, {12996, 1, 2889}}, {8, {8464, 0, 0}}};
    for (const auto& [unit, expected] : ofUnit) {
        Counts counts{};
        SavedGame game = Sample();
        game.Sizes = SizesOfUnit(unit);
        for (int i = 0; i < 160 * 160; ++i) {
            auto fit = FitNewGame({20 + i % 160, 20 + i / 160}, game.Sizes.CellSize, 1920, 1080);
            if (fit->TooSmall(game.Sizes.CellSize)) continue;
            ++counts[0];
            const Size grid{fit->GridCols, fit->GridRows};
            for (const size_t round : {1, 2}) {
                game.PictureWidth = fit->PictureWidth;
                game.PictureHeight = fit->PictureHeight;
                game.Pieces = PiecesOf({grid.width, grid.height - 1});
                ASSERT_EQ(TakenGrid(game), Size{}) << i;
                game.Pieces = PiecesOf(grid);
                ASSERT_EQ(TakenGrid(game), grid) << i;
                fit = FitOfHeader(game);
                counts[round] += Size{fit->GridCols, fit->GridRows} != grid;
                fit = FitOfPieces(game, {});
            }
        }
        EXPECT_EQ(counts, expected) << unit;
    }
}

// Whatever a screen can make of a picture it takes back, up to the largest that 16 bits can measure.
TEST(FitOfPieces, TakesTheLargestGamesOfEveryScreenAndNoneThatFillTheMemory) {
    SavedGame game = Sample();
    size_t most = 0;
    for (const int16_t level : std::initializer_list<int16_t>{0, 3, 5})
        for (const Size screen : {Size{800, 32767}, {7680, 4320}, {15900, 15900}, {26000, 9700}, {32767, 7700}})
            for (const Size photo : {Size{6000, 4000}, {20000, 2000}, {200, 9000}, {32000, 32000}, {32000, 600}}) {
                game.Sizes = *SizesOfLevel(level, int16_t(screen.width));
                const auto fit = FitNewGame(photo, game.Sizes.CellSize, screen.width, screen.height);
                if (!fit || fit->TooSmall(game.Sizes.CellSize)) continue;  // more cells than 16 bits can count
                const Size grid{fit->GridCols, fit->GridRows};
                game.PictureWidth = fit->PictureWidth;
                game.PictureHeight = fit->PictureHeight;
                game.Pieces = PiecesOf(grid);
                ASSERT_EQ(TakenGrid(game, screen), grid) << level << " on " << screen.width;
                const int64_t pixels = int64_t(game.Pieces.size()) * game.Sizes.TileSize * game.Sizes.TileSize;
                EXPECT_EQ(TakenGrid(game) == grid, pixels <= 1 << 25) << "on a smaller screen";
                most = std::max(most, game.Pieces.size());
            }
    EXPECT_GT(most, 6800u);
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
