// The rest that keeps its order is a longest rising subsequence of the old places: for every length
// found so far the subsequence with the smallest end is remembered.
#include "core/board/restacking.h"

#include <algorithm>

namespace PuzzleModule {

const std::vector<int>& Restacking::Moved(const std::vector<int>& oldPlaces) {
    const int count = int(oldPlaces.size());
    tails_.clear();  // by length less 1: the place at which that subsequence ends
    previous_.assign(size_t(count), -1);
    for (int place = 0; place < count; ++place) {
        const int old = oldPlaces[size_t(place)];
        auto at = tails_.end();
        // Nearly always the longest subsequence goes on.
        if (!tails_.empty() && oldPlaces[size_t(tails_.back())] > old)
            at = std::ranges::lower_bound(tails_, old, {}, [&](int tail) { return oldPlaces[size_t(tail)]; });
        if (at != tails_.begin()) previous_[size_t(place)] = *(at - 1);
        if (at == tails_.end())
            tails_.push_back(place);
        else
            *at = place;
    }
    kept_.assign(size_t(count), false);
    for (int place = tails_.empty() ? -1 : tails_.back(); place >= 0; place = previous_[size_t(place)])
        kept_[size_t(place)] = true;
    moved_.clear();
    for (int place = 0; place < count; ++place)
        if (!kept_[size_t(place)]) moved_.push_back(place);
    return moved_;
}

}  // namespace PuzzleModule
