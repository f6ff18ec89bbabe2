// Saves again and again while it is killed, while calls fail, and while another program saves.
//
// A child plays on the desktop without a screen and saves by the menu. Every file tells by itself whether it is whole:
// the pieces stand where the saved number of seconds puts them. Nothing may be lost that was said to be saved.
//
// usage: kill_check FOLDER [KILLS [SEED]]
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <filesystem>
#include <random>
#include <thread>

#include "core/saved_game.h"
#include "platform/system/files.h"
#include "platform/system/profile_file.h"
#include "platform/system/temporary_name.h"
#include "shell/settings.h"
#include "tests/support/game_fixture.h"

using namespace PuzzleModule;
namespace fs = std::filesystem;

namespace {

bool watching = false, halfWrites = false;
std::string calls;  // made while watching
int failing = 0;    // which of them fails, from 1

bool Fails(const char* name) {
    if (!watching) return false;
    calls += std::string(name) + " ";
    return --failing == 0 && (errno = ENOSPC);
}

}  // namespace

// The program's own calls come by here.
template <typename Call>
Call Real(Call, const char* name) {
    return reinterpret_cast<Call>(dlsym(RTLD_NEXT, name));
}
extern "C" int fsync(int file) { return Fails("fsync") ? -1 : Real(fsync, "fsync")(file); }
extern "C" int fchmod(int file, mode_t mode) noexcept {
    return Fails("fchmod") ? -1 : Real(fchmod, "fchmod")(file, mode);
}
extern "C" int rename(const char* from, const char* to) noexcept {
    return Fails("rename") ? -1 : Real(rename, "rename")(from, to);
}
extern "C" ssize_t write(int file, const void* bytes, size_t count) {
    return Fails("write") ? -1 : Real(write, "write")(file, bytes, watching && halfWrites ? (count + 1) / 2 : count);
}
extern "C" int open(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = flags & O_CREAT ? va_arg(more, mode_t) : 0;
    va_end(more);
    return Fails("open") ? -1 : Real(open, "open")(path, flags, mode);
}

