#include "platform/system/stale_files.h"

#include "platform/system/folder_reader.h"
#include "platform/system/paths.h"
#include "platform/system/temporary_name.h"

void SweepStaleFiles(const std::string& folder) {
    FolderReader entries;
    if (!entries.Open(folder)) return;
    while (entries.Next())
        if (IsTemporaryName(entries.Name())) RemoveIfStale(WithSeparator(folder) + entries.Name());
}
