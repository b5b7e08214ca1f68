// Exact envelopes of random contours: refused with a place that is one, or an outline that is
// closed, lies within what is drawn and has nothing of the contour above it. The rules themselves,
// ray by ray, judge what is small enough for them.
#include <algorithm>
#include <cmath>
#include <string>

#include "fuzz/check.h"
#include "outline/plain_law.h"
#include "plugin/outline/OutlineLaw.h"

namespace {

// Numbers out of the input: on a grid, so that touching, closing and coinciding happen, and a hair
// beside it.
class Numbers {
public:
    Numbers(const uint8_t* data, size_t size) : m_data(data), m_size(size) {}
    bool IsEmpty() const { return m_at >= m_size; }
    uint8_t Byte() { return IsEmpty() ? 0 : m_data[m_at++]; }
    double Length(double step) {
        static const double kHairs[] = {0, 0, 0, 0, 0, 1e-12, -1e-9, 1e-7, 3e-5, 1e-4, -1e-3, 0.1};
        const double hair = kHairs[Byte() % 12];
        m_hasHair = m_hasHair || (hair != 0 && std::fabs(hair) < 1e-3);
        return Byte() * step + hair;
    }
    // Whether numbers lie so close that tolerances decide, where the plain rules have theirs.
    bool HasHair() const { return m_hasHair; }

private:
    const uint8_t* m_data;
    size_t m_size, m_at = 0;
    bool m_hasHair = false;
};

outline::Request RequestOf(Numbers& in) {
    static const double kBulges[] = {0, 0,  0,   0,    0.41421356237309503, -0.41421356237309503,
                                     1, -1, 0.1, -1e-3};
    outline::Request request;
    const uint8_t options = in.Byte();
    request.half = static_cast<outline::Half>(options % 3);
    request.verticalEnds = (options & 8) != 0;
    plane::Point last;
    while (!in.IsEmpty() && request.curves.size() < 40) {
        const uint8_t kind = in.Byte();
        plane::Point from = last;
        if (kind % 3 != 0) from = {in.Length(0.5), in.Length(0.25) - 8};
        const plane::Point to{in.Length(0.5), in.Length(0.25) - 8};
        last = to;
        const plane::Curve curve = plane::MakeCurve(from, to, kBulges[in.Byte() % 10]);
        if (from != to)
            request.curves.push_back({curve, static_cast<int>(request.curves.size()), kind > 250});
    }
    return request;
}

// Nothing of the contour but tails and what is ignored rises above the outline.
void CheckChain(const outline::Request& request, const outline::Envelope& found) {
    const auto& edges = found.edges;
    FUZZ_CHECK(!edges.empty());
    FUZZ_CHECK(edges.front().from.y == 0 && edges.back().to.y == 0);
    plane::Box box;
    for (const outline::Contour& c : request.curves) box.Add(plane::BoxOf(c.curve));
    const double slack = found.lengths.point + 1e-9 * found.size;
    const double highest = (std::max)(std::fabs(box.low.y), std::fabs(box.high.y)) + slack;
    for (size_t i = 0; i < edges.size(); ++i) {
        FUZZ_CHECK(outline::IsWithin(edges[i]));
        FUZZ_CHECK(i == 0 || edges[i].from == edges[i - 1].to);
        FUZZ_CHECK(edges[i].from.y >= 0 && edges[i].to.y >= 0);
        const plane::Box edge = plane::BoxOf(edges[i]);
        FUZZ_CHECK(edge.low.x >= box.low.x - slack && edge.high.x <= box.high.x + slack);
        // A bridge goes on along its circle, beyond what is drawn if need be.
        FUZZ_CHECK(!found.bridges.empty() || edge.high.y <= highest);
    }
}

// Whether spikes or slots without width were taken out: the plain rules know of neither.
bool IsMended(const outline::Envelope& found) {
    const double narrow = 2 * found.lengths.point;
    return std::any_of(found.tails.begin(), found.tails.end(),
                       [](const outline::Tail& tail) { return tail.source < 0; }) ||
           std::any_of(found.bridges.begin(), found.bridges.end(),
                       [narrow](const outline::Span2& b) {
                           return b.from.y == b.to.y && b.length < narrow;
                       });
}

// By the plain rules with the lengths as used, or with such as differ by a hair: where that makes a
// difference, a length of the drawing is as long as one of them, and either is right.
bool HoldsRayByRay(outline::Request request, const outline::Envelope& profile) {
    constexpr double kHair = 1e-5;
    std::string faults;
    for (const double point : {1.0, 1.0 - kHair, 1.0 + kHair})
        for (const double overshoot : {1.0, 1.0 - kHair, 1.0 + kHair}) {
            request.lengths = profile.lengths;
            request.lengths.point *= point;
            request.lengths.overshoot *= overshoot;
            faults = plain::Faults(plain::Law(request), profile.edges);
            if (faults.empty()) return true;
        }
    std::fprintf(stderr, "%s\n", faults.c_str());
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Numbers in(data, size);
    outline::Request request = RequestOf(in);
    const outline::Envelope found = outline::FindEnvelope(request);
    FUZZ_CHECK((found.refusal == outline::Refusal::None) == !found.edges.empty());
    FUZZ_CHECK(std::isfinite(found.place.x) && std::isfinite(found.place.y));
    if (found.refusal != outline::Refusal::None) return 0;
    CheckChain(request, found);
    // Faces make choices where rounding decides; the profile makes none.
    request.verticalEnds = true;
    const outline::Envelope profile = outline::FindEnvelope(request);
    FUZZ_CHECK(profile.refusal == outline::Refusal::None);
    if (in.HasHair() || IsMended(profile)) return 0;
    FUZZ_CHECK(HoldsRayByRay(request, profile));
    return 0;
}
