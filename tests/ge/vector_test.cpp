// Points, vectors, matrices and planes.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "ge_text.h"
#include "geline3d.h"
#include "gemat2d.h"
#include "gemat3d.h"
#include "geplane.h"
#include "gescl3d.h"
#include "host/base/angles.h"

namespace {

using host::kPi;

TEST(Point, EqualByDistanceNotByAxis) {
    const AcGePoint3d origin;
    const AcGeTol tol = Tol(5.0);
    EXPECT_TRUE(origin.isEqualTo({3, 4, 0}, tol));  // exactly the tolerance
    EXPECT_FALSE(origin.isEqualTo({3, 4.0000001, 0}, tol));
    EXPECT_FALSE(origin.isEqualTo({4.9, 4.9, 0}, tol));  // every axis within it
    EXPECT_TRUE(AcGePoint2d().isEqualTo({3, 4}, tol));
    EXPECT_FALSE(AcGePoint2d().isEqualTo({4.9, 4.9}, tol));
    EXPECT_TRUE(origin == AcGePoint3d(1e-10, 0, 0));
    EXPECT_TRUE(origin != AcGePoint3d(1.1e-10, 0, 0));
}

TEST(Vector2d, AngleIsInOneTurn) {
    const struct {
        double x, y, angle;
    } kCases[] = {{1, 0, 0},       {1, 1, kPi / 4},    {0, 1, kPi / 2},     {-1, 0, kPi},
                  {-1, -0.0, kPi}, {0, -1, 1.5 * kPi}, {1, -1, 1.75 * kPi}, {0, 0, 0},
                  {1, -0.0, 0},    {1, -1e-300, 0}};  // 2 pi - 1e-300 would round to 2 pi
    for (const auto& c : kCases) {
        const double angle = AcGeVector2d(c.x, c.y).angle();
        if (std::signbit(c.y) && c.x < 0) {
            // atan2 gives -pi for a negative zero; a full turn added makes pi of it.
            EXPECT_DOUBLE_EQ(angle, kPi);
            continue;
        }
        EXPECT_DOUBLE_EQ(angle, c.angle) << c.x << "," << c.y;
        EXPECT_LT(angle, 2 * kPi);
    }
    std::mt19937 random(3);
    std::uniform_real_distribution<double> at(-1, 1);
    for (int i = 0; i < 10000; ++i) {
        const AcGeVector2d v(at(random), at(random));
        double expected = std::atan2(v.y, v.x);
        if (expected < 0) expected += 2 * kPi;
        ASSERT_EQ(v.angle(), expected);
    }
}

TEST(Vector3d, ParallelAndPerpendicularEdges) {
    const AcGeVector3d x(10, 0, 0);
    const auto turned = [](double angle) {
        return AcGeVector3d(3 * std::cos(angle), 3 * std::sin(angle), 0);
    };
    const AcGeTol tol = Tol(0.01);
    EXPECT_TRUE(x.isParallelTo(turned(0.00999), tol));
    EXPECT_FALSE(x.isParallelTo(turned(0.01001), tol));
    EXPECT_TRUE(x.isParallelTo(turned(kPi - 0.00999), tol));
    EXPECT_FALSE(x.isCodirectionalTo(turned(kPi - 0.00999), tol));
    EXPECT_TRUE(x.isCodirectionalTo(turned(0.00999), tol));
    EXPECT_FALSE(x.isParallelTo(x, Tol(0.0)));  // strictly less
    EXPECT_TRUE(x.isPerpendicularTo(turned(kPi / 2 - 0.00999), tol));
    EXPECT_FALSE(x.isPerpendicularTo(turned(kPi / 2 - 0.01001), tol));
    const AcGeVector3d zero;
    EXPECT_FALSE(zero.isParallelTo(x) || zero.isPerpendicularTo(x) || x.isParallelTo(zero));
    EXPECT_EQ(zero.normal().length(), 0.0);
}

TEST(Vector3d, Angles) {
    const AcGeVector3d x = AcGeVector3d::kXAxis, y = AcGeVector3d::kYAxis;
    const AcGeVector3d z = AcGeVector3d::kZAxis;
    EXPECT_DOUBLE_EQ(x.angleTo(y), kPi / 2);
    EXPECT_DOUBLE_EQ(x.angleTo(-x), kPi);
    EXPECT_DOUBLE_EQ(x.angleTo(y, z), kPi / 2);
    EXPECT_DOUBLE_EQ(x.angleTo(y, -z), 1.5 * kPi);
    EXPECT_DOUBLE_EQ(y.angleTo(x, z), 1.5 * kPi);
    EXPECT_EQ(x.angleTo(x, z), 0.0);
    EXPECT_TRUE(AcGeVector3d(x).rotateBy(kPi / 2, z).isEqualTo(y));
    EXPECT_TRUE(AcGeVector3d(1, 2, 3).mirror(z).isEqualTo({1, 2, -3}));
}

TEST(Matrix, ArbitraryAxisRule) {
    const double below = 1.0 / 64 - 1e-6, above = 1.0 / 64 + 1e-6;
    const auto unit = [](double nx) { return AcGeVector3d(nx, 0, std::sqrt(1 - nx * nx)); };
    const struct {
        const char* name;
        AcGeVector3d normal, xAxis;
    } kCases[] = {
        {"world", {0, 0, 1}, {1, 0, 0}},
        {"mirrored", {0, 0, -1}, {-1, 0, 0}},
        {"x", {1, 0, 0}, {0, 1, 0}},
        {"minus y", {0, -1, 0}, {1, 0, 0}},
        {"not a unit vector", {0, 0, -7}, {-1, 0, 0}},
        {"x below 1/64: world y is crossed", unit(below), unit(below).crossProduct({0, -1, 0})},
        {"x above 1/64: world z is crossed", unit(above), {0, 1, 0}},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        const AcGeMatrix3d m = AcGeMatrix3d::planeToWorld(c.normal);
        EXPECT_TRUE((m * AcGeVector3d::kXAxis).isEqualTo(c.xAxis))
            << Show((m * AcGeVector3d::kXAxis).asPoint());
        EXPECT_TRUE((m * AcGeVector3d::kZAxis).isEqualTo(c.normal.normal()));
        EXPECT_NEAR(m.det(), 1.0, 1e-14);
        EXPECT_TRUE((AcGeMatrix3d::worldToPlane(c.normal) * m).isEqualTo(AcGeMatrix3d::kIdentity));
    }
    // Exactly, for flat drawings pass through it.
    EXPECT_TRUE(Same(AcGeMatrix3d::planeToWorld(AcGeVector3d::kZAxis) * AcGePoint3d(0.1, 0.2, 0.3),
                     {0.1, 0.2, 0.3}));
}

AcGeMatrix3d RandomMap(std::mt19937& random) {
    std::uniform_real_distribution<double> at(-3, 3);
    const auto vector = [&] { return AcGeVector3d(at(random), at(random), at(random)); };
    AcGeMatrix3d shear;
    shear.entry[0][1] = at(random);
    shear.entry[2][0] = at(random);
    return AcGeMatrix3d::translation(vector()) * shear *
           AcGeMatrix3d::rotation(at(random), vector(), vector().asPoint());
}

TEST(Matrix, LawsOnRandomMaps) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> at(-5, 5);
    for (int i = 0; i < 500; ++i) {
        const AcGeMatrix3d a = RandomMap(random), b = RandomMap(random);
        const AcGePoint3d p(at(random), at(random), at(random));
        const AcGePoint3d q(at(random), at(random), at(random));
        const AcGeTol tol = Tol(1e-9);
        ASSERT_TRUE(((a * b) * p).isEqualTo(a * (b * p), tol));
        ASSERT_TRUE((a.inverse() * (a * p)).isEqualTo(p, tol));
        ASSERT_TRUE((a * p - a * q).isEqualTo(a * (p - q), tol));
        ASSERT_NEAR((a * b).det(), a.det() * b.det(), 1e-9);
        AcGeMatrix3d pre = b, post = a;
        ASSERT_TRUE(pre.preMultBy(a).isEqualTo(post.postMultBy(b), tol));
        AcGePoint3d o;
        AcGeVector3d x, y, z;
        a.getCoordSystem(o, x, y, z);
        ASSERT_TRUE(AcGeMatrix3d().setCoordSystem(o, x, y, z) == a);
    }
}

