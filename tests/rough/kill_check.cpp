// Saves again and again while it is killed at random moments, and saves where there is no room.
//
// A child plays on the desktop without a screen and saves by the menu, without a pause; the parent kills it and
// looks at what is there. Every file tells by itself whether it is whole: the pieces stand where the saved number
// of seconds puts them. Nothing may be lost that was said to be saved, and beside the files nothing may lie about
// but the unfinished new file of a killed save.
//
// usage: kill_check FOLDER [ROUNDS [SEED]]
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <thread>

#include "core/saved_game.h"
#include "platform/system/files.h"
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
    const auto fit = game ? FitOfPieces(*game, {}) : std::nullopt;
    if (!fit || fit->GridCols != Cols || fit->GridRows != Rows)
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

// Runs a part of the check in a child, which ends with it.
template <typename Part>
pid_t InAChild(Part part) {
    const pid_t child = fork();
    if (child < 0) Fail("no process");
    if (child != 0) return child;
    part();
    std::_Exit(0);
}

int StatusOf(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

// Lets a child save for a while, then kills it. The last number of seconds it said to be saved.
int32_t KillOne(const std::string& folder, int32_t from, std::chrono::microseconds after) {
    int pipe[2];
    if (::pipe(pipe) != 0) Fail("no pipe");
    const pid_t child = InAChild([&] { SaveForEver(folder, from, pipe[1]); });
    close(pipe[1]);
    int32_t safe = 0;
    if (read(pipe[0], &safe, sizeof safe) != sizeof safe) Fail("a child did not save at all");
    std::this_thread::sleep_for(after);
    kill(child, SIGKILL);
    const int status = StatusOf(child);
    if (!WIFSIGNALED(status) || WTERMSIG(status) != SIGKILL) Fail("a child ended by itself");
    while (read(pipe[0], &safe, sizeof safe) == sizeof safe) {
    }
    close(pipe[0]);
    return safe;
}

void KillRounds(const std::string& folder, int rounds, std::mt19937& random) {
    if (!WriteFileAtomically(folder + ConfigName, ConfigText("True"))) Fail("no " + folder);
    int32_t seconds = 1;
    for (int round = 0; round < rounds; ++round) {
        const int32_t safe = KillOne(folder, seconds, std::chrono::microseconds(random() % 40000));
        const int32_t found = SecondsOf(folder + GameName);
        if (found != safe && found != safe + 1)
            Fail("saved " + std::to_string(safe) + " but found " + std::to_string(found));
        CheckConfig(folder);
        if (ClearLeftovers(folder) > 1) Fail("several unfinished files of one killed program");
        seconds = found + 1;
    }
    std::printf("killed %d times in %d saves: every file whole\n", rounds, seconds - 1);
}

// Saves once, then another game where files may not grow, which must fail without a trace.
void SaveWithoutRoom(const std::string& folder) {
    const int status = StatusOf(InAChild([&folder] {
        GameFixture play;
        play.StartGrid(Cols, Rows);
        AppFolder = folder + "/";
        if (!WriteFileAtomically(folder + ConfigName, ConfigText("True"))) Fail("no room to begin with");
        LayOut(500);
        Save(play, folder);
        if (SecondsOf(folder + GameName) != 500) Fail("not saved with room");
        const rlimit limit{100, 100};
        std::signal(SIGXFSZ, SIG_IGN);
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) Fail("no limit");
        LayOut(900);
        Save(play, folder);
        play.Menu("mnuSounds");
        if (SecondsOf(folder + GameName) != 500) Fail("a save without room changed the old game");
        if (ReadFile(folder + ConfigName) != ConfigText("True")) Fail("no room cost the settings");
        if (!GameRunning || !play.main.Timer1.Enabled() || !play.desktop.boxes.empty()) Fail("the game did not go on");
    }));
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) Fail("files that may not grow");
    if (ClearLeftovers(folder) != 0) Fail("a failed save left its new file behind");
    std::printf("files that may not grow: the old ones stay whole, nothing is left behind\n");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return std::fprintf(stderr, "usage: kill_check FOLDER [ROUNDS [SEED]]\n"), 2;
    const std::string folder = fs::absolute(argv[1]).string();
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 200;
    const uint32_t seed = argc > 3 ? uint32_t(std::atoi(argv[3])) : std::random_device{}() & 0xFFFFFF;
    std::printf("seed %u\n", seed);
    std::fflush(stdout);
    std::mt19937 random{seed};
    fs::create_directories(folder);
    KillRounds(folder, rounds, random);
    SaveWithoutRoom(folder);
    return 0;
}
