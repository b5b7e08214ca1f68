#include "product/tool/ExactRun.h"

#include "product/base/Failure.h"
#include "product/base/Text.h"

namespace product {

SExactRequest ExactRequestOf(const ToolParameters& parameters, const Axis& axis,
                             const AcArray<AcDbObjectId>& ids,
                             const std::vector<plane::Curve>& curves,
                             const detect::ItemFilter& takes) {
    SExactRequest request;
    request.m_takes = takes;
    if (curves.empty()) request.m_ids = ids;
    request.m_curves = curves;
    request.m_axisFrom.set(axis.from.x, axis.from.y, 0.0);
    request.m_axisTo.set(axis.to.x, axis.to.y, 0.0);
    request.m_half = parameters.half == Half::Both    ? SExactRequest::E_Half_Both
                     : parameters.half == Half::Lower ? SExactRequest::E_Half_Lower
                                                      : SExactRequest::E_Half_Upper;
    request.m_dPoint = parameters.exact.point;
    request.m_dSide = parameters.exact.side;
    request.m_dOvershoot = parameters.exact.overshoot;
    request.m_dCurve = parameters.exact.curve;
    request.m_bTakeCircles = parameters.takeCircles;
    request.m_bIncludeDashed = parameters.includeDashed;
    request.m_bVerticalEnds = parameters.verticalEnds;
    return request;
}

SExactResult DrawExact(const SExactRequest& request, AcDbObjectId& id) {
    const SExactResult result = CExactEnvelope(request).Find();
    if (result.m_refusal != SExactResult::E_Refusal_None)
        throw Failure(result.m_refusal == SExactResult::E_Refusal_BadLengths ? Fault::Request
                                                                             : Fault::NoResult,
                      ToUtf8(CExactEnvelope::Explain(result)));
    id = CExactEnvelope::Draw(result);
    if (id.isNull()) throw Failure(Fault::NoResult, "the envelope cannot be drawn");
    return result;
}

std::vector<Vertex> RingOf(const SExactResult& result) {
    std::vector<Vertex> ring;
    for (const SExactResult::SVertex& v : result.m_vertices)
        ring.push_back({v.m_dX, v.m_dY, v.m_dBulge});
    return ring;
}

const char* NameOf(SExactResult::E_LeftOut reason) {
    switch (reason) {
        case SExactResult::E_LeftOut_Unopenable:
            return "unopenable";
        case SExactResult::E_LeftOut_Layer:
            return "layer off or frozen";
        case SExactResult::E_LeftOut_Locked:
            return "locked layer";
        case SExactResult::E_LeftOut_Dimension:
            return "dimension layer";
        case SExactResult::E_LeftOut_Invisible:
            return "invisible";
        case SExactResult::E_LeftOut_Linetype:
            return "line type";
        case SExactResult::E_LeftOut_Type:
            return "type";
        case SExactResult::E_LeftOut_Circle:
        case SExactResult::E_LeftOut_CircleBeyond:
            return "circle";
        case SExactResult::E_LeftOut_Block:
            return "block";
        case SExactResult::E_LeftOut_Unsound:
            return "not sound";
        case SExactResult::E_LeftOut_Coarse:
            return "coarse";
        case SExactResult::E_LeftOut_OnAxis:
            return "on the axis";
        case SExactResult::E_LeftOut_Short:
            return "short";
        case SExactResult::E_LeftOut_CentreLine:
            break;
    }
    return "centre line";
}

}  // namespace product
