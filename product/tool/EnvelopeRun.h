// One run of the engine on a drawing, and what came of it.
#pragma once

#include <string>
#include <vector>

#include "apps/qzenvelope/Options.h"
#include "product/tool/Outline.h"
#include "product/tool/Selection.h"
#include "plugin/engine/EncircleTrace.h"

namespace app {

struct Envelope {
    bool found = false;
    bool closed = false;
    std::string layer, handle;
    std::vector<Vertex> vertices;
    Box extents;
    double length = 0;
    double diameter = 0;  // twice the greatest distance from the axis; 0 without an axis
    std::optional<SelfMeeting> selfMeeting;
};

// Reads an envelope and what can be told of it; not found for a null id. The axis gives the
// diameter. fails  Failure with kNoResult when the polyline cannot be read
Envelope ReadEnvelope(const AcDbObjectId& id, const std::optional<Point>& axis);

struct EnvelopeRun {
    Selection selection;
    Envelope envelope;
    CEncircleTrace trace;
    double seconds = 0;                 // of the engine alone, wall clock
    std::vector<std::string> warnings;  // what the user should know though the run went on
};

// Picks, draws the axis, runs the engine, takes the axis away again.
//
// database  is made the working one; gains the envelope and its layer; every layer is switched on
// fails     Failure: kUsage for parameters that make no sense for what was picked (a centre far
//           outside, a precision that would make millions of segments, tolerances larger than the
//           tool), kNoResult when nothing was picked. No envelope is no failure: found stays false.
EnvelopeRun RunEnvelope(AcDbDatabase& database, const ComputeOptions& options);

}  // namespace app
