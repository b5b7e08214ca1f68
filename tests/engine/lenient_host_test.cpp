// Envelopes do not depend on whether the host takes points just past an end of a segment for points
// on it.
#include <random>

#include "host/ge/linear_kernel.h"
#include "support/envelope_run.h"

namespace {

class Lenient {
public:
    Lenient() { host::AcceptsBeyondEnds() = true; }
    ~Lenient() { host::AcceptsBeyondEnds() = false; }
    Lenient(const Lenient&) = delete;
    Lenient& operator=(const Lenient&) = delete;
};

// Lines whose ends nearly meet others, at distances around the tolerances.
std::string NearlyMeeting(std::mt19937& random) {
    const double offsets[] = {0.0, 1e-11, 2e-10, 1e-5, 2e-4, 4.9e-4, 5e-4, 6e-4, 1e-3};
    const auto place = [&] {
        const double offset = offsets[random() % std::size(offsets)];
        return static_cast<double>(random() % 12) + (random() % 2 == 0 ? offset : -offset);
    };
    std::ostringstream text;
    text.precision(17);
    for (int i = 0; i < 14; ++i) {
        const double x = place(), y = place();
        text << (i == 0 ? "" : " | ") << "L " << x << "," << y << " ";
        switch (random() % 3) {
            case 0:
                text << place() + 0.5 << "," << y;
                break;
            case 1:
                text << x << "," << place() + 0.5;
                break;
            default:
                text << place() + 0.25 << "," << place() + 0.5;
        }
    }
    return text.str();
}

TEST(LenientHost, IsTheStretchPastAnEnd) {
    const AcGeLineSeg3d segment(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0));
    AcGeTol tol;
    tol.setEqualPoint(1e-3);
    EXPECT_FALSE(segment.isOn(AcGePoint3d(10.0005, 0, 0), tol));
    const Lenient lenient;
    EXPECT_TRUE(segment.isOn(AcGePoint3d(10.0005, 0, 0), tol));
    EXPECT_FALSE(segment.isOn(AcGePoint3d(10.002, 0, 0), tol));
}

TEST(LenientHost, MakesNoOtherEnvelope) {
    const unsigned seed = 20261121;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    int found = 0;
    for (int round = 0; round < 150; ++round) {
        const std::string drawing = NearlyMeeting(random);
        for (const char* const options : {"axis=3", "lower axis=6", "noaxis", "by=1 axis=3"}) {
            const std::string strict = test::ShowEnvelope(drawing, options);
            const Lenient lenient;
            ASSERT_EQ(strict, test::ShowEnvelope(drawing, options)) << drawing << " " << options;
            found += strict == "none" ? 0 : 1;
        }
    }
    EXPECT_GT(found, 300);
}

}  // namespace
