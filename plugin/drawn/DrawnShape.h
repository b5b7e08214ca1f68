// The curves of an item in the drawing's plane: lines and arcs as they are drawn, ellipses and
// splines exactly and as tangent arcs.
#pragma once

#include <vector>

#include "StdAfx.h"
#include "plane/curve.h"
#include "plane/smooth.h"

// What one entity draws, seen from above (along -z). z is left out.
struct SDrawnShape {
    // In the entity's order and direction, each starting where the one before ends. Pieces without
    // length are left out.
    std::vector<plane::Curve> m_curves;
    // For each curve the number of the smooth curve that it follows, or kExact.
    std::vector<int> m_smoothOf;
    std::vector<plane::SmoothCurve> m_smooth;
    // The last curve ends where the first one starts.
    bool m_bClosed = false;
    // A full circle or ellipse on its own.
    bool m_bRound = false;
    // False when the tolerance could not be kept with the most arcs that one curve may have.
    bool m_bWithin = true;
    // False when something of the entity cannot be drawn as it is stated: coordinates that are no
    // numbers, an arc without a radius, a spline whose knots fall or are too few. What has no
    // length only is sound.
    bool m_bSound = true;

    static constexpr int kExact = -1;
};

// The shape of a line, arc, circle, ellipse, spline, light or heavy polyline (curve- and spline-
// fitted ones as they show), wherever its plane lies.
//
// place     maps the entity to the drawing; see SDrawnItem
// dCurveTol tangent arcs leave ellipses and splines by no more; drawing units
// exact     what is drawn as an arc and stays one: its ends, its bulge and, without a map, its own
//           centre and radius, to the last digit. Circles are two halves. An arc that is scaled
//           unequally, or seen aslant, becomes a piece of an ellipse; a scaled spline stays one.
// result    false for entities of other types, rays and leaders among them, for what cannot be read
//           and for what has no length
bool GetDrawnShape(const AcDbEntity& entity, const AcGeMatrix3d& place, double dCurveTol,
                   SDrawnShape& shape);
