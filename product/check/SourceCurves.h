// The curves of a tool's drawing as they are displayed, read without the engine: its envelopes are
// checked against them.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "product/base/Outline.h"
#include "arxHeaders.h"

namespace product {

enum class CurveKind {
    Contour,  // may be part of an outline
    Round,    // a full circle or ellipse: shows a hole or marks a detail more often than an outline
    Dashed,   // hidden lines and the like
    Centre,   // drawn with a centre line type
    Ignored   // dimension layer, envelopes
};

struct SourceCurve {
    const AcDbCurve& curve;
    CurveKind kind;
    std::string layer;    // UTF-8
    AcDbObjectId picked;  // the entity that it is or came from
};

// Calls use() for every curve among the entities and within their heavy polylines, each in its
// place. Rays, leaders and construction lines are none.
//
// intoBlocks  whether blocks are taken apart, too, to any depth; layers and line types are those
//             that the viewer sees then: layer 0 and ByBlock mean those of the reference
// cost        O(curves); copies are made in memory, the drawing is not changed
// fails       Failure with NoResult, naming the block, when blocks repeat themselves without end
void ForEachCurve(const AcArray<AcDbObjectId>& ids, bool intoBlocks,
                  const std::function<void(const SourceCurve&)>& use);

// The middle of the longest horizontal centre line among the entities; blocks are looked into when
// there is none outside of them. Lines on a layer named after centre lines count when none is drawn
// with a centre line type.
std::optional<Point> FindAxis(const AcArray<AcDbObjectId>& ids);

// The curve as chords that leave it by no more than the tolerance; empty when it has no points.
// cost  O(points), at most kMostChords
std::vector<Point> ChordsOf(const AcDbCurve& curve, double tolerance);

// The same of corners and bulges; a closed ring ends where it begins.
std::vector<Point> ChordsOf(const std::vector<Vertex>& ring, bool closed, double tolerance);

constexpr int kMostChords = 20000;

}  // namespace product
