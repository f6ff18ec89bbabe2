// The one door between the program's texts, which are UTF-8, and what Windows takes and gives. Nothing throws or fails:
// what is malformed comes out as replacement characters.
#pragma once
#include <string>
#include <string_view>

std::wstring Wide(std::string_view text);
std::string Narrow(std::wstring_view wide);

// True of what Windows itself takes for a device or a pipe: "C:\fotos\NUL.jpg" is no file of that folder. Such a name
// is not even asked about, since that alone can open it.
bool NamesDevice(const std::wstring& path);
