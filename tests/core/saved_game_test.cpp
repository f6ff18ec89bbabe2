// Saved games against a reader that goes word by word, and the grids that are taken from them.
#include "core/saved_game.h"

#include <algorithm>
#include <map>

#include "platform/system/files.h"
#include "tests/core/small_game.h"
#include "tests/reference/literal_saved_game.h"

namespace PuzzleModule {
namespace {

bool NoFile(const std::string&) { return false; }
std::string existingFile;
bool TheFile(const std::string& path) { return path == existingFile; }

// A grid as it would be saved, all pieces at the board's corner.
SavedGame GameOf(Size grid, int unit = 4) {
    SavedGame game{125, "/fotos/praia, \"norte\".jpg", 5, 84, 80, SizesOfUnit(unit), {}};
    for (int i = 0; i < grid.width * grid.height; ++i)
        game.Pieces.push_back({0, 0, int16_t(i % grid.width), int16_t(i / grid.width), 0, int16_t(i), 0});
    return game;
}

// The grid in which a game is taken on a screen; {0, 0} if it is refused.
Size TakenGrid(const SavedGame& game, Size screen = {1920, 1080}) {
    const auto fit = FitOfPieces(game, screen);
    return fit ? Size{fit->GridCols, fit->GridRows} : Size{};
}

// What both readers make of a file: the file that is written of it again, and the places in its picture.
class BothReaders {
public:
    void Take(const std::string& bytes) {
        const auto mine = ParseSavedGame(bytes, NoFile);
        const auto literally = literal::Read(bytes);
        ASSERT_EQ(mine ? FormatSavedGame(*mine).value_or("no file") : "", literally ? literal::Text(*literally) : "")
            << bytes;
        if (!mine) return void(++refused);
        const auto fit = FitOfPieces(*mine, {1920, 1080}), expected = literal::FitOf(*literally);
        ASSERT_EQ(fit.has_value(), expected.has_value()) << bytes;
        if (!fit) return void(++noGames);
        ++games;
        EXPECT_EQ(fit->PictureRect(), expected->PictureRect()) << bytes;
        EXPECT_EQ((Size{fit->MasterWidth, fit->MasterHeight}), (Size{expected->MasterWidth, expected->MasterHeight}));
    }
    int refused = 0, noGames = 0, games = 0;
};

// Cut short at every byte, every byte another (of the longest file at some), and every number at and over its limits.
TEST(SavedGame, IsReadAsWordByWordHoweverItIsSpoilt) {
    for (const char* name : {"kids_2x2", "medio_4x3", "dificil_7x5"}) {
        BothReaders readers;
        const std::string good = ReadFile(std::string(FENTO_SOURCE_DIR "/tests/data/") + name + ".pzl").value();
        readers.Take(good);
        ASSERT_EQ(FormatSavedGame(*ParseSavedGame(good, NoFile)), good);
        std::string plain = good;
        std::erase(plain, '\r');
        readers.Take(plain), readers.Take(good + "whatever follows");
        ASSERT_EQ(readers.games, 3) << name;
        for (size_t at = 0; at < good.size(); at += 1 + good.size() / 390) {
            readers.Take(good.substr(0, at));
            for (const char other : std::string("\0\t\n\r -+.09x\x7F\x80\xE7\xFF", 15))
                for (const size_t replaced : {0, 1}) readers.Take(std::string(good).replace(at, replaced, 1, other));
        }
        std::string rest = good;
        for (const std::string& word : literal::Words(good)) {
            const size_t at = good.size() - rest.size() + rest.find(word);
            rest = good.substr(at + word.size());
            if (at > 200) break;  // pieces like those before
            for (const char* other : {"-2147483649",
                                      "-2147483648",
                                      "-32769",
                                      "-32768",
                                      "-1",
                                      "-0",
                                      "0",
                                      "1",
                                      "2",
                                      "3",
                                      "4",
                                      "5",
                                      "007",
                                      "32766",
                                      "32767",
                                      "32768",
                                      "2147483647",
                                      "2147483648",
                                      "99999999999999999999",
                                      "1e1",
                                      "0x1",
                                      "--1",
                                      ""})
                readers.Take(std::string(good).replace(at, word.size(), other));
            // A picture around its cells: see literal::FitOf.
            for (int length = 20; length < 400 && at < 80; ++length)
                readers.Take(std::string(good).replace(at, word.size(), std::to_string(length)));
        }
        EXPECT_TRUE(readers.refused > 300 && readers.noGames > 500 && readers.games > 500 && !HasFatalFailure())
            << readers.refused << " refused, " << readers.noGames << " no games, " << readers.games << " games";
    }
}

TEST(SavedGame, NamesItsPictureByTheReadingUnderWhichAFileExists) {
    struct Case {
        const char *written, *bytes, *likelier;  // where there is no file under either
    };
    SavedGame game = GameOf({2, 2});
    for (const Case& c :
         {Case{"/fotos/maçã €.jpg", "/fotos/ma\xE7\xE3 \x80.jpg", "/fotos/maçã €.jpg"},  // has a place in the code page
          Case{"/fotos/日本.jpg", "/fotos/日本.jpg", "/fotos/日本.jpg"},                 // has none: the bytes it is
          Case{"/fotos/\xE7\xE3.jpg", "/fotos/\xE7\xE3.jpg", "/fotos/çã.jpg"}}) {        // a name that is no UTF-8
        game.PicturePath = existingFile = c.written;
        const std::string text = FormatSavedGame(game).value();
        EXPECT_EQ(text.substr(0, text.find(" 5 ")), " 125 \r\n" + std::string(c.bytes) + "\r\n");
        EXPECT_EQ(ParseSavedGame(text, TheFile)->PicturePath, c.written);
        EXPECT_EQ(ParseSavedGame(text, NoFile)->PicturePath, c.likelier);
    }
    for (const char* bad : {"/fotos\n/a.jpg", "/fotos\r/a.jpg"}) {
        game.PicturePath = bad;
        EXPECT_FALSE(FormatSavedGame(game));
    }
}
// Every small picture at every size, saved, restored and saved again: some grow to fill their cells, and some lose
// their last column or row by a pixel or three, so that another grid is reckoned from them.
TEST(SavedGame, KeepsItsGridThroughSavesAndRestores) {
    using Counts = std::array<int, 3>;  // of games, and of other grids at the first and the second restoring
    const std::map<int, Counts> ofUnit{
        {3, {21609, 591, 6681}}, {4, {18496, 141, 5031}}, {5, {15625, 9, 1}}, {6, {12996, 1, 2889}}, {8, {8464, 0, 0}}};
    for (const auto& [unit, expected] : ofUnit) {
        Counts counts{};
        for (int i = 0; i < 160 * 160; ++i) {
            auto fit = FitNewGame({20 + i % 160, 20 + i / 160}, 11 * unit, 1920, 1080);
            if (fit->TooSmall(11 * unit)) continue;
            ++counts[0];
            const Size grid{fit->GridCols, fit->GridRows};
            SavedGame game = GameOf(grid, unit);
            for (const size_t round : {1, 2}) {
                game.PictureWidth = fit->PictureWidth;
                game.PictureHeight = fit->PictureHeight;
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
TEST(SavedGame, OfTheLargestSizeIsTakenOnItsScreenAndFillsNoOtherMemory) {
    size_t most = 0;
    for (const int unit : AllUnits)
        for (const Size screen : {Size{800, 32767}, {7680, 4320}, {15900, 15900}, {26000, 9700}, {32767, 7700}})
            for (const Size photo : {Size{6000, 4000}, {20000, 2000}, {200, 9000}, {32000, 32000}, {32000, 600}}) {
                const auto fit = FitNewGame(photo, 11 * unit, screen.width, screen.height);
                if (!fit || fit->TooSmall(11 * unit)) continue;  // more cells than 16 bits can count
                const Size grid{fit->GridCols, fit->GridRows};
                SavedGame game = GameOf(grid, unit);
                game.PictureWidth = fit->PictureWidth;
                game.PictureHeight = fit->PictureHeight;
                ASSERT_EQ(TakenGrid(game, screen), grid) << unit << " on " << screen.width;
                EXPECT_EQ(TakenGrid(game) == grid, game.Pieces.size() * unsigned(400 * unit * unit) <= 1 << 25);
                most = std::max(most, game.Pieces.size());
            }
    EXPECT_GT(most, 6800u);
}

// Beyond 100 columns the key of a cell occurs again in the next row, and the order of exchanges decides.
TEST(SavedGame, HasItsPiecesInTheOrderThatExchangesLeave) {
    std::minstd_rand random(7);
    for (const Size grid : {Size{5, 4}, {104, 2}, {2, 104}, {130, 3}, {2, 2}}) {
        SmallGame small(3, 0, grid.width, grid.height);
        std::shuffle(Pieces.begin(), Pieces.end(), random);
        ElapsedSeconds = 77, PictureWidth = int16_t(grid.width * 33), PictureHeight = int16_t(grid.height * 33);
        std::vector<PieceRec> pieces = Pieces;
        for (size_t i = 0; i < pieces.size(); ++i)
            for (size_t j = i + 1; j < pieces.size(); ++j)
                if (pieces[i].Row * 100 + pieces[i].Col > pieces[j].Row * 100 + pieces[j].Col)
                    std::swap(pieces[i], pieces[j]);
        literal::Saved saved{BoardPicturePath, {77, 0, PictureWidth, PictureHeight, 60, 33, 3, 1, 0}, {}};
        for (const PieceRec& p : pieces)
            for (const int16_t number : {p.X, p.Y, p.Col, p.Row, p.Rotation, p.PieceId, p.MaskIndex})
                saved.pieces.push_back(number);
        EXPECT_EQ(FormatSavedGame(*GameToSave()), literal::Text(saved));
        EXPECT_EQ(TakenGrid(*GameToSave()), grid);
        EXPECT_TRUE(SortPieces() && Pieces == pieces);
    }
    EXPECT_FALSE(SortPieces() || GameToSave());
}

}  // namespace
}  // namespace PuzzleModule
