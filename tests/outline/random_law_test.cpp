// Random drawings: the outline must be what the plain form of the rules says, ray by ray, and an
// outline that was changed must be refused.
#include <iterator>
#include <random>

#include "host/solid/profile.h"
#include "host/solid/sat_text.h"
#include "outline_text.h"
#include "plain_law.h"
#include "random_tool.h"
#include "solid/sat_reader.h"

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

// What is found can be turned into a solid, and the solid's text is sound for a reader that knows
// nothing of the writer.
TEST(RandomTools, SolidsOfAllAreSound) {
    int solids = 0;
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(seed);
        const Envelope found = outline::FindEnvelope(Random(seed));
        if (found.refusal != Refusal::None) continue;
        host::solid::Outline outline;
        for (const plane::Curve& c : found.edges) outline.corners.push_back({c.from, c.bulge});
        const plane::Point last = found.edges.back().to;
        outline.corners.push_back({last, 0.0});
        host::solid::Profile profile;
        const host::solid::Refusal refusal =
            Prepare(outline, AcGePoint3d(), AcGeVector3d(1, 0, 0), profile);
        ASSERT_FALSE(refusal) << refusal.Text() << ": " << test::Show(found);
        sat::File file;
        ASSERT_EQ("", sat::Parse(host::solid::SatText({&profile}, {}), file));
        const sat::Audit audit = sat::Check(file);
        EXPECT_TRUE(audit.faults.empty());
        const double volume = Measure(profile).volume;
        EXPECT_NEAR(volume, audit.volume, 1e-6 * volume);
        ++solids;
    }
    EXPECT_GT(solids, 390);
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
