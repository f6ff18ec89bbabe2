// Texts and pictures as they must be, in tests/golden.
#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "platform/system/files.h"

// A golden text as this system writes it: paths within it have other separators on Windows. Nothing else differs.
inline std::string Golden(std::string bytes, bool text) {
    if (text) std::ranges::replace(bytes, PathSeparator, '/');
    return bytes;
}

// Compares `bytes` with the golden file of that name. Another file is left in the build folder, and the first line
// that differs is told. With FENTO_ACCEPT_GOLDEN=1 in the environment it becomes the golden one instead.
inline void ExpectGolden(const std::string& name, const std::string& made) {
    const std::string bytes = Golden(made, name.ends_with(".txt"));
    const std::string path = FENTO_SOURCE_DIR "/tests/golden/" + name, actual = FENTO_BUILD_DIR "/" + name;
    const bool accepted = std::getenv("FENTO_ACCEPT_GOLDEN") && WriteFileAtomically(path, bytes);
    const std::string expected = Golden(ReadFile(path).value_or(""), name.ends_with(".txt"));
    if (bytes == expected) return;
    const auto lineAt = [at = std::ranges::mismatch(bytes, expected).in1 - bytes.begin()](const std::string& text) {
        const size_t begin = at > 0 ? text.rfind('\n', size_t(at) - 1) + 1 : 0;
        return text.substr(begin, text.find('\n', size_t(at)) - begin);
    };
    ADD_FAILURE() << path << " is another" << (accepted || !WriteFileAtomically(actual, bytes) ? "" : " than " + actual)
                  << (name.ends_with(".txt") ? "\n  is        " + lineAt(bytes) + "\n  should be " + lineAt(expected)
                                             : "");
}
