#include "plane/key_sort.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <utility>

namespace plane {

// Least digit first; digits that are the same everywhere cost only the counting.
void SortByKey(std::vector<Keyed>& keyed) {
    // So few are compared sooner than the counters are cleared.
    constexpr std::size_t kFew = 500;
    if (keyed.size() < kFew) {
        std::stable_sort(keyed.begin(), keyed.end(),
                         [](const Keyed& a, const Keyed& b) { return a.key < b.key; });
        return;
    }
    constexpr int kDigitBits = 11;
    constexpr std::uint64_t kDigitMask = (1U << kDigitBits) - 1;
    std::vector<Keyed> other(keyed.size());
    for (int shift = 0; shift < 64; shift += kDigitBits) {
        std::array<std::size_t, kDigitMask + 1> ends = {};
        for (const Keyed& entry : keyed) {
            ++ends[entry.key >> shift & kDigitMask];
        }
        if (ends[keyed.front().key >> shift & kDigitMask] == keyed.size()) {
            continue;
        }
        std::size_t sum = 0;
        for (std::size_t& end : ends) {
            sum += std::exchange(end, sum);
        }
        for (const Keyed& entry : keyed) {
            other[ends[entry.key >> shift & kDigitMask]++] = entry;
        }
        keyed.swap(other);
    }
}

// The bits of a positive number rise with it; those of a negative one fall (IEEE 754).
std::uint64_t RisingKey(double value) {
    constexpr std::uint64_t kSign = std::uint64_t(1) << 63;
    const double unsignedZero = value + 0.0;
    std::uint64_t bits = 0;
    std::memcpy(&bits, &unsignedZero, sizeof bits);
    return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

}  // namespace plane
