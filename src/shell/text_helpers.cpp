// String routines whose edges differ from those of the standard library.
#include "shell/text_helpers.h"

#include <algorithm>
#include <limits>

#include "core/code_page.h"

namespace vb5 {

namespace {
constexpr size_t LastPosition = size_t(std::numeric_limits<int16_t>::max());

// Bytes by which a text may grow. One that grows beyond them does not end.
constexpr size_t MostGrowth = 1 << 20;

void Fence(std::string& text, const std::string& delimiter) {
    if (!text.starts_with(delimiter)) text.insert(0, delimiter);
    if (!text.ends_with(delimiter)) text += delimiter;
}

// What stands from `start` to the next delimiter, behind which `start` goes. Empty beyond the last one.
std::string NextField(const std::string& text, const std::string& delimiter, size_t& start) {
    const size_t from = start, end = text.find(delimiter, from);
    start = end == std::string::npos ? end : end + delimiter.size();
    return end == std::string::npos ? std::string() : text.substr(from, end - from);
}
}  // namespace

std::string Replace(const std::string& Expression, const std::string& Find, const std::string& ReplaceWith) {
    if (Find.empty() || ReplaceWith.find(Find) != std::string::npos) return Expression;
    // `done` holds no Find, `rest` is still to be searched, its first byte last. What is put in joins the rest, and an
    // occurrence that begins in what is done is found with its last byte: nothing is searched twice.
    std::string done, rest(Expression.rbegin(), Expression.rend());
    while (!rest.empty()) {
        done += rest.back();
        rest.pop_back();
        if (!done.ends_with(Find)) continue;
        done.resize(done.size() - Find.size());
        rest.append(ReplaceWith.rbegin(), ReplaceWith.rend());
        if (done.size() + rest.size() > Expression.size() + MostGrowth) return Expression;
    }
    return done;
}

std::string FieldAt(std::string& Text, const std::string& Delimiter, int16_t Index) {
    if (Delimiter.empty() || Index < 1) return {};
    Fence(Text, Delimiter);
    size_t start = 0;
    for (int i = 0; i < Index; ++i) (void)NextField(Text, Delimiter, start);
    return NextField(Text, Delimiter, start);
}

std::vector<std::string> Split(const std::string& Expression, const std::string& Delimiter) {
    std::vector<std::string> fields;
    if (Delimiter.empty()) return fields;
    const std::string marker = Replace("/#(!a53x", Delimiter, "");
    std::string text = Expression + Delimiter + marker + Delimiter;
    // A delimiter that overlaps itself can swallow the start of the marker: the length bounds the walk then.
    const size_t most = std::min(text.size() / Delimiter.size(), LastPosition);
    Fence(text, Delimiter);
    size_t start = 0;
    (void)NextField(text, Delimiter, start);  // in front of the first delimiter
    for (size_t i = 1; i <= most; ++i) {
        std::string field = NextField(text, Delimiter, start);
        if (field == marker) break;
        fields.push_back(std::move(field));
    }
    return fields;
}

int16_t InStrRev(const std::string& Text, const std::string& Find) {
    int16_t last = 0;
    std::string_view rest = Text;
    for (size_t i = 1; i <= LastPosition && !rest.empty(); ++i) {
        if (rest.starts_with(Find)) last = int16_t(i);
        rest.remove_prefix(FirstCharacters(rest, 1).size());
    }
    return last;
}

}  // namespace vb5
