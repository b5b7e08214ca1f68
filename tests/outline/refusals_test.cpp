// What makes no sense is refused, with its place, by the rules and by the class that reads
// drawings.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "outline_text.h"
#include "plugin/outline/ExactEnvelope.h"

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinite = std::numeric_limits<double>::infinity();
const char* const kShaft = "0,0 0,10 50,10 50,0";

SExactRequest RequestOf(const std::string& text) {
    SExactRequest request;
    request.m_curves = plane::ParseCurves(text);
    request.m_axisTo.set(1, 0, 0);
    return request;
}

SExactResult::E_Refusal RefusalOf(const SExactRequest& request) {
    const SExactResult found = CExactEnvelope(request).Find();
    EXPECT_EQ(found.m_refusal == SExactResult::E_Refusal_None, !found.m_vertices.empty());
    EXPECT_EQ(found.m_refusal == SExactResult::E_Refusal_None,
              CExactEnvelope::Explain(found).IsEmpty());
    return found.m_refusal;
}

TEST(Refusals, AxesWithoutADirection) {
    for (const double x : {0.0, kNan, kInfinite, 1e61}) {
        SExactRequest request = RequestOf(kShaft);
        request.m_axisTo.set(x, 0, 0);
        EXPECT_EQ(SExactResult::E_Refusal_NoAxis, RefusalOf(request)) << x;
    }
}

TEST(Refusals, NothingToSee) {
    EXPECT_EQ(SExactResult::E_Refusal_Empty, RefusalOf(RequestOf("")));
    EXPECT_EQ(SExactResult::E_Refusal_Empty, RefusalOf(RequestOf("0,0 50,0")));
    EXPECT_EQ(SExactResult::E_Refusal_Empty, RefusalOf(RequestOf("5,3 5,3")));
    EXPECT_EQ(SExactResult::E_Refusal_Empty, RefusalOf(RequestOf("0,0 1e-70,1e-70")));
    EXPECT_EQ(SExactResult::E_Refusal_OnlyUpright, RefusalOf(RequestOf("3,1 3,9 | 5,0 5,2")));
    SExactRequest lower = RequestOf(kShaft);
    lower.m_half = SExactRequest::E_Half_Lower;
    EXPECT_EQ(SExactResult::E_Refusal_Empty, RefusalOf(lower));
}

TEST(Refusals, CoordinatesThatAreNone) {
    for (const double bad : {kNan, kInfinite, -kInfinite, 1e61, -1e200}) {
        SExactRequest request = RequestOf(kShaft);
        request.m_curves.push_back(plane::MakeLine({7, 8}, {bad, 9}));
        EXPECT_EQ(SExactResult::E_Refusal_NotFinite, RefusalOf(request)) << bad;
        const SExactResult found = CExactEnvelope(request).Find();
        EXPECT_NEAR(7, found.m_place.m_dX, 1e-9);
        EXPECT_NEAR(8, found.m_place.m_dY, 1e-9);
        request.m_curves.back() = plane::MakeCurve({0, 5}, {9, 5}, 0.5);
        request.m_curves.back().radius = bad;
        EXPECT_EQ(SExactResult::E_Refusal_NotFinite, RefusalOf(request)) << bad;
    }
}

// Which of the four lengths, and a value that does not fit a drawing with a size of 51 at 0,0.
TEST(Refusals, LengthsThatDoNotFit) {
    double SExactRequest::*const kLengths[] = {&SExactRequest::m_dPoint, &SExactRequest::m_dSide,
                                               &SExactRequest::m_dOvershoot,
                                               &SExactRequest::m_dCurve};
    double outline::Lengths::*const kSame[] = {&outline::Lengths::point, &outline::Lengths::side,
                                               &outline::Lengths::overshoot,
                                               &outline::Lengths::curve};
    const auto check = [&](size_t which, double value, bool isBad) {
        SExactRequest request = RequestOf(kShaft);
        request.*kLengths[which] = value;
        EXPECT_EQ(isBad ? SExactResult::E_Refusal_BadLengths : SExactResult::E_Refusal_None,
                  RefusalOf(request))
            << which << ": " << value;
        outline::Request rules;
        rules.curves = test::ParseContour(kShaft);
        rules.lengths.*kSame[which] = value;
        EXPECT_EQ(isBad ? outline::Refusal::BadLengths : outline::Refusal::None,
                  outline::FindEnvelope(rules).refusal)
            << which << ": " << value;
    };
    for (size_t which = 0; which < 4; ++which) {
        for (const double bad : {-1.0, kNan, kInfinite}) check(which, bad, true);
        check(which, 0, false);
    }
    check(0, 6, true);      // a tenth of the size is one point
    check(0, 1e-15, true);  // finer than the coordinates are
    check(0, 1e-9, false);
    check(0, 0.5, false);
    check(1, 1000, false);  // no face lies deeper than a third of the profile
    check(2, 52, true);
    check(2, 1e-9, false);
    check(3, 52, true);
    check(3, 1e-13, true);  // tangent arcs finer than what is told apart
    check(3, 1e-8, false);
}

// Far away what can be told apart is coarser, and so is what counts as one point.
TEST(Refusals, ATinyToolFarAwayIsNoFault) {
    SExactRequest request;
    for (plane::Curve c : plane::ParseCurves("0,0 0,1 5,1 5,0")) {
        for (plane::Point* p : {&c.from, &c.to}) *p = {1e6 + 1e-4 * p->x, 1e6 + 1e-4 * p->y};
        request.m_curves.push_back(c);
    }
    request.m_axisFrom.set(1e6, 1e6, 0);
    request.m_axisTo.set(1e6 + 1, 1e6, 0);
    const SExactResult found = CExactEnvelope(request).Find();
    EXPECT_EQ(SExactResult::E_Refusal_None, found.m_refusal);
    EXPECT_EQ(4u, found.m_vertices.size());
    EXPECT_GT(found.m_dPoint, 5e-9);
}

TEST(Refusals, TwoToolsByTheirPlace) {
    const SExactRequest request = RequestOf("0,0 0,10 20,10 30,0 40,10 60,10 60,0");
    EXPECT_EQ(SExactResult::E_Refusal_TwoTools, RefusalOf(request));
    EXPECT_NEAR(30, CExactEnvelope(request).Find().m_place.m_dX, 1e-9);
}

}  // namespace
