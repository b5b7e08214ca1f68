// Sorting numbers by keys of 64 bits.
#pragma once

#include <cstdint>
#include <vector>

namespace plane {

// What is sorted: the number of something large that moves only once, afterwards.
struct Keyed {
    std::uint64_t key;  // by which; of a number see RisingKey()
    int item;           // not compared
};

// Sorts by key; equal keys keep their order. O(n) by counting digits, a few hundred by comparing,
// since the counters would take longer to clear. As much memory again while it runs.
void SortByKey(std::vector<Keyed>& keyed);

// A key that rises with the number; both zeros have one. Not for NaN.
std::uint64_t RisingKey(double value);

}  // namespace plane
