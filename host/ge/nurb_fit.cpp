#include "host/ge/nurb_fit.h"

namespace host {
namespace {

// One row of the band matrix: lower * P[i-1] + middle * P[i] + upper * P[i+1] = right.
struct Row {
    double lower, middle, upper;
    AcGeVector3d right;
};

// Curvature 0, or a given derivative, at the end whose control point is end. near is the length of
// the parameter interval at the end, far that of it and its neighbour. inward tells on which side
// of the row the next control point stands.
Row EndRow(const AcGePoint3d& end, const AcGeVector3d& derivative, double near, double far,
           bool nextIsUpper) {
    if (derivative.lengthSqrd() > 0.0)
        return {0.0, 1.0, 0.0, end.asVector() + derivative * (near / 3.0)};
    const double next = -1.0 / far;
    return {nextIsUpper ? 0.0 : next, 1.0 / near + 1.0 / far, nextIsUpper ? next : 0.0,
            end.asVector() / near};
}

// The three cubic basis functions that are not 0 at knot j.
Row InnerRow(const AcGeDoubleArray& u, int j, const AcGePoint3d& point) {
    const double ahead = u[j + 1] - u[j], behind = u[j] - u[j - 1];
    const double both = u[j + 1] - u[j - 1];
    const double lower = ahead * ahead / (both * (u[j + 1] - u[j - 2]));
    const double upper = behind * behind / (both * (u[j + 2] - u[j - 1]));
    return {lower, 1.0 - lower - upper, upper, point.asVector()};
}

// Elimination without pivots: the rows are totally positive or dominated by their middle.
void Solve(AcArray<Row>& rows) {
    for (int i = 1; i < rows.length(); ++i) {
        const double factor = rows[i].lower / rows[i - 1].middle;
        rows[i].middle -= factor * rows[i - 1].upper;
        rows[i].right -= rows[i - 1].right * factor;
    }
    for (int i = rows.length() - 1; i >= 0; --i) {
        if (i + 1 < rows.length()) rows[i].right -= rows[i + 1].right * rows[i].upper;
        rows[i].right /= rows[i].middle;
    }
}

}  // namespace

void FitCubic(const AcGePoint3dArray& points, const AcGeVector3d& startTangent,
              const AcGeVector3d& endTangent, AcGeDoubleArray& knots,
              AcGePoint3dArray& controlPoints) {
    const int count = points.length();
    knots.removeAll();
    for (int i = 0; i < 4; ++i) knots.append(0.0);
    for (int i = 1; i < count; ++i)
        knots.append(knots.last() + points[i].distanceTo(points[i - 1]));
    for (int i = 0; i < 3; ++i) knots.append(knots.last());

    const int end = knots.length() - 1;
    AcArray<Row> rows(count);
    rows.append(
        EndRow(points.first(), startTangent, knots[4] - knots[1], knots[5] - knots[2], true));
    for (int i = 1; i + 1 < count; ++i) rows.append(InnerRow(knots, i + 3, points[i]));
    rows.append(EndRow(points.last(), -endTangent, knots[end - 1] - knots[end - 4],
                       knots[end - 2] - knots[end - 5], false));
    Solve(rows);

    controlPoints.removeAll();
    controlPoints.append(points.first());
    for (const Row& row : rows) controlPoints.append(row.right.asPoint());
    controlPoints.append(points.last());
}

}  // namespace host