namespace {

[[noreturn]] void Fail(const std::string& what) {
    std::fprintf(stderr, "FAILED: %s\n", what.c_str());
    std::_Exit(1);
}
void Require(bool held, const std::string& what) {
    if (!held) Fail(what);
}

// A program on a folder; what it saves is told by its seconds.
struct Program : GameFixture {
    explicit Program(const std::string& place) : place_(place) {
        desktop.pictures[place + ".bmp"] = {{390, 260}, [](Size size) { return PatternSurface(size); }};
        Require(Start(place + ".bmp", 3), "no game");
        AppFolder = place + "/";
    }
    static int16_t PlaceAt(int32_t seconds, int id, int salt) { return int16_t((seconds * 31 + id * salt) % 1000); }
    void Save(int32_t seconds) {
        ElapsedSeconds = seconds;
        for (PieceRec& piece : Pieces) {
            piece.X = PlaceAt(seconds, piece.PieceId, 7);
            piece.Y = PlaceAt(seconds, piece.PieceId, 11);
        }
        desktop.fileAnswers.assign(1, place_ + "/jogo.pzl");
        Menu("mnuSaveGame");
    }
    bool Load() {
        desktop.fileAnswers.assign(1, place_ + "/jogo.pzl");
        ElapsedSeconds = -1;
        Menu("mnuLoadGame");
        return ElapsedSeconds >= 0 && GameRunning;
    }

private:
    std::string place_;
};

// The seconds of a whole game.
int32_t SecondsOf(const std::string& folder) {
    const auto bytes = ReadFile(folder + "/jogo.pzl");
    const auto game = bytes ? ParseSavedGame(*bytes, [](const std::string&) { return true; }) : std::nullopt;
    Require(game && FitOfPieces(*game, {}), folder + " has no whole game");
    for (const SavedPiece& piece : game->Pieces)
        Require(piece.X == Program::PlaceAt(game->ElapsedSeconds, piece.PieceId, 7) &&
                    piece.Y == Program::PlaceAt(game->ElapsedSeconds, piece.PieceId, 11),
                "two games are mixed");
    return game->ElapsedSeconds;
}

std::string Config(const std::string& folder, const char* key) {
    const std::string text = ReadFile(folder + "/config.ini").value_or("");
    size_t lines = 0;
    for (size_t at = 0; (at = text.find("; stays\n", at)) != text.npos; ++at) ++lines;
    Require(lines == 300 && text.ends_with("end\n"), "config.ini is not whole");
    return ReadKey(text, "SETUP", key).value_or("True");
}

void MakeConfig(const std::string& folder) {
    std::string text = "[SETUP]\nSom=True\n";
    for (int i = 0; i < 300; ++i) text += "; stays\n";
    Require(WriteFileAtomically(folder + "/config.ini", text + "[end]\nend=end\n"), "no " + folder);
}

template <typename Part>
pid_t InAChild(Part part) {
    const pid_t child = fork();
    if (child == 0) part(), std::_Exit(0);
    return child;
}
void Await(pid_t child, const std::string& what) {
    int status = 0;
    waitpid(child, &status, 0);
    Require(WIFEXITED(status) && WEXITSTATUS(status) == 0, what);
}

void Kills(const std::string& folder, int kills, std::mt19937& random) {
    int32_t seconds = 1;
    int left = 0;
    for (int round = 0; round < kills; ++round) {
        int pipe[2];
        Require(::pipe(pipe) == 0, "no pipe");
        const pid_t child = InAChild([&] {
            Program program(folder);
            for (int32_t now = seconds;; ++now) {
                program.Save(now);
                if (write(pipe[1], &now, sizeof now) != sizeof now) std::_Exit(1);
                program.Menu("mnuSounds");
            }
        });
        close(pipe[1]);
        int32_t safe = 0;
        Require(read(pipe[0], &safe, sizeof safe) == sizeof safe, "a child did not save at all");
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        while (read(pipe[0], &safe, sizeof safe) == sizeof safe) {
        }
        close(pipe[0]);
        seconds = SecondsOf(folder);
        Require(seconds == safe || seconds == safe + 1, "what was said to be saved is lost");
        (void)Config(folder, "Som");
        ++seconds;
        // What lies about is one unfinished file at most, and the next program sweeps it once it is old.
        int files = 0;
        for (const auto& entry : fs::directory_iterator(folder)) {
            const std::string name = entry.path().filename();
            if (name == "jogo.pzl" || name == "config.ini" || name == "Save") continue;
            Require(IsTemporaryName(name) && ++files == 1, "left behind: " + name);
            fs::last_write_time(entry, fs::file_time_type::clock::now() - std::chrono::hours(1));
            ++left;
        }
    }
    Await(InAChild([&] { Require(Program(folder).Load(), "the last game does not load"); }), "loading");
    std::printf("%d kills in %d saves: every file whole; %d unfinished ones were swept\n", kills, seconds, left);
}

// What keeps a save from coming about: the old files stay whole, nothing is left behind, the game goes on and saves
// again.
void Hindrances(const std::string& folder, Program& program) {
    const std::string usual = "open fchmod write fsync rename open fsync ";
    const auto tries = [&](const std::string& what, bool saves) {
        static int32_t seconds = 10000;
        const int32_t before = SecondsOf(folder), now = ++seconds;
        calls.clear(), watching = true;
        program.Save(now);
        watching = false;
        Require(SecondsOf(folder) == (saves ? now : before), what);
        for (const auto& entry : fs::directory_iterator(folder))
            Require(!IsTemporaryName(entry.path().filename().string()), what + " leaves a file");
        Require(GameRunning && program.main.Timer1.Enabled() && program.desktop.boxes.empty(),
                what + ": the game stops");
    };
    program.Save(1);
    tries("a save", true);
    Require(calls == usual, "the order of calls is " + calls);
    for (int call = 1; call <= 5; ++call) failing = call, tries("call " + std::to_string(call) + " fails", false);
    for (int call = 6; call <= 7; ++call) failing = call, tries("the folder can't be flushed", true);
    halfWrites = true, tries("writes of half", true), halfWrites = false;
    tries("afterwards", true);
}

// Two programs on one folder: each writes settings of its own, both save the same game.
void TwoAtOnce(const std::string& folder) {
    constexpr int Times = 300;
    MakeConfig(folder);
    const auto run = [&](const char* key) {
        return InAChild([&folder, key] {
            Program program(folder);
            for (int i = 1; i <= Times; ++i) {
                WriteIni({(key + std::to_string(i)).c_str(), "", ""}, "x");
                program.Save(i);
            }
        });
    };
    const pid_t first = run("a"), second = run("b");
    while (waitpid(first, nullptr, WNOHANG) == 0) (void)Config(folder, "Som"), (void)SecondsOf(folder);
    Await(second, "the second of two");
    for (const char* key : {"a", "b"})
        for (int i = 1; i <= Times; ++i)
            Require(Config(folder, (key + std::to_string(i)).c_str()) == "x", "one lost what the other wrote");
    std::printf("two programs at once, %d settings and games each: nothing torn, nothing lost\n", Times);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return std::fprintf(stderr, "usage: kill_check FOLDER [KILLS [SEED]]\n"), 2;
    const std::string folder = fs::absolute(argv[1]).string();
    const uint32_t seed = argc > 3 ? uint32_t(std::atoi(argv[3])) : std::random_device{}() & 0xFFFFFF;
    std::printf("seed %u\n", seed), std::fflush(stdout);
    std::mt19937 random{seed};
    fs::create_directories(folder);
    MakeConfig(folder);
    Require(WriteFileAtomically(folder + ".bmp", "the desktop makes its pixels"), "no picture");
    Kills(folder, argc > 2 ? std::atoi(argv[2]) : 200, random);
    Await(InAChild([&] {
              Program program(folder);
              Hindrances(folder, program);
          }),
          "hindrances");
    std::puts("calls that fail one by one: the old file stays whole, the game goes on");
    std::fflush(stdout);
    TwoAtOnce(folder);
}
