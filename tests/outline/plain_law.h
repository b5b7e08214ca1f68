// The rules of the exact envelope in the plainest form: every pair of curves, every ray by itself.
// Shares no code with the engine; of plane only the records of points and curves.
#pragma once

#include <string>
#include <vector>

#include "plugin/outline/OutlineLaw.h"

namespace plain {

struct P {
    double s = 0, r = 0;
};

// A line or an arc by angles.
struct Curve {
    P a, b;
    bool isArc = false;
    P c;
    double radius = 0, from = 0, sweep = 0;  // radians, sweep signed
    bool isUpright = false;
    bool isApproximate = false;  // goes on along its tangent
};

struct Bridge {
    P from, to;
    double length = 0;
};

class Law {
public:
    explicit Law(const outline::Request& request);

    bool isEmpty = false;
    double size = 0, g = 0, d = 0, o = 0, tiny = 0;
    double s0 = 0, s1 = 0;
    std::vector<Bridge> bridges;
    std::vector<P> cutEnds;   // free ends whose tails are left out
    std::vector<P> freeEnds;  // those that are left

    // The profile with bridges, without tails; gaps closed by straight lines. -1 outside.
    double R(double s) const;
    // True for a point above the profile or outside of a face.
    bool IsFree(P p) const;
    // How far the face at that end lies inside of it, at a height.
    double Depth(double r, bool isRight) const;

private:
    struct End {
        P at, inward;
        int curve = 0;
        bool isFree = false, isSeen = false, falls[2] = {false, false};
        double tail = 0;
        double back = 0;  // the place of the first contact along the carrier
        bool isWhole = false, isCut = false, isJoined[2] = {false, false};
    };
    void Clip(const outline::Request& request);
    void DropNothing();
    void AddJoins();
    void FindEnds();
    bool Leaves(const Curve& c, const End& end) const;
    bool Doubles(const Curve& a, const Curve& b) const;
    bool GoesOn(const End& end) const;
    std::vector<int> OneCurve(int start) const;
    void FindTail(End& end) const;
    double HighestOf(const std::vector<Curve>& list, double lo, double hi) const;
    double HeightBeside(double s, int side) const;
    bool RisesAbove(P from, P to) const;
    bool IsWallMissing(const End& end, int side) const;
    void Build();
    void Cut();
    void TraceFaces(bool isVertical);
    void TraceFace(bool isRight);
    double OutermostAt(double r, bool isRight) const;
    bool IsUnder(double r, double from, double to, bool isRight, double slack) const;

    std::vector<Curve> m_curves;  // the contour
    std::vector<Curve> m_joins;
    std::vector<Curve> m_rest;  // with bridges, without tails
    std::vector<End> m_ends;
    bool m_isVertical = false;
    struct Stop {
        double r = 0, depth = 0;
        bool isStraight = false;
    };
    std::vector<Stop> m_faces[2];  // from the top down
};

// What is wrong with the outline; empty when it is the envelope.
std::string Faults(const Law& law, const std::vector<plane::Curve>& edges);

}  // namespace plain
