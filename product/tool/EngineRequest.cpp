#include "product/tool/EngineRequest.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "product/base/Failure.h"
#include "product/base/Text.h"

namespace product {
namespace {

// An axis that passes what was picked by less of its size lies on its border.
constexpr double kBeside = 1e-6;

std::string Format(const char* format, double a, double b = 0) {
    char text[128];
    std::snprintf(text, sizeof text, format, a, b);
    return text;
}

void RefuseLarge(double tolerance, double size) {
    if (tolerance > size)
        throw Failure(Fault::Request,
                      Format("a tolerance of %.6g is larger than all that was picked "
                             "(%.6g)",
                             tolerance, size) +
                          "; use one far below the smallest feature, such as 0.0005");
}

void CheckExactLengths(const ToolParameters::ExactLengths& lengths, double size) {
    for (const double length : {lengths.point, lengths.overshoot, lengths.curve})
        RefuseLarge(length, size);
}

void CheckLengths(const ToolParameters& parameters, double size) {
    const double tolerances[] = {parameters.pointTolerance, parameters.lineTolerance};
    for (const double tolerance : tolerances) RefuseLarge(tolerance, size);
    // A stored task can bring any number.
    for (const double length :
         {tolerances[0], tolerances[1], parameters.horVerTolerance, parameters.arcPrecision})
        if (!(length > 0) || !std::isfinite(length))
            throw Failure(Fault::Request,
                          Format("a tolerance or an arc precision of %g leaves no length", length) +
                              "; set the task's parameters anew");
    if (parameters.arcPrecision <= parameters.pointTolerance)
        throw Failure(Fault::Request,
                      Format("an arc precision of %.6g is not above the point tolerance of %.6g: "
                             "curves would be taken for points",
                             parameters.arcPrecision, parameters.pointTolerance) +
                          "; use a larger precision, such as 0.3");
    if (!(parameters.sideLength >= 0) || !std::isfinite(parameters.sideLength))
        throw Failure(Fault::Request, Format("a side length of %g is none", parameters.sideLength) +
                                          "; set the task's parameters anew");
}

// "block 'NAME' (reference 1A)" for a reference, else its class and handle.
std::string EntityName(const AcDbObjectId& id) {
    const std::string handle = HandleText(id);
    AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForRead);
    AcString name;
    if (reference.openStatus() != Acad::eOk ||
        acdbSymUtil()->getSymbolName(name, reference->blockTableRecord()) != Acad::eOk)
        return "entity " + handle;
    return "block '" + ToUtf8(name) + "' (reference " + handle + ")";
}

void CheckSegments(const Selection& selection, const ToolParameters& parameters) {
    const double precision = parameters.arcPrecision, limit = parameters.limit;
    const PieceEstimate estimate = EstimateSegments(selection.ids, precision);
    const double segments = estimate.count;
    if (!std::isfinite(segments))
        throw Failure(Fault::Request,
                      EntityName(estimate.largest) +
                          " is a curve without a length: a bulge so near 0 that its radius is "
                          "endless, or coordinates beyond all numbers; draw it straight, or pick "
                          "without it by --window");
    if (segments > limit)
        throw Failure(
            Fault::Request,
            Format("an arc precision of %.6g would cut the curves into about %.0f segments",
                   precision, segments) +
                Format("; use %.2g or more, which stays below %.0f, or raise --limit",
                       precision * segments / limit * 1.05, limit));
}

// A line in any direction: how far it passes the box by.
void CheckAxisLine(const Axis& axis, const Box& box, double size,
                   std::vector<std::string>& warnings) {
    const AxisFrame frame(axis);
    Box about;
    for (const Point& corner : {Point{box.low.x, box.low.y}, Point{box.high.x, box.low.y},
                                Point{box.high.x, box.high.y}, Point{box.low.x, box.high.y}})
        about.Add(frame.In(corner));
    const double off = std::max({about.low.y, -about.high.y, 0.0});
    const std::string what =
        "the axis passes " + Figure(off) + " units beside what was picked (" + Describe(box) + ")";
    if (!(off <= size)) throw Failure(Fault::Request, what + "; give a line through the tool");
    if (off > kBeside * size) warnings.push_back(what + ": the profile does not come to its axis");
}

void CheckAxis(const Point& c, const Box& box, double size, std::vector<std::string>& warnings) {
    const double offX = std::max({box.low.x - c.x, c.x - box.high.x, 0.0});
    const double offY = std::max({box.low.y - c.y, c.y - box.high.y, 0.0});
    if (!(std::max(offX, offY) <= size))
        throw Failure(Fault::Request, "the centre " + Figure(c.x) + "," + Figure(c.y) + " lies " +
                                          Figure(std::max(offX, offY)) +
                                          " units outside what was picked (" + Describe(box) +
                                          "); give a point on the tool's axis");
    if (offY > kBeside * size)
        warnings.push_back(
            "the profile does not come to its axis: everything that was picked lies " +
            Figure(offY) + (c.y < box.low.y ? " or more above" : " or more below") +
            " y = " + Figure(c.y));
}

}  // namespace

void CheckPieces(const AcArray<AcDbObjectId>& picked, double limit) {
    const PieceEstimate pieces = EstimatePieces(picked);
    if (pieces.count > limit)
        throw Failure(Fault::Request,
                      EntityName(pieces.largest) +
                          Format(" makes most of the %.6g entities that what was picked "
                                 "comes to, more than %.0f",
                                 pieces.count, limit) +
                          "; pick without it by --window, or raise --limit");
}

std::string Describe(const Box& box) {
    return "x " + Figure(box.low.x) + " .. " + Figure(box.high.x) + ", y " + Figure(box.low.y) +
           " .. " + Figure(box.high.y);
}

void CheckRequest(const Selection& selection, const ToolParameters& parameters,
                  const std::optional<Axis>& axis, std::vector<std::string>& warnings) {
    const Box& box = selection.box;
    if (box.IsEmpty())
        throw Failure(Fault::NothingThere,
                      "what was picked has no extents; pick lines, arcs, polylines or blocks");
    const double size = std::max(box.Width(), box.Height());
    // The exact envelope judges its own lengths, and cuts nothing into segments.
    const bool isExact = parameters.algorithm == Algorithm::Exact;
    if (isExact)
        CheckExactLengths(parameters.exact, size);
    else
        CheckLengths(parameters, size);
    CheckPieces(selection.ids, parameters.limit);
    if (!isExact) CheckSegments(selection, parameters);
    if (!axis) return;
    if (axis->IsLevel())
        CheckAxis(axis->from, box, size, warnings);
    else
        CheckAxisLine(*axis, box, size, warnings);
}

}  // namespace product
