// The table of carried files, as the build writes it.
#pragma once
#include <cstddef>
#include <span>
#include <string_view>

struct EmbeddedFile {
    std::string_view name;
    std::string_view type;
    std::string_view bytes;
};

std::span<const EmbeddedFile> EmbeddedFiles();
