// The two lists of a folder browser.
#pragma once
#include "platform/controls/control.h"
#include "platform/system/desktop.h"

// The volumes that the player knows, and places. A path's drive is the listed volume with the
// longest matching prefix; a place is a folder to go to and no path's drive.
class DriveListBox : public Control {
public:
    explicit DriveListBox(std::string name);

    const std::vector<Volume>& Volumes() const { return volumes_; }
    void AddPlace(Volume place);

    // The entry shown, and its root; -1 and nothing where a path lies on no volume.
    int Current() const { return current_; }
    std::string Drive() const;

    // Chooses the volume that `path` lies on. False if there is none; raises Change
    // if the volume is another one.
    bool SetDrive(const std::string& path);
    // Shows where `path` is, the place if it is one, else its volume, without a Change.
    void Follow(const std::string& path);

    Handler Change;
    void DeliverChoice(size_t index);

private:
    void Show(int index);
    std::vector<Volume> volumes_;
    int current_ = -1;
};

// The folders from the root of the drive down to the current one, and below it its
// sub-folders.
class DirListBox : public Control {
public:
    explicit DirListBox(std::string name);  // stands on the process's current folder

    struct Entry {
        std::string path;
        std::string label;
        int depth = 0;      // steps below the root
        bool open = false;  // the current folder and those above it
    };
    const std::vector<Entry>& Entries() const { return entries_; }
    const std::string& Path() const { return path_; }

    // False, and nothing changed, if the folder cannot be listed. Raises Change only if the
    // path really becomes another one (compared after removing ".", ".." and doubled separators).
    bool SetPath(const std::string& path);

    Handler Change;
    // The player opened entry `index` by a double click or Enter.
    void DeliverOpen(size_t index);

private:
    void ListEntries(const std::string& path);
    std::string path_;
    std::vector<Entry> entries_;
};
