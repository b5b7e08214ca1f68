#include "product/tool/ToolRun.h"

#include <chrono>
#include <cmath>
#include <exception>
#include <filesystem>

#include "EntityBox.h"
#include "FileName.h"
#include "product/tool/EngineRequest.h"
#include "product/tool/Text.h"
#include "product/check/Findings.h"
#include "product/check/TrueOutline.h"
#include "host/dxf/text_codec.h"
#include "host/solid/revolve.h"

namespace app {
namespace {

// The axis beyond the envelope in pictures, and the space around both: shares of the length.
constexpr double kAxisOverhang = 0.04;
constexpr int kSolidWidth = 560;  // pixels
// A dimension far away from a tool belongs to another view; the picture is not shrunk for it. Of
// the envelope's length.
constexpr double kNearby = 0.35;

Box BoxOf(const CQZRect& rect) {
    Box box;
    if (!rect.IsValid()) return box;
    box.Add(Point{rect.min.x, rect.min.y});
    box.Add(Point{rect.max.x, rect.max.y});
    return box;
}

CString Wide(const std::string& text) { return host::dxf::WideFromUtf8(text).c_str(); }

Box Grown(Box box, double by) {
    box.Add(Point{box.minX - by, box.minY - by});
    box.Add(Point{box.maxX + by, box.maxY + by});
    return box;
}

Point CentreOf(const BatchTool& tool) { return {tool.centre.x, tool.centre.y}; }

}  // namespace

void ToolRun::Compute(BatchTool& tool, const CEncircleCalInfo& parameters, ToolResult& result) {
    std::vector<std::string> warnings;
    CheckRequest(tool.sourceIds, BoxOf(GetEntitiesBox(tool.sourceIds)), parameters, CentreOf(tool),
                 warnings);
    for (const std::string& warning : warnings)
        result.findings.push_back({Finding::Kind::Note, true, warning, std::nullopt});
    {
        const CEncircleTraceScope listen(m_trace);
        tool.computeEnvelope(parameters, PipelineOf(m_options.algorithm));
    }
    tool.highlightEnvelope(false);
    result.entities = tool.sourceIds.length();
    if (tool.execStatus != kBatchDone)
        throw Failure(kNoResult,
                      "no envelope: nothing of it is seen from the chosen half; look at what was "
                      "left out");
    m_envelope = ReadEnvelope(tool.envelopeId, CentreOf(tool));
    result.isComputed = true;
    result.handle = m_envelope.handle;
    result.vertices = static_cast<int>(m_envelope.vertices.size());
    result.length = m_envelope.extents.Width();
    result.diameter = m_envelope.diameter;
    m_solid = RevolveRing(m_envelope.vertices, m_envelope.closed, CentreOf(tool));
    if (!m_solid.profile) return;
    result.length = m_solid.measures.length;
    result.diameter = m_solid.measures.largestDiameter;
    result.volume = m_solid.measures.volume;
}

void ToolRun::Export(BatchTool& tool, const std::string& file, ToolResult& result) {
    const std::string path = (std::filesystem::path(m_options.out) / (file + ".sat")).string();
    // Under its own name unless that is another tool's already.
    BatchTool named(tool);
    named.name = Wide(file);
    named.exportSolid(Wide(m_options.out));
    tool.exportStatus = named.exportStatus;
    if (tool.exportStatus == kBatchDone) {
        result.files.push_back(path);
        WriteMoreFiles(file, m_solid, result);
        result.isExported = true;
        return;
    }
    if (m_solid.refusal)
        throw Failure(kNoResult,
                      "no solid can be made of the envelope: " + m_solid.refusal->Text());
    if (!IsFileName(named.name))
        throw Failure(kNoResult, "the tool's name '" + file + "' cannot be the name of a file");
    throw Failure(kNoResult, host::solid::LastSatFailure() + "; choose another folder with --out");
}

void ToolRun::WriteMoreFiles(const std::string& file, const SolidRun& solid, ToolResult& result) {
    if (!m_options.step && !m_options.stl) return;
    const std::string path = (std::filesystem::path(m_options.out) / file).string();
    ComputeOptions files;
    files.chordTolerance = m_options.chordTolerance;
    if (m_options.step) files.step = path + ".stp";
    if (m_options.stl) files.stl = path + ".stl";
    WriteSolidFiles(solid, result.name, m_database, files);
    for (const std::string& written : {files.step, files.stl})
        if (!written.empty()) result.files.push_back(written);
}

void ToolRun::Check(const BatchTool& tool, const CEncircleCalInfo& parameters, ToolResult& result) {
    AddMeetingFinding(m_envelope, result);
    AddTraceFindings(m_trace, parameters.m_tolPoint.equalPoint(), result);
    // The second pipeline puts its envelope beside the tool: there is nothing to compare.
    if (m_pictures == nullptr || m_options.algorithm == Algorithm::Second) return;
    AddOutlineFindings(
        CheckOutline(tool.sourceIds, tool.centre.y, result.lowerHalf, !parameters.m_bExcludeDashed,
                     m_envelope.vertices, parameters.m_tolPoint.equalPoint()),
        parameters, result);
}

void ToolRun::Draw(const BatchTool& tool, ToolResult& result) {
    Picture picture = m_pictures->Run(tool.sourceIds);
    picture.title = "Tool " + result.name;
    picture.envelope = m_envelope.vertices;
    const Box whole = BoxOf(GetEntitiesBox(tool.sourceIds));
    picture.view = m_envelope.found ? m_envelope.extents : whole;
    if (m_envelope.found) {
        const double axis = tool.centre.y;
        const Box& box = m_envelope.extents;
        picture.view.Add(Point{box.minX, 2 * axis - box.maxY});
        picture.view.Add(Point{box.maxX, 2 * axis - box.minY});
        const Box nearby = Grown(picture.view, kNearby * box.Width());
        picture.hasAxis = true;
        picture.axisFrom = box.minX - kAxisOverhang * box.Width();
        picture.axisTo = box.maxX + kAxisOverhang * box.Width();
        picture.axisY = axis;
        picture.view.Add(Point{picture.axisFrom, axis});
        picture.view.Add(Point{picture.axisTo, axis});
        for (const Box& dimension : picture.dimensions)
            if (nearby.Contains(dimension)) picture.view.Add(dimension);
    }
    int number = 0;
    for (const Finding& finding : result.findings)
        if (finding.isWarning) {
            ++number;
            if (finding.at) picture.marks.push_back({*finding.at, std::to_string(number)});
        }
    if (whole.IsEmpty()) return;
    result.svg = ToSvgElement(picture, result.id);
    std::string reason;
    if (!m_solid.profile) return;
    if (const auto solid = DrawSolid(m_solid, kSolidWidth, reason))
        result.png = Base64(solid->bytes);
    else
        result.findings.push_back(
            {Finding::Kind::Solid, false, "the solid cannot be shown: " + reason, std::nullopt});
}

void ToolRun::Run(BatchTool& tool, const CEncircleCalInfo& parameters, const std::string& file,
                  ToolResult& result) {
    m_trace = CEncircleTrace();
    m_envelope = Envelope();
    m_solid = SolidRun();
    result.lowerHalf = parameters.m_nHalfSide != 0;
    result.unit = UnitName(m_database);
    result.entities = tool.sourceIds.length();
    const auto start = std::chrono::steady_clock::now();
    try {
        Compute(tool, parameters, result);
        Export(tool, file, result);
    } catch (const std::exception& error) {
        result.reason = error.what();
        if (!result.isComputed) tool.execStatus = kBatchFailed;
    }
    result.seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    Check(tool, parameters, result);
    if (m_pictures != nullptr) Draw(tool, result);
}

}  // namespace app
