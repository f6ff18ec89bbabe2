// The volumes and places, and the folders from a volume's root down to the current one.
#include "platform/controls/folder_lists.h"

#include <algorithm>
#include <string_view>

#include "platform/system/desktop.h"
#include "platform/system/files.h"

namespace {

std::string Joined(const std::string& folder, std::string_view name) { return WithSeparator(folder).append(name); }

// True if `root` is `path` or a folder above it; both normal.
bool LiesUnder(const std::string& path, const std::string& root) {
    if (!SamePath(path.substr(0, root.size()), root)) return false;
    return path.size() == root.size() || IsSeparator(root.back()) || IsSeparator(path[root.size()]);
}

// The number of the volume that a normal path lies on, by the longest root; -1 if none.
int VolumeOf(const std::vector<Volume>& volumes, const std::string& path) {
    int best = -1;
    size_t longest = 0;
    for (size_t i = 0; i < volumes.size(); ++i) {
        const std::string root = NormalPath(volumes[i].root);
        if (volumes[i].IsPlace() || !LiesUnder(path, root) || (best >= 0 && root.size() <= longest)) continue;
        best = int(i);
        longest = root.size();
    }
    return best;
}

}  // namespace

DriveListBox::DriveListBox(std::string name) : Control(std::move(name)) {
    if (HasDesktop()) volumes_ = TheDesktop().Volumes();
    current_ = VolumeOf(volumes_, NormalPath(CurrentFolder()));
}

void DriveListBox::AddPlace(Volume place) {
    volumes_.push_back(std::move(place));
    Tell(Aspect::Entries);
}

std::string DriveListBox::Drive() const { return current_ < 0 ? std::string() : volumes_[size_t(current_)].root; }

void DriveListBox::Show(int index) {
    if (index == current_) return;
    current_ = index;
    Tell(Aspect::Value);
}

bool DriveListBox::SetDrive(const std::string& path) {
    const int volume = VolumeOf(volumes_, NormalPath(path));
    if (volume < 0) return false;
    if (current_ >= 0 && volume == VolumeOf(volumes_, NormalPath(Drive()))) return true;
    Show(volume);
    RaiseFromProgram(*this, Change);
    return true;
}

void DriveListBox::Follow(const std::string& path) {
    const std::string folder = NormalPath(path);
    const auto place = std::ranges::find_if(volumes_, [&folder](const Volume& entry) {
        return entry.IsPlace() && SamePath(NormalPath(entry.root), folder);
    });
    Show(place != volumes_.end() ? int(place - volumes_.begin()) : VolumeOf(volumes_, folder));
}

// The one shown stands already.
void DriveListBox::DeliverChoice(size_t index) {
    if (index >= volumes_.size() || !AcceptsInput(*this) || int(index) == current_) return;
    current_ = int(index);
    Raise(*this, Change);
}

DirListBox::DirListBox(std::string name) : Control(std::move(name)) { ListEntries(NormalPath(CurrentFolder())); }

bool DirListBox::SetPath(const std::string& path) {
    const std::string wanted = NormalPath(path);
    if (SamePath(wanted, path_)) return true;
    if (!CanBeListed(wanted)) return false;
    ListEntries(wanted);
    Tell(Aspect::Entries);
    RaiseFromProgram(*this, Change);
    return true;
}

void DirListBox::DeliverOpen(size_t index) {
    if (index >= entries_.size() || !AcceptsInput(*this)) return;
    const std::string path = entries_[index].path;  // the list is made anew on the way
    SetPath(path);
}

void DirListBox::ListEntries(const std::string& path) {
    path_ = path;
    entries_.clear();
    const std::vector<Volume> volumes = HasDesktop() ? TheDesktop().Volumes() : std::vector<Volume>{};
    const int volume = VolumeOf(volumes, path_);
    std::string folder = volume >= 0 ? NormalPath(volumes[size_t(volume)].root) : path_.substr(0, RootLength(path_));
    int depth = 0;
    entries_.push_back({folder, folder, depth, true});
    while (folder != path_) {
        const size_t begin = WithSeparator(folder).size();
        const size_t end = std::min(path_.find(PathSeparator, begin), path_.size());
        folder = path_.substr(0, end);
        entries_.push_back({folder, path_.substr(begin, end - begin), ++depth, true});
    }
    for (const std::string& name : SubFolders(path_)) entries_.push_back({Joined(path_, name), name, depth + 1, false});
}
