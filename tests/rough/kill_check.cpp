// Saves again and again while it is killed at random moments, and saves on a full disk.
//
// A child plays on the desktop without a screen and saves by the menu, without a pause; the parent kills it and
// looks at what is there. Every file tells by itself whether it is whole: the pieces stand where the saved number
// of seconds puts them. Nothing may be lost that was said to be saved, and beside the files nothing may lie about
// but the unfinished new file of a killed save.
//
// usage: kill_check FOLDER [ROUNDS [SEED]]
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <random>
#include <thread>

#include "core/saved_game.h"
#include "platform/files.h"
#include "tests/support/game_fixture.h"

using namespace PuzzleModule;
namespace fs = std::filesystem;

namespace {

constexpr int Cols = 9, Rows = 6, ConfigLines = 300;
constexpr const char *GameName = "/jogo.pzl", *ConfigName = "/config.ini";

[[noreturn]] void Fail(const std::string& what) {
    std::fprintf(stderr, "FAILED: %s\n", what.c_str());
    std::_Exit(1);
}

int16_t PlaceAt(int32_t seconds, int id, int salt) { return int16_t((seconds * 31 + id * salt) % 1000); }

// The game as the player would save it after so many seconds.
void LayOut(int32_t seconds) {
    ElapsedSeconds = seconds;
    for (PieceRec& piece : Pieces) {
        piece.X = PlaceAt(seconds, piece.PieceId, 7);
        piece.Y = PlaceAt(seconds, piece.PieceId, 11);
    }
}

// The seconds of a whole file. Ends the check if it is none.
int32_t SecondsOf(const std::string& path) {
    const auto bytes = ReadFile(path);
    if (!bytes) Fail(path + " is gone");
    const auto game = ParseSavedGame(*bytes, [](const std::string&) { return true; });
    int cols = 0, rows = 0;
    if (!game || !IsConsistent(*game, cols, rows) || cols != Cols || rows != Rows)
        Fail(path + " is no whole game, " + std::to_string(bytes->size()) + " bytes");
    for (const SavedPiece& piece : game->Pieces)
        if (piece.X != PlaceAt(game->ElapsedSeconds, piece.PieceId, 7) ||
            piece.Y != PlaceAt(game->ElapsedSeconds, piece.PieceId, 11))
            Fail(path + " mixes two games");
    return game->ElapsedSeconds;
}

std::string ConfigText(const char* sound) {
    std::string text = std::string("[SETUP]\nSom=") + sound + "\n";
    for (int i = 0; i < ConfigLines; ++i) text += "; a line that stays " + std::to_string(i) + "\n";
    return text;
}

void CheckConfig(const std::string& folder) {
    const auto bytes = ReadFile(folder + ConfigName);
    if (bytes != ConfigText("True") && bytes != ConfigText("False"))
        Fail("config.ini is not whole: " + std::to_string(bytes.value_or("").size()) + " bytes");
}

// Removes what killed saves left behind and counts it.
int ClearLeftovers(const std::string& folder) {
    int count = 0;
    for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string name = "/" + entry.path().filename().string();
        if (name == GameName || name == ConfigName || name == "/Save") continue;  // the dialog makes its folder
        if (!name.starts_with("/.fento-") || !name.ends_with(".tmp")) Fail("left behind: " + name);
        ++count;
        fs::remove(entry.path());
    }
    return count;
}

void Save(GameFixture& play, const std::string& folder) {
    play.desktop.fileAnswers.assign(1, folder + GameName);
    play.Menu("mnuSaveGame");
}

// Never returns. Says each number of seconds that is safe on the disk.
[[noreturn]] void SaveForEver(const std::string& folder, int32_t seconds, int say) {
    GameFixture play;
    play.StartGrid(Cols, Rows);
    AppFolder = folder + "/";
    for (;; ++seconds) {
        LayOut(seconds);
        Save(play, folder);
        if (write(say, &seconds, sizeof seconds) != sizeof seconds) std::_Exit(1);
        play.Menu("mnuSounds");
    }
}

struct Killed {
    int32_t safe;  // the last that was said to be saved
    int saves;
};

// Lets a child save for a while, then kills it.
Killed KillOne(const std::string& folder, int32_t from, std::chrono::microseconds after) {
    int pipe[2];
    if (::pipe(pipe) != 0) Fail("no pipe");
    const pid_t child = fork();
    if (child < 0) Fail("no process");
    if (child == 0) {
        close(pipe[0]);
        SaveForEver(folder, from, pipe[1]);
    }
    close(pipe[1]);
    Killed result{from, 0};
    if (read(pipe[0], &result.safe, sizeof result.safe) != sizeof result.safe) Fail("a child did not save at all");
    std::this_thread::sleep_for(after);
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFSIGNALED(status) || WTERMSIG(status) != SIGKILL) Fail("a child ended by itself");
    do ++result.saves;
    while (read(pipe[0], &result.safe, sizeof result.safe) == sizeof result.safe);
    close(pipe[0]);
    return result;
}

