// Replacing a file: whole or not at all, and nothing left behind.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "platform/system/files.h"
#include "platform/system/stale_files.h"
#include "platform/system/temporary_name.h"
#include "tests/support/temp_folder.h"

namespace {

// No file may grow beyond `bytes` while this lives.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit before_{};
    void (*handler_)(int);
};

mode_t ModeOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

TEST(WriteFileAtomically, MakesAndReplacesFilesOfAnyBytes) {
    TempFolder folder;
    const std::string longName(255, 'n'), path = folder / longName;
    for (const std::string& bytes :
         {std::string("new"), std::string("a\0b\r\n", 5), std::string(3'000'000, 'x'), std::string()}) {
        ASSERT_TRUE(WriteFileAtomically(path, bytes));
        EXPECT_EQ(folder.Read(longName), bytes);
        EXPECT_EQ(folder.Entries(), 1);
    }
}

TEST(WriteFileAtomically, FailedWriteKeepsTheOldFileAndLeavesNothing) {
    TempFolder folder;
    const std::string path = folder.Write("game.pzl", "old");
    {
        const FileSizeLimit full(8192);
        EXPECT_FALSE(WriteFileAtomically(path, std::string(20000, 'x')));
        EXPECT_FALSE(WriteFileAtomically(folder / "other.pzl", std::string(20000, 'x')));
    }
    EXPECT_EQ(folder.Read("game.pzl"), "old");
    EXPECT_EQ(folder.Entries(), 1);
}

TEST(WriteFileAtomically, RefusesTargetsThatAreNoFiles) {
    TempFolder folder;
    const std::string fifo = folder / "fifo", loop = folder / "loop";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    std::filesystem::create_symlink("loop", loop);
    const std::string inner = folder.MakeFolder("folder");
    const std::string inside = folder.Write("file", "old") + "/below";
    const int before = folder.Entries();
    for (const std::string& target :
         {fifo, loop, inner, inside, folder / "missing/game.pzl", folder / "new/", std::string()})
        EXPECT_FALSE(WriteFileAtomically(target, "bytes")) << target;
    EXPECT_EQ(folder.Entries(), before);
    EXPECT_TRUE(std::filesystem::is_fifo(fifo));
    EXPECT_EQ(folder.Read("file"), "old");
}

TEST(WriteFileAtomically, KeepsPermissionsAndHeedsTheMaskForANewFile) {
    TempFolder folder;
    const std::string path = folder.Write("game.pzl", "old"), fresh = folder / "fresh.pzl";
    for (const mode_t mode : {0600u, 0664u, 0755u}) {
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        ASSERT_TRUE(WriteFileAtomically(path, "new"));
        EXPECT_EQ(ModeOf(path), mode);
    }
    const mode_t mask = umask(027);
    EXPECT_TRUE(WriteFileAtomically(fresh, "new"));
    umask(mask);
    EXPECT_EQ(ModeOf(fresh), 0640u);
}

TEST(WriteFileAtomically, WritesThroughLinksToTheirEnd) {
    TempFolder folder;
    folder.Write("deep/target.pzl", "old");
    std::filesystem::create_symlink("deep/middle", folder / "link");
    std::filesystem::create_symlink("target.pzl", folder / "deep/middle");
    std::filesystem::create_symlink("deep/not-yet.pzl", folder / "dangling");
    ASSERT_TRUE(WriteFileAtomically(folder / "link", "new"));
    ASSERT_TRUE(WriteFileAtomically(folder / "dangling", "made"));
    EXPECT_EQ(folder.Read("deep/target.pzl"), "new");
    EXPECT_EQ(folder.Read("deep/not-yet.pzl"), "made");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "dangling"));
}

// Of all that looks like the new file of a killed program only what surely is one goes, with the next write beside it.
TEST(WriteFileAtomically, SweepsWhatAKilledProgramLeft) {
    const TempFolder folder;
    namespace fs = std::filesystem;
    const auto age = [&](const std::string& name, std::chrono::seconds seconds) {
        fs::last_write_time(folder / name, fs::file_time_type::clock::now() - seconds);
        return name;
    };
    const auto old = [&](const std::string& name) { return folder.Write(name, "x"), age(name, LongestWrite * 2); };
    const std::string left = old(TemporaryName()), young = age(old(TemporaryName()), LongestWrite / 2);
    const std::string twin = old(TemporaryName()), locked = old(TemporaryName()), link = TemporaryName();
    const std::string inFolder = TemporaryName();
    folder.MakeFolder(inFolder);
    fs::create_hard_link(folder / twin, folder / "another name");
    fs::create_symlink(twin, folder / link);
    const int lock = open((folder / locked).c_str(), O_RDONLY);
    ASSERT_EQ(flock(lock, LOCK_SH), 0);
    std::vector<std::string> kept{young, twin, locked, link, inFolder, "another name"};
    for (const size_t changed : {size_t(0), size_t(8), left.size() - 1}) {
        std::string name = TemporaryName();
        name[changed] = 'X';
        kept.push_back(old(name));
    }
    ASSERT_TRUE(WriteFileAtomically(folder / "game.pzl", "new"));
    EXPECT_FALSE(folder.Has(left));
    for (const std::string& name : kept) EXPECT_TRUE(fs::exists(fs::symlink_status(folder / name))) << name;
    close(lock);
    ASSERT_TRUE(WriteFileAtomically(folder / "game.pzl", "new"));
    EXPECT_FALSE(folder.Has(locked));
}

}  // namespace
