#include "host/db/line_weights.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace host {

namespace {

constexpr int kHundredths[] = {0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                               53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};

}  // namespace

bool IsLineWeight(std::int64_t number) {
    return (number >= AcDb::kLnWtByLwDefault && number < 0) ||
           std::binary_search(std::begin(kHundredths), std::end(kHundredths), number);
}

AcDb::LineWeight NearestLineWeight(double millimetres) {
    const auto off = [wanted = millimetres * 100.0](int weight) {
        return std::fabs(weight - wanted);
    };
    return static_cast<AcDb::LineWeight>(
        *std::min_element(std::begin(kHundredths), std::end(kHundredths),
                          [&](int a, int b) { return off(a) < off(b); }));
}

}  // namespace host
