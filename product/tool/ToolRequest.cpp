#include "product/tool/ToolRequest.h"

#include <filesystem>

#include "product/base/Failure.h"

namespace product {
namespace {

void SetBoth(AcGeTol& tolerance, double value) {
    tolerance.setEqualPoint(value);
    tolerance.setEqualVector(value);
}

}  // namespace

const char* NameOf(Algorithm algorithm) {
    static const char* const kNames[] = {"3", "hatch", "1", "2", "exact"};
    return kNames[static_cast<int>(algorithm)];
}

const char* NameOf(Half half) {
    static const char* const kNames[] = {"upper", "lower", "both"};
    return kNames[static_cast<int>(half)];
}

std::string WithSuffix(const std::string& path, const std::string& suffix) {
    if (path.empty()) return path;
    const std::filesystem::path whole(path);
    return (whole.parent_path() / (whole.stem().string() + suffix + whole.extension().string()))
        .string();
}

ToolParameters::ToolParameters() : ToolParameters(CEncircleCalInfo()) {}

ToolParameters::ToolParameters(const CEncircleCalInfo& stored)
    : half(stored.m_nHalfSide == 0 ? Half::Upper : Half::Lower),
      includeDashed(!stored.m_bExcludeDashed),
      verticalEnds(stored.m_bSideLinesVertical),
      pointTolerance(stored.m_tolPoint.equalPoint()),
      lineTolerance(stored.m_tolLine.equalPoint()),
      horVerTolerance(stored.m_tolHorVer.equalPoint()),
      arcPrecision(stored.m_dArcPrecision),
      sideLength(stored.m_dSideLength) {}

CEncircleCalInfo EngineRecordOf(const ToolParameters& parameters) {
    if (parameters.half == Half::Both)
        throw Failure(Fault::NotCarriedOut,
                      "this algorithm computes one half at a time; ask for upper or lower");
    CEncircleCalInfo info;
    info.m_bExcludeDashed = !parameters.includeDashed;
    info.m_bSideLinesVertical = parameters.verticalEnds;
    SetBoth(info.m_tolPoint, parameters.pointTolerance);
    SetBoth(info.m_tolLine, parameters.lineTolerance);
    SetBoth(info.m_tolHorVer, parameters.horVerTolerance);
    info.m_dArcPrecision = parameters.arcPrecision;
    info.m_dSideLength = parameters.sideLength;
    info.m_nHalfSide = parameters.half == Half::Lower ? 1 : 0;
    return info;
}

}  // namespace product
