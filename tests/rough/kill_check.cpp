// Saves again and again while it is killed, while calls fail, and while another program saves.
//
// A child plays on the desktop without a screen and saves by the menu. Every file tells by itself whether it is whole:
// the pieces stand where the saved number of seconds puts them. Nothing may be lost that was said to be saved.
//
// usage: kill_check FOLDER [KILLS [SEED]]
#include <dlfcn.h>
#include <fcntl.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
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

void Require(bool held, const std::string& what) {
    if (held) return;
    std::fprintf(stderr, "FAILED: %s\n", what.c_str());
    std::_Exit(1);
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

// Settings of some length, which stays.
const std::string Stays(3000, ';');
void MakeConfig(const std::string& folder) {
    Require(WriteFileAtomically(folder + "/config.ini", "[SETUP]\nSom=True\n" + Stays + "\n[end]\nend=end\n"),
            "no file");
}
std::string Config(const std::string& folder, const std::string& key) {
    const std::string text = ReadFile(folder + "/config.ini").value_or("");
    Require(text.find(Stays) != text.npos && text.ends_with("end\n"), "config.ini is not whole");
    return ReadKey(text, "SETUP", key.c_str()).value_or("True");
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

// One unfinished file at most lies about; the next program sweeps it once it is old.
int Unfinished(const std::string& folder) {
    int files = 0;
    for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename();
        if (name == "jogo.pzl" || name == "config.ini" || name == "Save") continue;
        Require(IsTemporaryName(name) && ++files == 1, "left behind: " + name);
        fs::last_write_time(entry, fs::file_time_type::clock::now() - std::chrono::hours(1));
    }
    return files;
}

void Kills(const std::string& folder, int kills, std::mt19937& random) {
    // What was said to be saved; the children's as well.
    auto& safe =
        *new (mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)) std::atomic<int32_t>(0);
    int left = 0;
    for (int round = 0; round < kills; ++round) {
        const int32_t before = safe;
        const pid_t child = InAChild([&] {
            for (Program program(folder);; program.Menu("mnuSounds")) program.Save(safe + 1), ++safe;
        });
        while (safe == before) Require(waitpid(child, nullptr, WNOHANG) == 0, "a child did not save at all");
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const int32_t seconds = SecondsOf(folder);
        Require(seconds == safe || seconds == safe + 1, "what was said to be saved is lost");
        safe = seconds;
        (void)Config(folder, "Som");
        left += Unfinished(folder);
    }
    std::printf("%d kills in %d saves: every file whole; %d unfinished ones were swept\n", kills, int(safe), left);
}

// What keeps a save from coming about: the old files stay whole, nothing is left behind, the game goes on and saves
// again.
void Hindrances(const std::string& folder) {
    Program program(folder);
    rlimit files{};
    getrlimit(RLIMIT_NOFILE, &files);
    auto tries = [&, seconds = 10000](const std::string& what, bool saves, rlim_t most = 1000) mutable {
        const int32_t before = SecondsOf(folder), now = ++seconds;
        const rlimit some{most, files.rlim_max};
        setrlimit(RLIMIT_NOFILE, &some);
        calls.clear(), watching = true;
        program.Save(now);
        watching = false;
        setrlimit(RLIMIT_NOFILE, &files);
        Require(SecondsOf(folder) == (saves ? now : before), what);
        for (const auto& entry : fs::directory_iterator(folder))
            Require(!IsTemporaryName(entry.path().filename().string()), what + " leaves a file");
        Require(GameRunning && program.main.Timer1.Enabled() && program.desktop.boxes.empty(),
                what + ": the game stops");
    };
    tries("a save", true);
    Require(calls == "open fchmod write fsync rename open fsync ", "the order of calls is " + calls);
    for (int call = 1; call <= 7; ++call)  // the last two flush the folder
        failing = call, tries("call " + std::to_string(call) + " fails", call > 5);
    halfWrites = true, tries("writes of half", true), halfWrites = false;
    tries("no descriptors", false, 0);
    tries("afterwards", true);
    std::puts("calls that fail one by one, no descriptors: the old file stays whole, the game goes on");
    // A disk of this program alone.
    if (unshare(CLONE_NEWNS) != 0 || mount("", "/", "", MS_REC | MS_PRIVATE, "") != 0 ||
        mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=64k") != 0)
        return (void)std::puts("skipped without the right to mount: a full disk");
    MakeConfig(folder), program.Save(1);
    std::ofstream(folder + "/fill") << std::string(1 << 20, 'x');
    tries("a full disk", false);
    fs::remove(folder + "/fill");
    tries("room again", true);
    std::puts("a full disk: the same");
}

// Two programs on one folder: each writes settings of its own, both save the same game.
void TwoAtOnce(const std::string& folder) {
    constexpr int Times = 300;
    const auto run = [&](const std::string& key) {
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
    for (const std::string key : {"a", "b"})
        for (int i = 1; i <= Times; ++i)
            Require(Config(folder, key + std::to_string(i)) == "x", "one lost what the other wrote");
    std::printf("two programs at once, %d settings and games each: nothing torn, nothing lost\n", Times);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return std::fprintf(stderr, "usage: kill_check FOLDER [KILLS [SEED]]\n"), 2;
    const std::string folder = fs::absolute(argv[1]).string();
    const uint32_t seed = argc > 3 ? uint32_t(std::atoi(argv[3])) : std::random_device{}() & 0xFFFFFF;
    std::setvbuf(stdout, nullptr, _IONBF, 0);  // children end without a flush
    std::printf("seed %u\n", seed);
    std::mt19937 random{seed};
    fs::create_directories(folder);
    MakeConfig(folder);
    Require(WriteFileAtomically(folder + ".bmp", "the desktop makes its pixels"), "no picture");
    Kills(folder, argc > 2 ? std::atoi(argv[2]) : 200, random);
    Await(InAChild([&] { Hindrances(folder); }), "hindrances");
    TwoAtOnce(folder);
}
