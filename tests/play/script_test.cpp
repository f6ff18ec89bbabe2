// Recorded scripts of mouse and menu, each through the real handlers.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "tests/support/mouse_script.h"

namespace {

std::vector<std::string> ScriptNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(FENTO_SOURCE_DIR "/tests/scripts"))
        if (entry.path().extension() == ".txt") names.push_back(entry.path().stem().string());
    std::ranges::sort(names);
    return names;
}

}  // namespace

class Script : public testing::TestWithParam<std::string> {};

TEST_P(Script, GoesAsItExpects) {
    for (const std::string& failure : PlayScript(FENTO_SOURCE_DIR "/tests/scripts/" + GetParam() + ".txt"))
        ADD_FAILURE() << failure;
}

INSTANTIATE_TEST_SUITE_P(Recorded, Script, testing::ValuesIn(ScriptNames()),
                         [](const auto& script) { return script.param; });
