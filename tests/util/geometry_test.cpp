// Plain geometry of the utility layer: the numbers on both sides of each edge.
#include <limits>

#include "support/test_drawing.h"
#include "plugin/util/PointOnSegment.h"
#include "plugin/util/QZRect.h"
#include "plugin/util/SegmentClass.h"
#include "plugin/util/ThinPoints.h"
#include "plugin/util/TolerantCompare.h"

namespace {

using test::ParsePoint;
using test::Split;

AcGePoint3d At(const std::vector<std::string>& words, size_t i) { return ParsePoint(words.at(i)); }

const double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(TolerantCompare, IsStrict) {
    struct Case {
        double a, b, tol;
        int expected;
    };
    for (const Case& c : {Case{1.0, 1.5, 0.5, -1}, Case{1.0, 1.5, 0.75, 0}, Case{2.0, 1.0, 1.0, 1},
                          Case{1.0, 1.0, 0.0, -1}, Case{kNaN, 1.0, 1.0, -1}}) {
        SCOPED_TRACE(::testing::Message() << c.a << " " << c.b << " " << c.tol);
        EXPECT_EQ(c.expected, CompareValue(c.a, c.b, c.tol));
        EXPECT_EQ(c.expected == 0, IsEqualValue(c.a, c.b, c.tol));
        EXPECT_EQ(c.expected >= 0, IsAtOrAboveValue(c.a, c.b, c.tol));
        EXPECT_EQ(c.expected <= 0, IsAtOrBelowValue(c.a, c.b, c.tol));
    }
    EXPECT_TRUE(std::isfinite(GetMidPoint({1.7e308, 0, 0}, {1.7e308, 2, 0}).x));
}

TEST(SegmentClass, Table) {
    struct Case {
        const char* name;
        const char* points;  // a b p q
        int expected;
    };
    const Case cases[] = {
        {"on one line", "0,0 2,1 4,2 6,3", 0},
        {"beside", "0,0 2,1 4,3 6,4", 1},
        {"crossing, mirror-image slopes, same first x", "0,0 1,1 0,1 1,0", 0},
        {"mirror-image slopes, apart", "0,0 1,1 5,1 6,0", 1},
        {"other slope", "0,0 1,1 2,2 3,5", 2},
        {"both vertical, one x", "0,0 0,1 0.0009,5 0,9", 0},
        {"both vertical, apart", "0,0 0,1 0.0011,5 0.0011,9", 1},
        {"vertical and not", "0,0 0,1 0,5 1,9", 2},
        {"not and vertical", "0,0 1,0 0,0 0,9", 2},
        {"slope differs by half the tolerance", "0,0 1000000,0 2000000,0 3000000,0.5", 0},
        {"slope differs by twice the tolerance", "0,0 1000000,0 2000000,0 3000000,2", 2},
        {"second of length zero", "0,0 2,1 4,2 4,2", 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto words = Split(c.points, ' ');
        EXPECT_EQ(c.expected,
                  ClassifySegments(At(words, 0), At(words, 1), At(words, 2), At(words, 3), 0.001));
    }
}

CQZRect Rect(const std::string& text) {
    const auto words = Split(text, ' ');
    return CQZRect(At(words, 0), At(words, 1));
}

TEST(QZRect, OverlapsAndContains) {
    struct Case {
        const char* name;
        const char* a;
        const char* b;
        double d;
        bool overlaps, contains;
    };
    const Case cases[] = {
        {"crossing", "0,0 2,2", "1,1 3,3", 0, true, false},
        {"touching", "0,0 2,2", "2,0 4,2", 0, false, false},
        {"touching, widened", "0,0 2,2", "2,0 4,2", 1e-6, true, false},
        {"inside", "0,0 4,4", "1,1 2,2", 0, true, true},
        {"equal: no bound is strictly inside", "0,0 4,4", "0,0 4,4", 0, false, true},
        {"shrunk to its middle, not inside out", "0,0 4,4", "1,1 2,2", -5, true, true},
        {"flat, crossing", "0,1 4,1", "2,0 2,3", 0, true, false},
        {"flat, one line", "0,0 4,0", "1,0 2,0", 0, false, true},
        {"given corners the wrong way round", "4,4 0,0", "2,2 1,1", 0, true, true},
        {"out by less than the corner tolerance", "0,0 4,4", "1,1 4.0000009,2", 0, true, true},
        {"out by more", "0,0 4,4", "1,1 4.0000011,2", 0, true, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.overlaps, Rect(c.a).Overlaps(Rect(c.b), c.d));
        EXPECT_EQ(c.contains, Rect(c.a).Contains(Rect(c.b), (std::max)(c.d, 0.0)));
    }
    EXPECT_FALSE(CQZRect(true).Overlaps(Rect("0,0 1,1"), 0));
    EXPECT_FALSE(Rect("0,0 1,1").Contains(CQZRect(true), 1));
}

TEST(QZRect, GrowsByPointsAndKeepsItsEmptyForm) {
    CQZRect box(true);
    EXPECT_FALSE(box.IsValid());
    EXPECT_EQ(0.0, box.GetWidth());
    EXPECT_EQ(1e20, box.min.x);
    EXPECT_EQ(0.0, box.min.z);
    EXPECT_EQ(-1e20, CQZRect(false).max.z);
    box.Extend(AcGePoint3d(3, 4, 0));
    EXPECT_EQ("3,4 3,4", test::Show(box.min) + " " + test::Show(box.max));
    box.Extend(AcGePoint3d(1, 8, 2));
    EXPECT_EQ("1,4 3,8", test::Show(box.min) + " " + test::Show(box.max));
    EXPECT_EQ(2.0, box.max.z);
    EXPECT_EQ("1,6 3,6 2,8 2,4",
              test::Show(box.GetLeftMiddle()) + " " + test::Show(box.GetRightMiddle()) + " " +
                  test::Show(box.GetTopMiddle()) + " " + test::Show(box.GetBottomMiddle()));
}

TEST(ThinPoints, Table) {
    struct Case {
        const char* name;
        const char* points;
        const char* kept;
    };
    const Case cases[] = {
        {"within a degree", "0,0 5,0.05 10,0", "0,0 10,0"},
        {"a corner", "0,0 5,0.2 10,0", "0,0 5,0.2 10,0"},
        {"both near vertical, either side of it", "0,0 0.05,5 0,10", "0,0 0,10"},
        {"both near horizontal, 1.8 degrees apart", "0,0 10,0.157 20,0", "0,0 20,0"},
        {"back on itself", "0,0 10,0 5,0 5,5", "0,0 5,0 5,5"},
        {"a slow bend is lost until its chord lags", "0,0 10,0 20,0.1 30,0.3 40,0.6",
         "0,0 30,0.3 40,0.6"},
        {"equal points keep their corner", "0,0 5,5 5,5 9,0", "0,0 5,5 5,5 9,0"},
        {"two points", "0,0 1,0", "0,0 1,0"},
        {"one point", "0,0", "0,0"},
        {"none", "", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        AcArray<AcGePoint3d> points;
        for (const std::string& word : Split(c.points, ' ')) points.append(ParsePoint(word));
        ThinPoints(points, 1.0);
        std::string kept;
        for (int i = 0; i < points.length(); ++i) kept += (i ? " " : "") + test::Show(points[i]);
        EXPECT_EQ(c.kept, kept);
    }
}

TEST(PointOnSegment, EndsAndTolerance) {
    AcGeTol tol;
    tol.setEqualPoint(0.0005);
    const AcGeLineSeg3d segment(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0));
    EXPECT_TRUE(IsPointOnSegment(segment, AcGePoint3d(5, 0.0004, 0), true, tol));
    EXPECT_FALSE(IsPointOnSegment(segment, AcGePoint3d(5, 0.0006, 0), true, tol));
    EXPECT_TRUE(IsPointOnSegment(segment, AcGePoint3d(10.0004, 0, 0), true, tol));
    EXPECT_FALSE(IsPointOnSegment(segment, AcGePoint3d(10.0004, 0, 0), false, tol));
    EXPECT_FALSE(IsPointOnSegment(segment, AcGePoint3d(10.001, 0, 0), true, tol));
}

}  // namespace
