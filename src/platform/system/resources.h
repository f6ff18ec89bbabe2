// Data that the program carries inside its own file: waves, the splash picture, the icon.
#pragma once
#include <cstddef>
#include <span>
#include <string_view>

// The bytes of the resource `name` of type `type` (LoadResData("CLICK", "WAVE")),
// valid until the process ends; empty if there is none.
std::span<const std::byte> LoadResData(std::string_view name, std::string_view type);
