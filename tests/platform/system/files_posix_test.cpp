// What the program does with paths, folders and files, on a small tree: what it answers, and what the tree is then.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <set>

#include "platform/system/files.h"
#include "platform/system/machine.h"
#include "platform/system/temporary_name.h"
#include "platform/system/user_settings.h"
#include "tests/support/temp_folder.h"
#include "tests/support/transcript.h"
#include "tests/support/variables.h"

namespace fs = std::filesystem;

namespace {

struct Files : testing::Test {
    Files() {
        transcript.changing = {folder.Path(), "FOLDER"};
        transcript.state = [this] {
            State all;
            for (const auto& entry : fs::recursive_directory_iterator(folder.Path())) {
                const fs::file_status status = entry.symlink_status();
                const std::string name = entry.path().lexically_relative(folder.Path());
                const std::string holds = fs::is_symlink(status)        ? fs::read_symlink(entry).string()
                                          : fs::is_regular_file(status) ? folder.Read(name)
                                                                        : "";
                all[name] =
                    testing::PrintToString(std::tuple(int(status.type()), int(status.permissions()),
                                                      holds.size() < 200 ? holds : std::to_string(holds.size())));
            }
            return all;
        };
    }
    ~Files() override { umask(mask); }
    void Link(const std::string& name, const std::string& to) { fs::create_symlink(to, folder / name); }
    // No file may grow beyond `bytes`.
    static void Limit(rlim_t bytes) {
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    const mode_t mask = umask(022);
    TempFolder folder;
    Transcript transcript;
};

}  // namespace

TEST_F(Files, AreFoundListedReadAndToldApart) {
    for (const char* path : {"/a/b.pzl", "/b", "b", "/a/b//", "/", "//", "", "/a//b", "C:\\x\\y", "a/..", "/a/./b/.",
                             "/a/b/..", "/..", "/../../a", "/a/b/../../c", "/a/..b/..."})
        transcript.Write(std::string(path) + " in " + FolderOf(path) + " is " + FileTitle(path) + ", closed " +
                         WithSeparator(path) + (*path == '/' ? ", normal " + NormalPath(path) : ""));
    DO(NormalPath("x/../y") == CurrentFolder() + "/y" && CurrentFolder() == fs::current_path());
    DO(folder.Write("file", "bytes"), folder.Write("Photo.JPG", ""), folder.Write("\xFF\xFE.jpg", ""));
    DO(folder.Write(".hidden", ""), folder.MakeFolder("ferias.jpg"), folder.MakeFifo("fifo.jpg"), Link("link", "file"));
    for (const char* name : {"file", "link", "ferias.jpg", "fifo.jpg", "/dev/zero", "missing", "file/below", ""}) {
        const std::string path = *name && *name != '/' ? folder / name : name;
        transcript.Write(name +
                         testing::PrintToString(std::tuple(FolderExists(path), FileExists(path), IsRegularFile(path),
                                                           FileLen(path), ReadFile(path), CanBeListed(path),
                                                           IsWritableFolder(path), close(OpenRegular(path)) == 0)));
    }
    for (const int most : {5, 4}) DO(ReadFile(folder / "file", most));

    // The rest of the listing that `first` began, what comes behind its end, and which listing it is.
    const auto rest = [before = ListingNumber()](std::optional<std::string> first) {
        std::multiset<std::string> names{first.value_or("none")};
        for (auto name = NextEntry(); name && !name->empty(); name = NextEntry()) names.insert(*name);
        return std::tuple{names, NextEntry(), ListingNumber() - before};
    };
    for (const char* name : {"", "ferias.jpg", "missing", "file"}) DO(rest(FirstEntry(folder / name)));
    DO(std::tuple{FirstEntry(folder.Path()), FirstEntry(folder / "missing"), NextEntry()});  // ends the listing before
    for (const char* name : {"b", "A", "É", "é1", "á", "Ç", "×", "÷", "Z", "z0", ".x", "B2", "a5", "IMAGENS"})
        folder.MakeFolder(std::string("folders/") + name);
    DO(folder.Write("folders/c", ""), Link("folders/Link", "A"), SubFolders(folder / "folders"));
    DO(FindIgnoringCase(folder / "folders/", "Imagens"));
    for (const char* more : {"imagens", "Imagens"})
        for (const char* name : {"Imagens", "imagens", "iMAGENS", "Imagem", "é"})
            DO(folder.MakeFolder(std::string("folders/") + more), FindIgnoringCase(folder / "folders", name));
    for (const char* name : {"new", "new", "a/b"}) DO(MkDir(folder / name));
    for (const char* name : {"a/b", "a/b", "file/below"}) DO(MkDirs(folder / name));
    DO(RemoveFile(folder / "file"), RemoveFile(folder / "new"), RemoveFile(folder / "a"), RemoveFile(folder / "none"));
    SetVariable("HOME", "/home/ana"), SetVariable("XDG_CONFIG_HOME", "relative"), SetVariable("XDG_DATA_HOME", "//");
    DO(std::pair{ConfigurationHome(), DataHome()});
    const auto volumes = MachineVolumes("/home/ana"), root = MachineVolumes("/");
    DO(std::tuple{FileTitle(ProgramFile()), volumes[0].root + volumes[0].label, volumes[1].root + volumes[1].label,
                  volumes.size() - root.size()});
}

TEST_F(Files, AreReplacedWholeOrNotAtAll) {
    const std::string longName(255, 'n');
    for (const std::string& bytes : {std::string("a\0b\r\n", 5), std::string(3'000'000, 'x'), std::string()})
        DO(WriteFileAtomically(folder / longName, bytes) && ReadFile(folder / longName) == bytes);
    DO(folder.Write("file", "old"), folder.MakeFifo("fifo"), Link("loop", "loop"), folder.MakeFolder("folder"));
    std::signal(SIGXFSZ, SIG_IGN), Limit(8192);
    for (const char* name : {"file", "other"}) DO(WriteFileAtomically(folder / name, std::string(20000, 'x')));
    Limit(RLIM_INFINITY);
    // What is no file, and where none can be.
    for (const char* name : {"fifo", "loop", "folder", "file/below", "missing/game.pzl", "new/", ""})
        DO(WriteFileAtomically(*name ? folder / name : "", "bytes"));
    // Permissions stay; those of a new file are the player's own.
    for (const mode_t mode : {0600u, 0664u, 0755u})
        DO(chmod((folder / "file").c_str(), mode) == 0 && WriteFileAtomically(folder / "file", "new"));
    DO(umask(027), WriteFileAtomically(folder / "fresh", "new"));
    // Links are followed to their end, whether there is a file yet or not.
    DO(folder.Write("deep/target", "old"), Link("link", "deep/middle"), Link("deep/middle", folder / "deep/target"));
    DO(Link("dangling", "deep/not-yet"), WriteFileAtomically(folder / "dangling", "made"));
    DO(WriteFileAtomically(folder / "link", "new"));
    const fs::path before = fs::current_path();
    DO(fs::current_path(folder.Path()), WriteFileAtomically("here", "x") && WriteFileAtomically("link", "here too"));
    fs::current_path(before);
}

// Of all that looks like the new file of a killed program only what surely is one goes, with the next write beside it.
TEST_F(Files, OfKilledProgramsAreSweptByTheNextWriteBesideThem) {
    const auto name = [](int number) { return ".fento-" + std::string(31, 'a') + std::to_string(number) + ".tmp"; };
    for (const std::string& left :
         {name(0), name(1), name(2), name(3) + "p", "X" + name(4), name(5).replace(8, 1, "X")})
        fs::last_write_time(folder.Write(left, "x"), fs::file_time_type::clock::now() - std::chrono::seconds(630));
    fs::last_write_time(folder.Write(name(6), "x"), fs::file_time_type::clock::now() - std::chrono::seconds(500));
    fs::create_hard_link(folder / name(1), folder / "another name");
    Link(name(7), name(1)), folder.MakeFolder(name(8));
    const int lock = open((folder / name(2)).c_str(), O_RDONLY);
    DO(flock(lock, LOCK_SH), WriteFileAtomically(folder / "game.pzl", "new"));
    DO(close(lock), WriteFileAtomically(folder / "game.pzl", "newer"));
    DO(std::tuple(IsTemporaryName(TemporaryName()), TemporaryName() == TemporaryName()));
}
