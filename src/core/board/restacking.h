// Which elements of a pile must be taken out so that the others lie in their old order.
#pragma once
#include <vector>

namespace PuzzleModule {

class Restacking {
public:
    // `oldPlaces[i]` is the old place, from 0, of what now lies at place i; each occurs once. The
    // result lists the present places of as few as possible, in rising order, without which the rest
    // keeps its order. Linear where one element came to the front, n log n at worst.
    const std::vector<int>& Moved(const std::vector<int>& oldPlaces);

private:
    std::vector<int> tails_, previous_, moved_;
    std::vector<bool> kept_;
};

}  // namespace PuzzleModule