TEST(Matrix, KnownMaps) {
    const AcGePoint3d c(1, 2, 0), p(3, 2, 0);
    EXPECT_TRUE((AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis, c) * p) ==
                AcGePoint3d(1, 4, 0));
    EXPECT_TRUE((AcGeMatrix3d::scaling(3, c) * p) == AcGePoint3d(7, 2, 0));
    EXPECT_TRUE(Same(AcGeMatrix3d::mirroring(AcGePlane::kYZPlane) * p, {-3, 2, 0}));
    EXPECT_TRUE((AcGeMatrix3d::mirroring(c) * p) == AcGePoint3d(-1, 2, 0));
    EXPECT_TRUE((AcGeMatrix3d::mirroring(AcGeLine3d(c, AcGeVector3d::kYAxis)) * p) ==
                AcGePoint3d(-1, 2, 0));
    EXPECT_TRUE((AcGeMatrix2d::rotation(kPi / 2, {1, 2}) * AcGePoint2d(3, 2)) == AcGePoint2d(1, 4));
    const AcGeMatrix2d m = AcGeMatrix2d::rotation(0.3, {4, 5}) * AcGeMatrix2d::scaling(3, {1, 1});
    EXPECT_TRUE(m * m.inverse() == AcGeMatrix2d::kIdentity);
    EXPECT_TRUE(AcGeMatrix3d::rotation(1, AcGeVector3d()) == AcGeMatrix3d::kIdentity);
}

