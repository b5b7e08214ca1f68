#include "host/solid/crossing.h"

#include <cstddef>

#include "host/solid/tolerance.h"

namespace host::solid {

namespace {

// A box for each run [begin, end) of consecutive pieces, halved down to single pieces. Runs of an
// outline are compact, so their boxes overlap little.
class BoxTree {
public:
    explicit BoxTree(const std::vector<Piece>& ring) : ring_(ring), boxes_(4 * ring.size()) {
        Build(1, 0, ring.size());
    }

    std::optional<AcGePoint2d> SelfMeeting() const { return Within(1, 0, ring_.size()); }

private:
    void Build(std::size_t node, std::size_t begin, std::size_t end) {
        if (end - begin == 1) {
            boxes_[node] = BoxOf(ring_[begin]);
            return;
        }
        const std::size_t middle = begin + (end - begin) / 2;
        Build(2 * node, begin, middle);
        Build(2 * node + 1, middle, end);
        boxes_[node] = boxes_[2 * node];
        boxes_[node].Add(boxes_[2 * node + 1]);
    }

    std::optional<AcGePoint2d> Within(std::size_t node, std::size_t begin, std::size_t end) const {
        if (end - begin == 1) return std::nullopt;
        const std::size_t middle = begin + (end - begin) / 2;
        if (auto p = Within(2 * node, begin, middle)) return p;
        if (auto p = Within(2 * node + 1, middle, end)) return p;
        return Between({2 * node, begin, middle}, {2 * node + 1, middle, end});
    }

    struct Run {
        std::size_t node, begin, end;
        std::size_t Size() const { return end - begin; }
    };

    std::optional<AcGePoint2d> Between(const Run& a, const Run& b) const {
        if (!boxes_[a.node].Meets(boxes_[b.node], kPositionTol)) return std::nullopt;
        if (a.Size() == 1 && b.Size() == 1) return PairMeeting(a.begin, b.begin);
        if (a.Size() < b.Size()) {
            const std::size_t middle = b.begin + b.Size() / 2;
            if (auto p = Between(a, {2 * b.node, b.begin, middle})) return p;
            return Between(a, {2 * b.node + 1, middle, b.end});
        }
        const std::size_t middle = a.begin + a.Size() / 2;
        if (auto p = Between({2 * a.node, a.begin, middle}, b)) return p;
        return Between({2 * a.node + 1, middle, a.end}, b);
    }

    // i < j.
    std::optional<AcGePoint2d> PairMeeting(std::size_t i, std::size_t j) const {
        const Piece &a = ring_[i], &b = ring_[j];
        const bool wraps = i == 0 && j + 1 == ring_.size();
        if (wraps && j == i + 1) return std::nullopt;  // two pieces: two corners, no room for more
        if (wraps) return SecondMeeting(b, a, kPositionTol);
        if (j == i + 1) return SecondMeeting(a, b, kPositionTol);
        return Meeting(a, b, kPositionTol);
    }

    const std::vector<Piece>& ring_;
    std::vector<Box> boxes_;
};

}  // namespace

std::optional<AcGePoint2d> FindSelfMeeting(const std::vector<Piece>& ring) {
    if (ring.size() < 2) return std::nullopt;
    return BoxTree(ring).SelfMeeting();
}

}  // namespace host::solid
