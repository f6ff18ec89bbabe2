// Settings text of any kind is read, written and read again, as the program does with its config.ini.
//
// What was written is read back; every other key reads as before; of the lines there were, none but the
// one of the written key is touched; writing the same once more changes nothing. The input is the file, with a last
// line that names section, key and value.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <iterator>

#include "platform/system/files.h"
#include "platform/system/profile_file.h"

namespace {

constexpr std::pair<const char*, const char*> Known[] = {
    {"SETUP", "Som"}, {"SETUP", "Color"}, {"SETUP", "Navegador"}, {"a", "b"}};

void Require(bool held) {
    if (!held) std::abort();
}

bool SameName(std::string_view a, std::string_view b) {
    const auto low = [](std::string_view text) {
        const size_t first = text.find_first_not_of(" \t");
        if (first == text.npos) return std::string();
        std::string out(text.substr(first, text.find_last_not_of(" \t") - first + 1));
        for (char& c : out) c = c >= 'A' && c <= 'Z' ? char(c + 32) : c;
        return out;
    };
    return low(a) == low(b);
}

// A name that can stand in a file: another one is nobody's to look up.
bool IsName(std::string_view text, std::string_view forbidden) {
    return !text.empty() && text.find_first_of(forbidden) == text.npos && text.find_first_of(" \t;") != 0 &&
           text.back() != ' ' && text.back() != '\t';
}

// In memory where there is such a folder.
std::string ScratchFile() {
    const std::string folder = FolderExists("/dev/shm") ? "/dev/shm" : "/tmp";
    return folder + "/fento-fuzz-" + std::to_string(getpid()) + ".ini";
}

std::string Taken(std::string& text, char until) {
    const size_t at = text.rfind(until);
    const std::string behind = at == text.npos ? "" : text.substr(at + 1);
    text.resize(at == text.npos ? text.size() : at);
    return behind;
}

// Every byte of `before` is still there, in order, but for at most one stretch within one line.
bool OnlyOneLineChanged(const std::string& before, const std::string& after) {
    size_t head = 0, tail = 0;
    while (head < before.size() && head < after.size() && before[head] == after[head]) ++head;
    while (tail < before.size() - head && tail < after.size() - head &&
           before[before.size() - 1 - tail] == after[after.size() - 1 - tail])
        ++tail;
    const std::string_view gone = std::string_view(before).substr(head, before.size() - head - tail);
    return gone.find('\n') == gone.npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::string path = ScratchFile();
    static const int registered = std::atexit([] { unlink(path.c_str()); });
    std::string before(reinterpret_cast<const char*>(data), size);
    const std::string value = Taken(before, '\n');
    const std::string key = Taken(before, '\n');
    const std::string section = Taken(before, '\n');
    // Half a line end at the end of the file would become a whole one.
    if (before.ends_with('\r')) before += '\n';
    Require(registered == 0 && WriteFileAtomically(path, before));

    const ProfileFile file(path);
    std::optional<std::string> old[std::size(Known)];
    for (size_t i = 0; i < std::size(Known); ++i) old[i] = file.Read(Known[i].first, Known[i].second);
    if (!file.Write(section, key, value)) {
        Require((section + key + value).find('\r') != std::string::npos && ReadFile(path) == before);
        return 0;
    }
    const std::string after = ReadFile(path).value();
    Require(OnlyOneLineChanged(before, after));
    if (!IsName(section, "[]") || !IsName(key, "=[")) return 0;
    Require(file.Read(section, key) == value);
    for (size_t i = 0; i < std::size(Known); ++i)
        if (!SameName(Known[i].first, section) || !SameName(Known[i].second, key))
            Require(file.Read(Known[i].first, Known[i].second) == old[i]);
    Require(file.Write(section, key, value) && ReadFile(path) == after);
    return 0;
}
