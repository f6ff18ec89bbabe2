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
    if (!Text.starts_with(Delimiter)) Text.insert(0, Delimiter);
    if (!Text.ends_with(Delimiter)) Text += Delimiter;

    size_t start = 0;  // of the field behind the delimiter reached
    for (int i = 0; i < Index; ++i) {
        const size_t at = Text.find(Delimiter, start);
        if (at == std::string::npos) return {};
        start = at + Delimiter.size();
    }
    const size_t end = Text.find(Delimiter, start);
    return end == std::string::npos ? std::string() : Text.substr(start, end - start);
}

std::vector<std::string> Split(const std::string& Expression, const std::string& Delimiter) {
    std::vector<std::string> fields;
    if (Delimiter.empty()) return fields;
    const std::string marker = Replace("/#(!a53x", Delimiter, "");
    std::string text = Expression + Delimiter + marker + Delimiter;
    // A delimiter that overlaps itself can swallow the start of the marker: the length bounds the walk then.
    const size_t most = std::min(text.size() / Delimiter.size(), LastPosition);
    for (size_t i = 1; i <= most; ++i) {
        std::string field = FieldAt(text, Delimiter, int16_t(i));
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
