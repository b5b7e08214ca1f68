#include "product/tool/EngineRequest.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "product/tool/Selection.h"
#include "product/tool/Text.h"

namespace app {
namespace {

// More segments than this take minutes and gigabytes; nobody means that.
constexpr double kMostSegments = 2e6;

std::string Format(const char* format, double a, double b = 0) {
    char text[128];
    std::snprintf(text, sizeof text, format, a, b);
    return text;
}

void CheckLengths(const CEncircleCalInfo& parameters, double size) {
    const double tolerances[] = {parameters.m_tolPoint.equalPoint(),
                                 parameters.m_tolLine.equalPoint()};
    for (const double tolerance : tolerances)
        if (tolerance > size)
            throw Failure(kUsage, Format("a tolerance of %.6g is larger than all that was picked "
                                         "(%.6g)",
                                         tolerance, size) +
                                      "; use one far below the smallest feature, such as 0.0005");
    // A stored task can bring any number.
    for (const double length : {tolerances[0], tolerances[1], parameters.m_tolHorVer.equalPoint(),
                                parameters.m_dArcPrecision})
        if (!(length > 0) || !std::isfinite(length))
            throw Failure(kUsage,
                          Format("a tolerance or an arc precision of %g leaves no length", length) +
                              "; set the task's parameters anew");
    if (!(parameters.m_dSideLength >= 0) || !std::isfinite(parameters.m_dSideLength))
        throw Failure(kUsage, Format("a side length of %g is none", parameters.m_dSideLength) +
                                  "; set the task's parameters anew");
}

// "block 'NAME' (reference 1A)" for a reference, else its class and handle.
std::string NameOf(const AcDbObjectId& id) {
    const std::string handle = HandleText(id);
    AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForRead);
    AcString name;
    if (reference.openStatus() != Acad::eOk ||
        acdbSymUtil()->getSymbolName(name, reference->blockTableRecord()) != Acad::eOk)
        return "entity " + handle;
    return "block '" + ToUtf8(name) + "' (reference " + handle + ")";
}

void CheckPieces(const AcArray<AcDbObjectId>& picked) {
    const PieceEstimate pieces = EstimatePieces(picked);
    if (pieces.count > kMostSegments)
        throw Failure(kUsage, NameOf(pieces.largest) +
                                  Format(" makes most of the %.6g entities that what was picked "
                                         "comes to, more than %.0f",
                                         pieces.count, kMostSegments) +
                                  "; pick without it by --window");
}

void CheckAxis(const Point& c, const Box& box, double size, std::vector<std::string>& warnings) {
    const double offX = std::max({box.minX - c.x, c.x - box.maxX, 0.0});
    const double offY = std::max({box.minY - c.y, c.y - box.maxY, 0.0});
    const std::string where = "the centre " + Figure(c.x) + "," + Figure(c.y) + " lies ";
    const std::string what = " units outside what was picked (" + Describe(box) + ")";
    if (!(std::max(offX, offY) <= size))
        throw Failure(kUsage, where + Figure(std::max(offX, offY)) + what +
                                  "; give a point on the tool's axis");
    if (offY > 0) warnings.push_back(where + Figure(offY) + what);
}

}  // namespace

CEncircleCalInfo ParametersOf(const ToolOptions& options) {
    CEncircleCalInfo info;
    const auto setBoth = [](AcGeTol& tolerance, double value) {
        tolerance.setEqualPoint(value);
        tolerance.setEqualVector(value);
    };
    info.m_bExcludeDashed = !options.includeDashed;
    info.m_bSideLinesVertical = options.verticalEnds;
    setBoth(info.m_tolPoint, options.pointTolerance);
    setBoth(info.m_tolLine, options.lineTolerance);
    setBoth(info.m_tolHorVer, options.horVerTolerance);
    info.m_dArcPrecision = options.arcPrecision;
    info.m_dSideLength = options.sideLength;
    info.m_nHalfSide = options.lowerHalf ? 1 : 0;
    return info;
}

EnvelopePipeline PipelineOf(Algorithm algorithm) {
    static const EnvelopePipeline kPipelines[] = {
        &CEncircleLine::GetEncircleLine3, &CEncircleLine::GetEncircleLineByHatch,
        &CEncircleLine::GetEncircleLine, &CEncircleLine::GetEncircleLine2};
    return kPipelines[static_cast<int>(algorithm)];
}

std::string Describe(const Box& box) {
    return "x " + Figure(box.minX) + " .. " + Figure(box.maxX) + ", y " + Figure(box.minY) +
           " .. " + Figure(box.maxY);
}

void CheckRequest(const AcArray<AcDbObjectId>& picked, const Box& box,
                  const CEncircleCalInfo& parameters, const std::optional<Point>& axis,
                  std::vector<std::string>& warnings) {
    if (box.IsEmpty())
        throw Failure(kNoResult,
                      "what was picked has no extents; pick lines, arcs, polylines or blocks");
    const double size = std::max(box.Width(), box.Height());
    CheckLengths(parameters, size);
    CheckPieces(picked);
    const double precision = parameters.m_dArcPrecision;
    const double segments = EstimateSegments(picked, precision);
    if (segments > kMostSegments)
        throw Failure(
            kUsage, Format("an arc precision of %.6g would cut the curves into about %.0f segments",
                           precision, segments) +
                        Format("; use %.2g or more, which stays below %.0f",
                               precision * segments / kMostSegments * 1.05, kMostSegments));
    if (axis) CheckAxis(*axis, box, size, warnings);
}

}  // namespace app
