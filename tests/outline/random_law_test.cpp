// Random drawings: the outline must be what the plain form of the rules says, ray by ray, and an
// outline that was changed must be refused.
#include <iterator>
#include <random>

#include "outline_text.h"
#include "plain_law.h"
#include "random_tool.h"

namespace {

using outline::Envelope;
using outline::Refusal;
using outline::Request;

Request Random(unsigned seed) {
    Request request;
    request.curves = test::RandomTool(seed).Make(seed % 4 != 0);
    request.verticalEnds = seed % 11 == 0;
    return request;
}

// Found by long runs: ends within other curves, faces that stop where the profile begins or at the
// greatest depth, tips that come back, slots as thin as rounding.
const unsigned kTelling[] = {1234, 2925, 3319, 3892, 5457, 6723, 6906, 8987, 9395, 22870};

TEST(RandomTools, OutlinesHoldRayByRay) {
    int drawn = 0;
    std::vector<unsigned> seeds(std::begin(kTelling), std::end(kTelling));
    for (unsigned seed = 0; seed < 250; ++seed) seeds.push_back(seed);
    for (const unsigned seed : seeds) {
        const Request request = Random(seed);
        const Envelope found = outline::FindEnvelope(request);
        if (found.refusal != Refusal::None) continue;
        const plain::Law law(request);
        ++drawn;
        EXPECT_EQ("", plain::Faults(law, found.edges))
            << "seed " << seed << ": " << test::Show(found);
    }
    EXPECT_GT(drawn, 240);
}

// The proof itself is tested: an outline with one corner moved must be refused.
TEST(RandomTools, ChangedOutlinesAreRefused) {
    int changed = 0;
    for (unsigned seed = 0; seed < 60; ++seed) {
        const Request request = Random(seed);
        const Envelope found = outline::FindEnvelope(request);
        if (found.refusal != Refusal::None) continue;
        const plain::Law law(request);
        std::mt19937 random(seed);
        for (size_t i = 1; i + 1 < found.edges.size(); ++i) {
            std::vector<plane::Curve> edges = found.edges;
            plane::Curve &before = edges[i - 1], &after = edges[i];
            const double least = 0.01 * found.size;
            if (before.IsArc() || after.IsArc() || before.Length() < least ||
                after.Length() < least || random() % 3 != 0)
                continue;
            // Off both edges, so that neither is only made longer or shorter.
            const plane::Vector aside =
                plane::Left(plane::Unit(before.Chord()) + plane::Unit(after.Chord()));
            const double by = (random() % 2 == 0 ? 1e-3 : -1e-3) * found.size;
            before.to = after.from = before.to + plane::Unit(aside) * by;
            ++changed;
            EXPECT_NE("", plain::Faults(law, edges)) << "seed " << seed << ", corner " << i;
        }
    }
    EXPECT_GT(changed, 100);
}

}  // namespace
