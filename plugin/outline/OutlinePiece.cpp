#include "StdAfx.h"

#include "OutlinePiece.h"

#include <algorithm>
#include <cmath>

namespace outline {
namespace {

// The half chord of the piece's circle at x, without cancellation.
double RiseAt(const Piece& piece, double x) {
    const double d = x - piece.cx;
    return std::sqrt((std::max)((piece.radius - d) * (piece.radius + d), 0.0));
}

Piece MakePiece(const plane::Point& a, const plane::Point& b, int number) {
    Piece piece;
    const bool isOrdered = a.x <= b.x;
    const plane::Point &left = isOrdered ? a : b, &right = isOrdered ? b : a;
    piece.x0 = left.x;
    piece.y0 = left.y;
    piece.x1 = right.x;
    piece.y1 = right.y;
    piece.curve = number;
    return piece;
}

// (distance from the centre)^2 - radius^2 of a place, from the piece's own end instead of the
// centre: of a circle a million times as large as the piece the centre tells too few digits.
double PowerOf(const Piece& arc, double x, double y) {
    const double qx = x - arc.x0, qy = y - arc.y0;
    return qx * qx + qy * qy - 2.0 * (qx * (arc.cx - arc.x0) + qy * (arc.cy - arc.y0));
}

// A whole line, by a place near the pieces and a unit direction.
struct Ray {
    double x = 0, y = 0, ux = 0, uy = 0;
};

// Where a whole line meets the whole circle of an arc: x alone, none or two.
int MeetRay(const Ray& ray, const Piece& arc, double (&x)[2]) {
    // t^2 + 2 b t + power = 0 along the ray.
    const double b = ray.ux * (ray.x - arc.cx) + ray.uy * (ray.y - arc.cy);
    const double power = PowerOf(arc, ray.x, ray.y);
    const double square = b * b - power;
    if (!(square >= 0.0)) return 0;
    // The root of larger size directly, the other by their product: no cancellation.
    const double root = std::sqrt(square);
    const double large = b > 0.0 ? -b - root : -b + root;
    x[0] = ray.x + large * ray.ux;
    x[1] = large == 0.0 ? x[0] : ray.x + power / large * ray.ux;
    return 2;
}

int LineCircle(const Piece& line, const Piece& arc, double (&x)[2]) {
    const double ux = line.x1 - line.x0, uy = line.y1 - line.y0;
    const double length = std::sqrt(ux * ux + uy * uy);
    return MeetRay({line.x0, line.y0, ux / length, uy / length}, arc, x);
}

// By the line on which both have the same power, and the rounder of both.
int CircleCircle(const Piece& a, const Piece& b, double (&x)[2]) {
    if (a.radius > b.radius) return CircleCircle(b, a, x);
    const double gx = a.cx - b.cx, gy = a.cy - b.cy;
    const double square = gx * gx + gy * gy;
    if (square == 0.0) return 0;
    // The piece's own end has no power of its own circle.
    const double share = -PowerOf(b, a.x0, a.y0) / (2.0 * square);
    const double distance = std::sqrt(square);
    return MeetRay({a.x0 + gx * share, a.y0 + gy * share, -gy / distance, gx / distance}, a, x);
}

// Moves a computed crossing to where the pieces' own heights agree; two steps of Newton's method,
// which stay where they are when they lead away.
double Polish(const Piece& a, const Piece& b, double x, double lo, double hi) {
    for (int i = 0; i < 2; ++i) {
        if (!(x > lo && x < hi)) return x;
        const double off = HeightAt(a, x) - HeightAt(b, x);
        const double slope = SlopeAt(a, x) - SlopeAt(b, x);
        if (off == 0.0 || !(std::fabs(slope) > 1e-12) || !std::isfinite(slope)) return x;
        const double next = x - off / slope;
        if (!(next > lo && next < hi)) return x;
        if (!(std::fabs(HeightAt(a, next) - HeightAt(b, next)) < std::fabs(off))) return x;
        x = next;
    }
    return x;
}

}  // namespace

void AppendPieces(const plane::Curve& curve, int number, double upright,
                  std::vector<Piece>& pieces) {
    const auto add = [&](const plane::Point& a, const plane::Point& b, int bend) {
        Piece piece = MakePiece(a, b, number);
        if (!(piece.x1 - piece.x0 > upright)) return;
        piece.bend = bend;
        if (bend != 0) {
            piece.cx = curve.centre.x;
            piece.cy = curve.centre.y;
            piece.radius = curve.radius;
        }
        pieces.push_back(piece);
    };
    if (!curve.IsArc()) {
        add(curve.from, curve.to, 0);
        return;
    }
    // Cut at the leftmost and the rightmost point of the circle, where the arc has them inside.
    const double turn = curve.bulge > 0.0 ? 1.0 : -1.0;
    const plane::Vector start = curve.StartDirection() * turn, end = curve.EndDirection() * turn;
    plane::Point cuts[2];
    int count = 0;
    for (const double side : {1.0, -1.0}) {
        const plane::Point at{curve.centre.x + side * curve.radius, curve.centre.y};
        const double share = plane::ShareOf(curve, at);
        if (!(share > 0.0 && share < 1.0)) continue;
        // An end that is there within `upright` stays the end of its piece.
        const plane::Point& corner = share < 0.5 ? curve.from : curve.to;
        if (std::fabs(at.x - corner.x) <= upright) continue;
        cuts[count++] = at;
    }
    if (count == 2 && plane::ShareOf(curve, cuts[0]) > plane::ShareOf(curve, cuts[1]))
        std::swap(cuts[0], cuts[1]);
    // Turned to run counter-clockwise, an arc on the upper half of its circle heads left.
    plane::Point from = curve.from;
    for (int i = 0; i <= count; ++i) {
        const plane::Point to = i < count ? cuts[i] : curve.to;
        double heading = (to.x - from.x) * turn;
        if (heading == 0.0) heading = i == 0 ? start.x : end.x;
        add(from, to, heading < 0.0 ? 1 : -1);
        from = to;
    }
}

double HeightAt(const Piece& piece, double x) {
    if (x <= piece.x0) return piece.y0;
    if (x >= piece.x1) return piece.y1;
    const bool isLeft = x - piece.x0 <= piece.x1 - x;
    const double ex = isLeft ? piece.x0 : piece.x1, ey = isLeft ? piece.y0 : piece.y1;
    if (piece.bend == 0) return ey + (x - ex) * ((piece.y1 - piece.y0) / (piece.x1 - piece.x0));
    // h^2 - h0^2 = (x0 - cx)^2 - (x - cx)^2, and so h - h0 without the centre's height. An end at
    // an upright tangent may lie beyond it by rounding; the circle still goes through it.
    const double h0 = piece.bend * (ey - piece.cy);
    const double q = (ex - x) * ((ex - piece.cx) + (x - piece.cx));
    const double h = std::sqrt((std::max)(h0 * h0 + q, 0.0));
    if (!(h0 > 0.0)) return piece.cy + piece.bend * h;
    return ey + piece.bend * q / (h + h0);
}

double SlopeAt(const Piece& piece, double x) {
    if (piece.bend == 0) return (piece.y1 - piece.y0) / (piece.x1 - piece.x0);
    return -piece.bend * (x - piece.cx) / RiseAt(piece, x);
}

double HighestIn(const Piece& piece, double lo, double hi) {
    const double ends = (std::max)(HeightAt(piece, lo), HeightAt(piece, hi));
    if (piece.bend <= 0 || piece.cx <= lo || piece.cx >= hi) return ends;
    return (std::max)(ends, HeightAt(piece, piece.cx));
}

double LowestIn(const Piece& piece, double lo, double hi) {
    const double ends = (std::min)(HeightAt(piece, lo), HeightAt(piece, hi));
    if (piece.bend >= 0 || piece.cx <= lo || piece.cx >= hi) return ends;
    return (std::min)(ends, HeightAt(piece, piece.cx));
}

int CrossingsOf(const Piece& a, const Piece& b, double lo, double hi, double (&at)[2]) {
    double x[2];
    int count = 0;
    if (a.bend == 0 && b.bend == 0) {
        const double before = HeightAt(a, lo) - HeightAt(b, lo);
        const double after = HeightAt(a, hi) - HeightAt(b, hi);
        if ((before > 0.0) == (after > 0.0) || before == 0.0 || after == 0.0) return 0;
        x[0] = lo + (hi - lo) * (before / (before - after));
        count = 1;
    } else {
        count = a.bend == 0   ? LineCircle(a, b, x)
                : b.bend == 0 ? LineCircle(b, a, x)
                              : CircleCircle(a, b, x);
        for (int i = 0; i < count; ++i) x[i] = Polish(a, b, x[i], lo, hi);
    }
    int found = 0;
    for (int i = 0; i < count; ++i)
        if (x[i] > lo && x[i] < hi) at[found++] = x[i];
    if (found == 2 && at[0] > at[1]) std::swap(at[0], at[1]);
    return found;
}

plane::Curve PartOf(const Piece& piece, double lo, double hi) {
    const plane::Point from{lo, HeightAt(piece, lo)}, to{hi, HeightAt(piece, hi)};
    if (piece.bend == 0) return plane::MakeLine(from, to);
    // Left to right an upper half turns right. Flat arcs go by the chord, since their centre lies
    // too far away to tell the angle.
    const double ratio = plane::Distance(from, to) / (2.0 * piece.radius);
    const plane::Point centre{piece.cx, piece.cy};
    if (ratio > 0.5) return plane::MakeArcOnCircle(from, to, centre, piece.radius, piece.bend < 0);
    plane::Curve part = plane::MakeLine(from, to);
    part.bulge = -piece.bend * std::tan(0.5 * std::asin(ratio));
    part.centre = centre;
    part.radius = piece.radius;
    return part;
}

}  // namespace outline
