// Private-profile text, line by line. A file is cut into lines that keep their ends,
// so that what is not changed is written back byte for byte.
//
// The first section of a name counts, and in it the first key of a name. A line whose
// first character is ';' is a comment.
#include "platform/system/profile_file.h"

#include <algorithm>
#include <vector>

#include "platform/system/files.h"
#include "platform/system/folder_lock.h"

namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view Blanks = " \t";
constexpr std::string_view LineBreaks = "\r\n";

std::string_view Trimmed(std::string_view text) {
    const size_t first = text.find_first_not_of(Blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

bool EqualNames(std::string_view a, std::string_view b) {
    const auto low = [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; };
    return std::ranges::equal(a, b, {}, low, low);
}

struct Line {
    std::string_view text;  // without its end
    std::string_view end;   // "\n", "\r\n", or nothing in a last line

    bool IsSection() const { return Trimmed(text).starts_with('['); }
    std::string_view SectionName() const {
        const std::string_view inside = Trimmed(text).substr(1);
        return Trimmed(inside.substr(0, inside.find(']')));
    }
    // Where '=' stands; npos in a comment or any other line.
    size_t EqualSign() const {
        return Trimmed(text).starts_with(';') || IsSection() ? std::string_view::npos : text.find('=');
    }
    bool IsKey(std::string_view key) const {
        const size_t at = EqualSign();
        return at != std::string_view::npos && EqualNames(Trimmed(text.substr(0, at)), key);
    }
};

// The lines of `content`, to which they refer.
std::vector<Line> SplitLines(std::string_view content) {
    std::vector<Line> lines;
    if (content.starts_with(ByteOrderMark)) content.remove_prefix(ByteOrderMark.size());
    while (!content.empty()) {
        const size_t feed = std::min(content.find('\n'), content.size());
        const size_t length = feed > 0 && feed < content.size() && content[feed - 1] == '\r' ? feed - 1 : feed;
        const size_t whole = std::min(feed + 1, content.size());
        lines.push_back({content.substr(0, length), content.substr(length, whole - length)});
        content.remove_prefix(whole);
    }
    return lines;
}

struct Place {
    size_t begin = 0, end = 0;  // the section's lines behind its own one
    size_t key = 0;             // `end` if the key is missing
    bool found = false;         // the section
};

Place Find(const std::vector<Line>& lines, std::string_view section, std::string_view key) {
    const auto isSection = [](const Line& line) { return line.IsSection(); };
    const auto ours = std::ranges::find_if(
        lines, [&](const Line& line) { return line.IsSection() && EqualNames(line.SectionName(), Trimmed(section)); });
    if (ours == lines.end()) return {lines.size(), lines.size(), lines.size(), false};
    const auto end = std::find_if(ours + 1, lines.end(), isSection);
    const auto found = std::find_if(ours + 1, end, [&](const Line& line) { return line.IsKey(Trimmed(key)); });
    const auto index = [&](auto at) { return size_t(at - lines.begin()); };
    return {index(ours + 1), index(end), index(found), true};
}

bool Enclosed(std::string_view value) {
    return value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
}

// A value that a reader would trim goes between quotes.
std::string Written(std::string_view value) {
    if (Trimmed(value) == value && !Enclosed(value)) return std::string(value);
    return '"' + std::string(value) + '"';
}

bool HasLineBreak(std::string_view text) { return text.find_first_of(LineBreaks) != std::string_view::npos; }

// The bytes of a file with one key replaced or added.
std::string Changed(std::string_view content, std::string_view section, std::string_view key, std::string_view value) {
    const std::vector<Line> lines = SplitLines(content);
    const Place place = Find(lines, section, key);
    const std::string lineEnd(!lines.empty() && !lines.front().end.empty() ? lines.front().end : "\n");
    const std::string added = std::string(key) + '=' + Written(value) + lineEnd;

    // A new key stands behind the section's last line that says something.
    size_t insertAt = place.end;
    while (insertAt > place.begin && Trimmed(lines[insertAt - 1].text).empty()) --insertAt;

    std::string out(content.starts_with(ByteOrderMark) ? ByteOrderMark : "");
    const bool replace = place.found && place.key < place.end;
    for (size_t i = 0; i <= lines.size(); ++i) {
        if (place.found && !replace && i == insertAt) {
            if (lines[i - 1].end.empty()) out += lineEnd;
            out += added;
        }
        if (i == lines.size()) break;
        const auto& [text, end] = lines[i];
        if (replace && i == place.key) {
            // Name and blanks round '=' stay as they were.
            const size_t behind = std::min(text.find_first_not_of(Blanks, text.find('=') + 1), text.size());
            out.append(text.substr(0, behind)).append(Written(value)).append(end);
        } else {
            out.append(text).append(end);
        }
    }
    if (!place.found) {
        if (!lines.empty() && lines.back().end.empty()) out += lineEnd;
        out += '[' + std::string(section) + ']' + lineEnd + added;
    }
    return out;
}

}  // namespace

std::optional<std::string> ReadKey(std::string_view content, std::string_view section, std::string_view key) {
    const std::vector<Line> lines = SplitLines(content);
    const Place place = Find(lines, section, key);
    if (place.key == place.end) return std::nullopt;
    const Line& line = lines[place.key];
    std::string_view value = Trimmed(line.text.substr(line.EqualSign() + 1));
    if (Enclosed(value)) value = value.substr(1, value.size() - 2);
    return std::string(value);
}

std::optional<std::string> WithKey(std::string_view content, std::string_view section, std::string_view key,
                                   std::string_view value) {
    // A line break would end the line before its time.
    if (HasLineBreak(section) || HasLineBreak(key) || HasLineBreak(value)) return std::nullopt;
    return Changed(content, section, key, value);
}

std::optional<std::string> ProfileFile::Read(std::string_view section, std::string_view key) const {
    const std::optional<std::string> content = ReadFile(path_);
    return content ? ReadKey(*content, section, key) : std::nullopt;
}

bool ProfileFile::Write(std::string_view section, std::string_view key, std::string_view value) const {
    const FolderLock turn(FolderOf(path_));
    const std::optional<std::string> content = ReadFile(path_);
    // What exists and cannot be read is not replaced.
    if (!content && (FileExists(path_) || FolderExists(path_))) return false;
    const std::optional<std::string> changed = WithKey(content.value_or(""), section, key, value);
    return changed && WriteFileAtomically(path_, *changed);
}
