// What is read from saved games, and the grids that are taken from them.
#include "core/saved_game.h"

#include "platform/system/files.h"
#include "tests/core/small_game.h"
#include "tests/support/transcript.h"

namespace PuzzleModule {
namespace {

bool NoFile(const std::string&) { return false; }
std::string existingFile;
bool TheFile(const std::string& path) { return path == existingFile; }

// Cut short at every byte, every byte another (of the longest file at some), and every number at and over its limits:
// how many are refused or no games, where the pictures of the others lie, and what is written of them again.
TEST(SavedGame, IsReadWrittenAndFittedAsItAlwaysWasHoweverItIsSpoilt) {
    Transcript transcript;
    int refused = 0, noGames = 0, games = 0, places = 0;
    uint32_t written = 0;
    const auto take = [&](const std::string& bytes) {
        const auto game = ParseSavedGame(bytes, NoFile);
        if (!game) return void(++refused);
        for (const char byte : FormatSavedGame(*game).value_or("none")) written = written * 31 + uint8_t(byte);
        const auto fit = FitOfPieces(*game, {1920, 1080});
        const Rect picture = fit ? fit->PictureRect() : Rect{};
        places += picture.x + 3 * picture.y + 5 * picture.width + 7 * picture.height;
        ++(fit ? games : noGames);
    };
    for (const char* name : {"kids_2x2", "medio_4x3", "dificil_7x5"}) {
        const std::string good = ReadFile(std::string(FENTO_SOURCE_DIR "/tests/data/") + name + ".pzl").value();
        take(good), take(good + "whatever follows");
        EXPECT_EQ(FormatSavedGame(*ParseSavedGame(good, NoFile)), good);
        for (size_t at = 1; at < good.size(); at += 1 + good.size() / 390) {
            const auto with = [&](size_t length, const std::string& other) {
                take(std::string(good).replace(at, length, other));
            };
            with(good.size(), "");
            for (const char c : std::string("\0\t\n\r -+.09x\x7F\x80\xE7\xFF", 15)) with(1, {c}), with(0, {c});
            transcript.Write(testing::PrintToString(std::tuple(refused, noGames, games, places, written)));
            const size_t behind = std::isdigit(good[at - 1]) ? at : good.find_first_not_of("0123456789", at);
            if (behind == at || at > 200) continue;
            std::istringstream limits(
                "-2147483649 -2147483648 -32769 -32768 -1 -0 0 1 2 3 4 5 007 32766 32767 32768 - 0x1 "
                "2147483647 2147483648 99999999999999999999 1e1");
            for (std::string other; limits >> other;) with(behind - at, other);
            // A picture around its cells: it has grown until it fills them, or lost a last one that it hardly reached
            // into.
            for (int length = 20; length < 400 && at < 80; ++length) with(behind - at, std::to_string(length));
        }
    }
}

TEST(SavedGame, NamesItsPictureByTheReadingUnderWhichAFileExists) {
    SavedGame game = *ParseSavedGame(" 1 \r\n\r\n 5  1  1  1  1  1  1 -1 ", NoFile);
    // As written, as bytes, and what a message names where there is no such file.
    for (const auto& [path, bytes, likelier] :
         {std::array{"/maçã €.jpg", "/ma\xE7\xE3 \x80.jpg", "/maçã €.jpg"},  // has a place in the code page
          std::array{"/日本.jpg", "/日本.jpg", "/日本.jpg"},                 // has none: the bytes it is
          std::array{"/Ã§.jpg", "/ç.jpg", "/ç.jpg"},                         // bytes that are UTF-8 as well
          std::array{"/\xE7\xE3.jpg", "/\xE7\xE3.jpg", "/çã.jpg"}}) {        // a name that is no UTF-8
        game.PicturePath = existingFile = path;
        const std::string text = FormatSavedGame(game).value();
        EXPECT_EQ(text.substr(0, text.find(" 5 ")), " 1 \r\n" + std::string(bytes) + "\r\n");
        EXPECT_EQ(ParseSavedGame(text, TheFile)->PicturePath, path);
        EXPECT_EQ(ParseSavedGame(text, NoFile)->PicturePath, likelier);
    }
    game.PicturePath = "/a\n.jpg";
    EXPECT_FALSE(FormatSavedGame(game));
}

// Whatever a screen makes of a picture it takes back, and once more after that: some pictures grow to fill their cells,
// and some lose their last column or row by a pixel or three. A smaller screen refuses what would fill its memory.
TEST(SavedGame, IsTakenBackInTheGridThatItWasMadeFor) {
    std::minstd_rand random(7);
    const auto between = [&random](int least, int most) { return least + int(random() % unsigned(most - least)); };
    for (int run = 0; run < 20000; ++run) {
        const int unit = AllUnits[between(0, 5)], largest = run % 50 == 0 ? 32000 : 180;
        const Size screen = run % 50 == 0 ? Size{between(640, 16000), between(480, 16000)} : Size{1920, 1080};
        auto fit = FitNewGame({between(20, largest), between(20, largest)}, 11 * unit, screen.width, screen.height);
        if (!fit || fit->TooSmall(11 * unit)) continue;
        for (int round = 0; round < 2; ++round) {
            SavedGame game{0, "", 0, fit->PictureWidth, fit->PictureHeight, SizesOfUnit(unit), {}};
            for (int16_t row = 0, id = 0; row < fit->GridRows; ++row)
                for (int16_t col = 0; col < fit->GridCols; ++col) game.Pieces.push_back({0, 0, col, row, 0, id++, 0});
            const auto taken = FitOfPieces(game, screen);
            ASSERT_TRUE(taken) << run;
            ASSERT_EQ((Size{taken->GridCols, taken->GridRows}), (Size{fit->GridCols, fit->GridRows})) << run;
            EXPECT_EQ(FitOfPieces(game, {800, 600}).has_value(), game.Pieces.size() * 400 * unit * unit <= 1 << 25);
            fit = taken;
        }
    }
}

}  // namespace
}  // namespace PuzzleModule
