// A piece of a profile: a line or a circular arc in the plane of the axis, x along the axis, y the
// height above it. Everything here stays accurate for arcs that are nearly lines (radius a million
// times the chord), because such envelopes occur: no formula goes through the far-away centre.
#pragma once

#include <optional>

#include "gepnt2d.h"

namespace host::solid {

struct Piece {
    AcGePoint2d from, to;
    double bulge = 0.0;  // tan(sweep / 4), counter-clockwise positive; 0 for a line
    // Of arcs only; set by MakeArc, and moved onto the axis where that is meant.
    AcGePoint2d centre;
    double radius = 0.0;

    bool IsArc() const { return bulge != 0.0; }
    AcGeVector2d Chord() const { return to - from; }
    // Half the swept angle with the bulge's sign, in (-pi, pi).
    double HalfAngle() const;
    double Length() const;
    // How far the arc rises above its chord.
    double Sagitta() const;
    // The middle of the piece, by length.
    AcGePoint2d Middle() const;
    // Unit direction of travel at the start and at the end.
    AcGeVector2d StartDirection() const;
    AcGeVector2d EndDirection() const;
    Piece Reversed() const;
};

// A line when bulge is 0, else the arc; no check of any kind.
Piece MakePiece(const AcGePoint2d& from, const AcGePoint2d& to, double bulge);

// The arc from one point to the other on a given circle, turning left (counter-clockwise) or right.
Piece MakeArcOnCircle(const AcGePoint2d& from, const AcGePoint2d& to, const AcGePoint2d& centre,
                      double radius, bool turnsLeft);

// Axis-parallel box of a piece, true to rounding.
struct Box {
    AcGePoint2d low, high;

    void Add(const Box& other);
    void Add(const AcGePoint2d& p);
    bool Meets(const Box& other, double margin) const;
};
Box BoxOf(const Piece& piece);

// The point of the piece that lies farthest in a unit direction.
AcGePoint2d Farthest(const Piece& piece, const AcGeVector2d& direction);

// The distance of a point from the piece.
double Distance(const Piece& piece, const AcGePoint2d& p);

// Where two pieces that share no corner come together: their distance is tol or less there.
std::optional<AcGePoint2d> Meeting(const Piece& a, const Piece& b, double tol);

// Where two neighbours, b starting where a ends, come together once more.
std::optional<AcGePoint2d> SecondMeeting(const Piece& a, const Piece& b, double tol);

// Where the piece meets the axis y = 0 on its way, ends included.
std::optional<AcGePoint2d> AxisPoint(const Piece& piece);

// Integrals along a piece. Summed over a counter-clockwise ring, area is the area inside, moment
// the area's moment about the axis (area times height of its centroid); length and lengthMoment are
// those of the outline itself.
struct PieceIntegrals {
    double area = 0.0;
    double moment = 0.0;
    double length = 0.0;
    double lengthMoment = 0.0;
};
PieceIntegrals Integrate(const Piece& piece);

}  // namespace host::solid
