// The entries of a folder as the system gives them, one at a time, in its own order, without "." and "..".
#pragma once
#include <memory>
#include <string>

class FolderReader {
public:
    FolderReader();
    ~FolderReader();

    // Begins anew, before the first entry. False if the folder can't be read; it then has no entry.
    bool Open(const std::string& folder);
    // Goes on to the next entry. False at the end.
    bool Next();

    // Of the entry reached.
    std::string Name() const;
    bool IsHidden() const;  // or the system's own
    bool IsFolder() const;  // a link to one is one

private:
    struct State;
    std::unique_ptr<State> state_;
};
