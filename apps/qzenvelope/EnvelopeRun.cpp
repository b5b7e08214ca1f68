#include "apps/qzenvelope/EnvelopeRun.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>

#include "apps/qzenvelope/Text.h"
#include "engine/EncircleLayers.h"
#include "engine/EncircleLine.h"
#include "host/db/build.h"
#include "util/AddEntity.h"
#include "util/CurrentLayerGuard.h"
#include "util/EraseEntity.h"

namespace app {
namespace {

// Drawing units by which the axis line stands out on both sides of what was picked.
constexpr double kAxisOverhang = 10.0;
// More segments than this take minutes and gigabytes; nobody means that.
constexpr double kMostSegments = 2e6;
constexpr Adesk::UInt16 kByLayer = 256;

std::string Format(const char* format, double a, double b = 0) {
    char text[128];
    std::snprintf(text, sizeof text, format, a, b);
    return text;
}

std::string Describe(const Box& box) {
    return Format("x %.6g..%.6g, ", box.minX, box.maxX) +
           Format("y %.6g..%.6g", box.minY, box.maxY);
}

[[noreturn]] void RefuseEmpty(const Selection& selection, const ComputeOptions& options) {
    std::string text = options.input + ": nothing was picked";
    if (!options.window) {
        text += "; model space is empty, qzenvelope info shows what the drawing holds";
    } else if (selection.notDisplayed > 0) {
        text += "; the " + std::to_string(selection.notDisplayed) +
                " entities inside the window are invisible or on layers that are off or frozen:"
                " switch them on, or leave --window out";
    } else {
        text += "; no entity lies wholly inside the window " + Describe(*options.window) +
                ": enlarge it, or leave --window out";
    }
    throw Failure(kNoResult, text);
}

// What only the picked entities can tell about the parameters.
void CheckParameters(const Selection& selection, const ComputeOptions& options,
                     std::vector<std::string>& warnings) {
    const Box& box = selection.box;
    if (box.IsEmpty())
        throw Failure(kNoResult, options.input +
                                     ": what was picked has no extents; pick lines,"
                                     " arcs, polylines or blocks");
    const double size = std::max(box.Width(), box.Height());
    for (const double tolerance : {options.pointTolerance, options.lineTolerance})
        if (tolerance > size)
            throw Failure(kUsage, options.input + ": a tolerance of " +
                                      Format("%.6g is larger than all that was picked (%.6g)",
                                             tolerance, size) +
                                      "; use one far below the smallest feature, such as 0.0005");
    const double segments = EstimateSegments(selection.ids, options.arcPrecision);
    if (segments > kMostSegments)
        throw Failure(kUsage, options.input + ": --arc-precision " +
                                  Format("%.6g would cut the curves into about %.0f segments",
                                         options.arcPrecision, segments) +
                                  Format("; use %.2g or more, which stays below %.0f",
                                         options.arcPrecision * segments / kMostSegments * 1.05,
                                         kMostSegments));
    if (options.noAxis || !options.centre) return;
    const Point c = *options.centre;
    const double offX = std::max({box.minX - c.x, c.x - box.maxX, 0.0});
    const double offY = std::max({box.minY - c.y, c.y - box.maxY, 0.0});
    const std::string where = Format("the centre %.6g,%.6g lies ", c.x, c.y);
    const std::string what = " units outside what was picked (" + Describe(box) + ")";
    if (std::max(offX, offY) > size)
        throw Failure(kUsage, options.input + ": " + where + Format("%.6g", std::max(offX, offY)) +
                                  what + "; give a point on the tool's axis");
    if (offY > 0) warnings.push_back(where + Format("%.6g", offY) + what);
}

CEncircleCalInfo ParametersOf(const ComputeOptions& options) {
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

using Pipeline = void (CEncircleLine::*)(const AcArray<AcDbObjectId>&, AcDbObjectId&);

Pipeline PipelineOf(Algorithm algorithm) {
    static const Pipeline kPipelines[] = {
        &CEncircleLine::GetEncircleLine3, &CEncircleLine::GetEncircleLineByHatch,
        &CEncircleLine::GetEncircleLine, &CEncircleLine::GetEncircleLine2};
    return kPipelines[static_cast<int>(algorithm)];
}

// The temporary axis line; gone at the end of the scope whatever happens.
class AxisLine {
public:
    AxisLine(const Box& box, double y) {
        // Not on the current layer: that may be locked, and the line could not be erased again.
        const CCurrentLayerGuard layer(kEnvelopeLayer);
        m_id = AddLine(AcGePoint3d(box.minX - kAxisOverhang, y, 0),
                       AcGePoint3d(box.maxX + kAxisOverhang, y, 0), kByLayer, ACDB_MODEL_SPACE);
        if (m_id.isNull()) throw Failure(kNoResult, "the axis line cannot be drawn");
    }
    ~AxisLine() { EraseById(m_id); }
    AxisLine(const AxisLine&) = delete;
    AxisLine& operator=(const AxisLine&) = delete;
    AcDbObjectId Id() const { return m_id; }

private:
    AcDbObjectId m_id;
};

// What the run must not leave behind; a report of it is worth more than silence.
void CheckNothingIsOpen(AcDbDatabase& database, std::vector<std::string>& warnings) {
    for (const host::OpenObject& open : host::OpenObjectsReport(database))
        warnings.push_back("the run left object " + HandleText(AcDbHandle(open.handle)) +
                           " open (" + ToUtf8(open.className.c_str()) + ")");
}

Envelope ReadEnvelope(const AcDbObjectId& id, const ComputeOptions& options) {
    Envelope envelope;
    if (id.isNull()) return envelope;
    AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
    if (polyline.openStatus() != Acad::eOk)
        throw Failure(kNoResult, options.input + ": the envelope polyline cannot be opened");
    AcString layer;
    if (polyline->layer(layer) == Acad::eOk) envelope.layer = ToUtf8(layer);
    for (unsigned int i = 0; i < polyline->numVerts(); ++i) {
        AcGePoint3d point;
        Vertex vertex;
        if (polyline->getPointAt(i, point) != Acad::eOk ||
            polyline->getBulgeAt(i, vertex.bulge) != Acad::eOk)
            throw Failure(kNoResult, options.input + ": the envelope's vertices cannot be read");
        vertex.x = point.x;
        vertex.y = point.y;
        envelope.vertices.push_back(vertex);
    }
    envelope.found = true;
    envelope.closed = polyline->isClosed();
    envelope.handle = HandleText(id);
    envelope.extents = ExtentsOf(envelope.vertices);
    envelope.length = LengthOf(envelope.vertices);
    if (!options.noAxis && options.centre)
        envelope.diameter = 2 * std::max(envelope.extents.maxY - options.centre->y,
                                         options.centre->y - envelope.extents.minY);
    envelope.selfMeeting = FindSelfMeeting(envelope.vertices);
    return envelope;
}

}  // namespace

EnvelopeRun RunEnvelope(AcDbDatabase& database, const ComputeOptions& options) {
    acdbHostApplicationServices()->setWorkingDatabase(&database);
    EnvelopeRun run;
    run.selection = Pick(database, options.window);
    if (run.selection.ids.isEmpty()) RefuseEmpty(run.selection, options);
    CheckParameters(run.selection, options, run.warnings);

    AcDbObjectId envelopeId;
    const auto start = std::chrono::steady_clock::now();
    {
        const CEncircleTraceScope listen(run.trace);
        std::optional<AxisLine> axis;
        CEncircleCalInfo info = ParametersOf(options);
        if (!options.noAxis && options.centre) {
            axis.emplace(run.selection.box, options.centre->y);
            info.m_midLineId = axis->Id();
        }
        CEncircleLine engine(info);
        (engine.*PipelineOf(options.algorithm))(run.selection.ids, envelopeId);
    }
    run.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    run.envelope = ReadEnvelope(envelopeId, options);
    CheckNothingIsOpen(database, run.warnings);
    return run;
}

}  // namespace app
