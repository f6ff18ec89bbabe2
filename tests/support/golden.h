// Texts and pictures as they must be, in tests/golden.
#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "platform/system/files.h"

// A text whose paths are written as elsewhere: on Windows they have other separators, doubled where they are quoted.
inline std::string WithSlashes(std::string text) {
    for (size_t at = 0; PathSeparator != '/' && (at = text.find(PathSeparator, at)) != text.npos; ++at)
        text.replace(at, text.substr(at + 1, 1) == std::string(1, PathSeparator) ? 2 : 1, "/");
    return text;
}

// Compares `bytes` with the golden file of that name. Another file is left in the build folder, and the first line
// that differs is told. With FENTO_ACCEPT_GOLDEN=1 in the environment it becomes the golden one instead.
inline void ExpectGolden(const std::string& name, const std::string& made) {
    const std::string bytes = name.ends_with(".txt") ? WithSlashes(made) : made;
    const std::string path = FENTO_SOURCE_DIR "/tests/golden/" + name, actual = FENTO_BUILD_DIR "/" + name;
    const bool accepted = std::getenv("FENTO_ACCEPT_GOLDEN") && WriteFileAtomically(path, bytes);
    const std::string golden = ReadFile(path).value_or(""),
                      expected = name.ends_with(".txt") ? WithSlashes(golden) : golden;
    if (bytes == expected) return;
    const size_t at = size_t(std::ranges::mismatch(bytes, expected).in1 - bytes.begin());
    const size_t line = at > 0 ? bytes.rfind('\n', at - 1) + 1 : 0;
    ADD_FAILURE() << path << " is another" << (accepted || !WriteFileAtomically(actual, bytes) ? "" : " than " + actual)
                  << "\n  is        " << testing::PrintToString(bytes.substr(line, at - line + 100)) << "\n  should be "
                  << testing::PrintToString(expected.substr(line, at - line + 100));
}
