// Random drawings: the outline must be what the plain form of the rules says, ray by ray, and an
// outline that was changed must be refused.
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

TEST(RandomTools, OutlinesHoldRayByRay) {
    int drawn = 0;
    for (unsigned seed = 0; seed < 300; ++seed) {
        const Request request = Random(seed);
        const Envelope found = outline::FindEnvelope(request);
        if (found.refusal != Refusal::None) continue;
        const plain::Law law(request);
        ++drawn;
        EXPECT_EQ("", plain::Faults(law, found.edges))
            << "seed " << seed << ": " << test::Show(found);
    }
    EXPECT_GT(drawn, 200);
}

}  // namespace
