// Scripts of mouse and menu, each through the real handlers; what came of them stands in tests/golden.
#include <filesystem>

#include "tests/support/golden.h"
#include "tests/support/mouse_script.h"

namespace {

std::vector<std::string> ScriptNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(FENTO_SOURCE_DIR "/tests/scripts"))
        names.push_back(entry.path().stem().string());
    return names;
}

class Script : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(Recorded, Script, testing::ValuesIn(ScriptNames()),
                         [](const auto& script) { return script.param; });

}  // namespace

TEST_P(Script, GoesAsItExpects) {
    ExpectGolden("script_" + GetParam() + ".txt", PlayScript(FENTO_SOURCE_DIR "/tests/scripts/" + GetParam() + ".txt"));
}