TEST(Matrix, UniformScale) {
    AcGeMatrix3d squeezed;
    AcGeScale3d(2, 2, 2.0000001).getMatrix(squeezed);
    EXPECT_TRUE(AcGeMatrix3d::scaling(1e-6).isUniScaledOrtho());
    EXPECT_TRUE(AcGeMatrix3d::mirroring(AcGePlane::kYZPlane).isUniScaledOrtho());
    EXPECT_TRUE(squeezed.isUniScaledOrtho(Tol(1e-7)));
    EXPECT_FALSE(squeezed.isUniScaledOrtho(Tol(1e-8)));
    EXPECT_TRUE(squeezed.isScaledOrtho());
    AcGeMatrix3d sheared;
    sheared.entry[0][1] = 0.1;
    EXPECT_FALSE(sheared.isScaledOrtho() || sheared.isUniScaledOrtho());
    EXPECT_FALSE(sheared.isSingular());
    EXPECT_FALSE(AcGeMatrix3d::scaling(1e-6).isSingular());
    EXPECT_TRUE(AcGeMatrix3d::scaling(0).isSingular());
    EXPECT_TRUE(AcGeScale3d(2, -2, 2).isProportional());
    EXPECT_FALSE(AcGeScale3d(2, 2, 3).isProportional());
}

TEST(Plane, CoordinatesAndCrossings) {
    const AcGePlane plane(AcGePoint3d(1, 2, 3), AcGeVector3d(0, 1, 0), AcGeVector3d(0, 5, 7));
    const AcGePoint3d p(4, 5, 6);
    EXPECT_NEAR(plane.signedDistanceTo(p), 3.0, 1e-14);
    EXPECT_TRUE(AcGePoint3d(plane, p.convert2d(plane)) == p.orthoProject(plane));
    EXPECT_TRUE(p.project(plane, {1, 1, 0}) == AcGePoint3d(1, 2, 6));
    AcGeLine3d line;
    ASSERT_TRUE(plane.intersectWith(AcGePlane::kXYPlane, line));
    EXPECT_TRUE(line.isEqualTo(AcGeLine3d(AcGePoint3d(1, 0, 0), AcGeVector3d::kYAxis)));
    EXPECT_FALSE(plane.intersectWith(AcGePlane(p, AcGeVector3d::kXAxis), line));
}

}  // namespace