void KillRounds(const std::string& folder, int rounds, std::mt19937& random) {
    if (!WriteFileAtomically(folder + ConfigName, ConfigText("True"))) Fail("no " + folder);
    int32_t seconds = 1;
    int saves = 0, leftovers = 0, newer = 0;
    for (int round = 0; round < rounds; ++round) {
        const Killed killed = KillOne(folder, seconds, std::chrono::microseconds(random() % 40000));
        const int32_t found = SecondsOf(folder + GameName);
        if (found != killed.safe && found != killed.safe + 1)
            Fail("saved " + std::to_string(killed.safe) + " but found " + std::to_string(found));
        CheckConfig(folder);
        const int left = ClearLeftovers(folder);
        if (left > 1) Fail(std::to_string(left) + " unfinished files of one killed program");
        saves += killed.saves;
        leftovers += left;
        newer += found != killed.safe;
        seconds = found + 1;
    }
    std::printf("killed %d times in %d saves: every file whole; %d unfinished files beside, %d saves done but unsaid\n",
                rounds, saves, leftovers, newer);
}

// In a child: saves once, makes the disk full by `fill`, saves another game, which must fail without a trace.
template <typename Fill>
int SaveOnFullDisk(const std::string& folder, Fill fill) {
    const pid_t child = fork();
    if (child == 0) {
        GameFixture play;
        play.StartGrid(Cols, Rows);
        if (!fill(false)) std::_Exit(77);
        AppFolder = folder + "/";
        if (!WriteFileAtomically(folder + ConfigName, ConfigText("True"))) Fail("no room to begin with");
        LayOut(500);
        Save(play, folder);
        if (SecondsOf(folder + GameName) != 500) Fail("not saved with room");
        if (!fill(true)) std::_Exit(77);
        LayOut(900);
        Save(play, folder);
        play.Menu("mnuSounds");
        if (SecondsOf(folder + GameName) != 500) Fail("a save on a full disk changed the old game");
        if (ReadFile(folder + ConfigName) != ConfigText("True")) Fail("a full disk cost the settings");
        if (!GameRunning || !play.main.Timer1.Enabled() || !play.desktop.boxes.empty()) Fail("the game did not go on");
        std::_Exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

void LimitedFiles(const std::string& folder) {
    const int result = SaveOnFullDisk(folder, [](bool now) {
        const rlimit limit{100, 100};
        std::signal(SIGXFSZ, SIG_IGN);
        return !now || setrlimit(RLIMIT_FSIZE, &limit) == 0;
    });
    if (result != 0) Fail("files that may not grow");
    if (ClearLeftovers(folder) != 0) Fail("a failed save left its new file behind");
    std::printf("files that may not grow: the old ones stay whole, nothing is left behind\n");
}

void FullDisk(const std::string& folder) {
    const int result = SaveOnFullDisk(folder, [&folder](bool now) {
        const std::string filler = folder + "/.fento-filler.tmp";
        if (!now)
            return unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                   mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=256k") == 0;
        std::FILE* out = std::fopen(filler.c_str(), "wb");
        if (!out) return false;
        std::setbuf(out, nullptr);
        while (std::fputc('x', out) != EOF) {
        }
        std::fclose(out);
        return true;
    });
    if (result == 77)
        std::printf("full disk: skipped, this user can mount nothing\n");
    else if (result != 0)
        Fail("full disk");
    else
        std::printf("full disk: the old files stay whole\n");
}

int NumberOr(const char* text, int otherwise) {
    int value = otherwise;
    if (text) std::from_chars(text, text + std::strlen(text), value);
    return value;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return std::fprintf(stderr, "usage: kill_check FOLDER [ROUNDS [SEED]]\n"), 2;
    const std::string folder = fs::absolute(argv[1]).string();
    const int rounds = NumberOr(argc > 2 ? argv[2] : nullptr, 200);
    const int seed = NumberOr(argc > 3 ? argv[3] : nullptr, int(std::random_device{}() & 0xFFFFFF));
    std::printf("seed %d\n", seed);
    std::fflush(stdout);
    std::mt19937 random{uint32_t(seed)};
    fs::create_directories(folder);
    KillRounds(folder, rounds, random);
    LimitedFiles(folder);
    FullDisk(folder);
    return 0;
}
