// The volumes and places, and the folders from a volume's root down to the current one.
#include "platform/controls/folder_lists.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/system/desktop.h"
#include "platform/system/files.h"

namespace {

bool IsSeparator(char c) { return c == '/' || c == PathSeparator; }

// Length of the root that `path` begins with: "/" here, "C:\" where volumes have letters.
size_t RootLength(std::string_view path) {
    if (PathSeparator == '\\' && path.size() >= 2 && path[1] == ':')
        return path.size() > 2 && IsSeparator(path[2]) ? 3 : 2;
    return !path.empty() && IsSeparator(path[0]) ? 1 : 0;
}

std::string Joined(const std::string& folder, std::string_view name) { return WithSeparator(folder).append(name); }

// True if `root` is `path` or a folder above it; both normal.
bool LiesUnder(const std::string& path, const std::string& root) {
    if (!path.starts_with(root)) return false;
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

bool CanBeListed(const std::string& folder) {
    std::error_code error;
    const std::filesystem::directory_iterator listing(folder, error);
    return !error;
}

}  // namespace

std::string NormalPath(const std::string& path) {
    std::string whole = path;
    if (RootLength(whole) == 0) whole = Joined(CurrentFolder(), path);
    const size_t rootLength = RootLength(whole);
    std::string normal = whole.substr(0, rootLength);
    if (normal.empty() || !IsSeparator(normal.back()))
        normal += PathSeparator;
    else
        normal.back() = PathSeparator;
    const size_t root = normal.size();
    for (size_t begin = rootLength; begin < whole.size();) {
        size_t end = begin;
        while (end < whole.size() && !IsSeparator(whole[end])) ++end;
        const std::string_view name = std::string_view(whole).substr(begin, end - begin);
        begin = end + 1;
        if (name.empty() || name == ".") continue;
        if (name == "..") {
            const size_t cut = normal.rfind(PathSeparator);
            normal.resize(std::max(cut, root));
            continue;
        }
        if (normal.size() > root) normal += PathSeparator;
        normal += name;
    }
    return normal;
}

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
    const auto place = std::ranges::find_if(
        volumes_, [&folder](const Volume& entry) { return entry.IsPlace() && NormalPath(entry.root) == folder; });
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
    if (wanted == path_) return true;
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
