// Carried data, found by name and type in the table that the build has made of assets/.
#include "platform/system/resources.h"

#include "platform/system/embedded.h"

std::span<const std::byte> LoadResData(std::string_view name, std::string_view type) {
    for (const EmbeddedFile& file : EmbeddedFiles())
        if (file.name == name && file.type == type)
            return std::as_bytes(std::span(file.bytes.data(), file.bytes.size()));
    return {};
}
