#include "StdAfx.h"

#include "ExactEnvelope.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "ContourReader.h"
#include "EncircleLayers.h"
#include "EnvelopeAxis.h"
#include "EnvelopePolyline.h"
#include "Halves.h"
#include "LayerTools.h"
#include "OutlineLaw.h"
#include "Ring.h"

namespace {

// Units in the last place that a coordinate may be off after it was computed, and twice as far
// after the frame was turned.
constexpr double kRounding = 8.9e-16;

// The axis as a frame: s along it from a place near the tool, r to its left.
class CAxisFrame {
public:
    CAxisFrame(const plane::Point& from, const plane::Point& to, const plane::Point& beside)
        : m_along(plane::Unit(to - from)),
          m_origin(from + m_along * plane::Dot(m_along, beside - from)) {}

    plane::Point In(const plane::Point& p) const {
        const plane::Vector v = p - m_origin;
        return {plane::Dot(v, m_along), plane::Cross(m_along, v)};
    }
    plane::Point Out(const plane::Point& p, bool isLower) const {
        const double r = isLower ? -p.y : p.y;
        return m_origin + m_along * p.x + plane::Left(m_along) * r;
    }
    plane::Curve In(plane::Curve c) const {
        c.from = In(c.from);
        c.to = In(c.to);
        if (c.IsArc()) c.centre = In(c.centre);
        return c;
    }

private:
    plane::Vector m_along;
    plane::Point m_origin;
};

plane::Box BoxOf(const std::vector<outline::Contour>& curves) {
    plane::Box box;
    for (const outline::Contour& c : curves)
        if (outline::IsWithin(c.curve)) box.Add(plane::BoxOf(c.curve));
    return box;
}

SExactResult::E_Refusal RefusalOf(outline::Refusal refusal) {
    switch (refusal) {
        case outline::Refusal::Empty:
            return SExactResult::E_Refusal_Empty;
        case outline::Refusal::OnlyUpright:
            return SExactResult::E_Refusal_OnlyUpright;
        case outline::Refusal::NotFinite:
            return SExactResult::E_Refusal_NotFinite;
        case outline::Refusal::TwoTools:
            return SExactResult::E_Refusal_TwoTools;
        case outline::Refusal::BadLengths:
            return SExactResult::E_Refusal_BadLengths;
        case outline::Refusal::None:
            break;
    }
    return SExactResult::E_Refusal_None;
}

SExactResult::E_LeftOut LeftOutOf(outline::Ignored reason) {
    switch (reason) {
        case outline::Ignored::OnAxis:
            return SExactResult::E_LeftOut_OnAxis;
        case outline::Ignored::Short:
            return SExactResult::E_LeftOut_Short;
        case outline::Ignored::CentreLine:
            break;
    }
    return SExactResult::E_LeftOut_CentreLine;
}

outline::Half HalfOf(SExactRequest::E_Half half) {
    if (half == SExactRequest::E_Half_Upper) return outline::Half::Upper;
    return half == SExactRequest::E_Half_Lower ? outline::Half::Lower : outline::Half::Both;
}

// Results in (s, r), back into the drawing.
class CTranslator {
public:
    CTranslator(const SExactRequest& request, const CAxisFrame& frame)
        : m_request(request),
          m_frame(frame),
          m_isLower(request.m_half == SExactRequest::E_Half_Lower) {}

    SExactResult::SPlace Place(const plane::Point& p) const {
        const plane::Point q = m_frame.Out(p, m_isLower);
        return {q.x, q.y};
    }
    SExactResult::SBridge Bridge(const outline::Span2& s) const {
        return {Place(s.from), Place(s.to), s.length};
    }
    AcDbObjectId Source(int source) const {
        return source >= 0 && source < m_request.m_ids.length() ? m_request.m_ids[source]
                                                                : AcDbObjectId();
    }
    void Vertices(const std::vector<plane::Curve>& edges, SExactResult& result) const {
        for (const plane::Curve& c : edges) {
            const SExactResult::SPlace p = Place(c.from);
            result.m_vertices.push_back({p.m_dX, p.m_dY, m_isLower ? -c.bulge : c.bulge});
        }
        if (edges.empty()) return;
        const SExactResult::SPlace p = Place(edges.back().to);
        result.m_vertices.push_back({p.m_dX, p.m_dY, 0.0});
    }
    void Reports(const outline::Envelope& envelope, SExactResult& result) const {
        for (const outline::Span2& s : envelope.bridges) result.m_bridges.push_back(Bridge(s));
        for (const outline::Span2& s : envelope.gaps) result.m_gaps.push_back(Bridge(s));
        for (const plane::Point& p : envelope.openEnds) result.m_openEnds.push_back(Place(p));
        for (const outline::Tail& t : envelope.tails)
            result.m_tails.push_back({Place(t.at), t.length, Source(t.source)});
        for (const outline::Envelope::Ignorance& i : envelope.ignored)
            result.m_leftOut.push_back(
                {LeftOutOf(i.reason), CString(), Source(i.source), Place(i.at)});
    }

private:
    const SExactRequest& m_request;
    const CAxisFrame& m_frame;
    const bool m_isLower;
};

bool IsLength(double value) { return std::isfinite(value) && value >= 0.0; }

// How far the greatest coordinate may be off by rounding.
double RoundingOf(const plane::Box& box) {
    return kRounding * (std::max)((std::max)(std::fabs(box.low.x), std::fabs(box.high.x)),
                                  (std::max)(std::fabs(box.low.y), std::fabs(box.high.y)));
}

// Full circles that take no part are told, those apart that reach beyond the envelope.
void ReportCircles(const std::vector<outline::Contour>& circles,
                   const std::vector<plane::Curve>& edges, const CTranslator& translator,
                   const CAxisFrame& frame, outline::Half half, SExactResult& result) {
    const std::vector<outline::Contour> pieces = [&] {
        std::vector<outline::Contour> turned;
        for (const outline::Contour& c : circles)
            turned.push_back({frame.In(c.curve), c.source, c.isApproximate});
        return outline::ToHalf(turned, half);
    }();
    std::map<int, bool> isBeyond;
    std::map<int, plane::Point> places;
    for (const outline::Contour& c : pieces) {
        bool& beyond = isBeyond[c.source];
        places.emplace(c.source, c.curve.Middle());
        for (const double share : {0.0, 0.25, 0.5, 0.75})
            beyond = beyond || !outline::IsInside(edges, plane::PointAt(c.curve, share));
    }
    for (const auto& [source, beyond] : isBeyond)
        result.m_leftOut.push_back(
            {beyond ? SExactResult::E_LeftOut_CircleBeyond : SExactResult::E_LeftOut_Circle,
             CString(), translator.Source(source), translator.Place(places[source])});
}

}  // namespace

CExactEnvelope::CExactEnvelope(const SExactRequest& request) : m_request(request) {}

SExactResult CExactEnvelope::Find() const {
    SExactResult result;
    const plane::Point from{m_request.m_axisFrom.x, m_request.m_axisFrom.y};
    const plane::Point to{m_request.m_axisTo.x, m_request.m_axisTo.y};
    result.m_place = {from.x, from.y};
    const auto refuse = [&](SExactResult::E_Refusal refusal) {
        result.m_refusal = refusal;
        return result;
    };
    if (!outline::IsWithin(plane::MakeLine(from, to)) || !(plane::Distance(from, to) > 0.0))
        return refuse(SExactResult::E_Refusal_NoAxis);
    if (!IsLength(m_request.m_dPoint) || !IsLength(m_request.m_dSide) ||
        !IsLength(m_request.m_dOvershoot) || !IsLength(m_request.m_dCurve))
        return refuse(SExactResult::E_Refusal_BadLengths);

    // Twice: how finely splines are to be followed is known when the size is.
    double curve = m_request.m_dCurve;
    SContour contour = ReadContour(m_request, (std::max)(curve, 1e-3));
    const plane::Box box = BoxOf(contour.m_curves);
    const bool hasFree = std::any_of(contour.m_curves.begin(), contour.m_curves.end(),
                                     [](const outline::Contour& c) { return c.isApproximate; });
    if (hasFree && curve < 1e-3) {
        // In one half the size is at least half of this.
        const double length = plane::Length({box.Width(), box.Height()});
        if (curve > 0.0 && curve < outline::FinestCurve(length / 2))
            return refuse(SExactResult::E_Refusal_BadLengths);
        if (!(curve > 0.0)) curve = (std::min)(1e-3, 0.4e-5 * length);
        contour = ReadContour(m_request, curve);
    }
    for (const plane::Curve& c : m_request.m_curves) contour.m_curves.push_back({c, -1, false});
    result.m_leftOut = contour.m_leftOut;

    const plane::Box whole = BoxOf(contour.m_curves);
    const CAxisFrame frame(from, to, whole.IsEmpty() ? from : whole.Middle());
    outline::Request request;
    request.half = HalfOf(m_request.m_half);
    request.lengths = {m_request.m_dPoint, m_request.m_dSide, m_request.m_dOvershoot,
                       m_request.m_dCurve};
    request.verticalEnds = m_request.m_bVerticalEnds;
    if (!whole.IsEmpty()) request.rounding = RoundingOf(whole);
    for (const outline::Contour& c : contour.m_curves)
        request.curves.push_back({frame.In(c.curve), c.source, c.isApproximate});
    const outline::Envelope envelope = outline::FindEnvelope(request);

    const CTranslator translator(m_request, frame);
    result.m_refusal = RefusalOf(envelope.refusal);
    result.m_place = translator.Place(envelope.place);
    result.m_id = translator.Source(envelope.source);
    result.m_dSize = envelope.size;
    result.m_dPoint = envelope.lengths.point;
    result.m_dSide = envelope.lengths.side;
    result.m_dOvershoot = envelope.lengths.overshoot;
    result.m_dCurve = envelope.lengths.curve;
    translator.Reports(envelope, result);
    translator.Vertices(envelope.edges, result);
    if (!envelope.edges.empty())
        ReportCircles(contour.m_circles, envelope.edges, translator, frame, request.half, result);
    return result;
}

CString CExactEnvelope::Explain(const SExactResult& result) {
    CString strPlace, strEntity = _T("a curve");
    if (!result.m_id.isNull()) {
        ACHAR handle[AcDbHandle::kStrSiz] = {};
        result.m_id.handle().getIntoAsciiBuffer(handle);
        strEntity = CString(_T("entity ")) + handle;
    }
    strPlace.Format(_T("%.10g,%.10g"), result.m_place.m_dX, result.m_place.m_dY);
    switch (result.m_refusal) {
        case SExactResult::E_Refusal_NoAxis:
            return _T("the axis has no direction: give two points that are apart");
        case SExactResult::E_Refusal_BadLengths:
            return _T("a length is negative, no number, or does not fit what is drawn: the ")
                   _T("closest ")
                   _T("points lie at least eight roundings and at most a tenth of the size apart, ")
                   _T("overshoots and curve tolerances are no longer than the size, and curves ")
                   _T("are ")
                   _T("followed no closer than 1e-10 of it; give others, ")
                   _T("or none for the defaults");
        case SExactResult::E_Refusal_NotFinite:
            return strEntity + _T(" has a coordinate that is no number or beyond 1e60, near ") +
                   strPlace + _T(": pick without it");
        case SExactResult::E_Refusal_Empty:
            return _T("nothing that counts as contour is drawn in the half: pick the contour, or ")
                   _T("the")
                   _T(" other half");
        case SExactResult::E_Refusal_OnlyUpright:
            return _T("nothing but lines across the axis is drawn, near ") + strPlace +
                   _T(": pick the contour as well, or look at the axis");
        case SExactResult::E_Refusal_TwoTools:
            return _T("the profile comes down to the axis at ") + strPlace +
                   _T(": pick one tool alone");
        case SExactResult::E_Refusal_None:
            break;
    }
    return CString();
}

AcDbObjectId CExactEnvelope::Draw(const SExactResult& result) {
    AcDbObjectId id;
    if (result.m_vertices.size() < 2) return id;
    const AcDbObjectId layerId = EnsureLayer(kEnvelopeLayer);
    if (layerId.isNull()) return id;
    std::unique_ptr<AcDbPolyline> polyline = MakePolyline(layerId);
    if (polyline == nullptr) return id;
    int index = 0;
    for (const SExactResult::SVertex& v : result.m_vertices)
        AddVertex(polyline.get(), AcGePoint3d(v.m_dX, v.m_dY, 0.0), v.m_dBulge, index);
    const SExactResult::SVertex &first = result.m_vertices.front(),
                                &last = result.m_vertices.back();
    const bool isLevel = first.m_dY == last.m_dY && first.m_dX < last.m_dX;
    if (!isLevel && !MarkClosingEdgeAsAxis(*polyline)) return id;
    AddEnvelope(std::move(polyline), id);
    return id;
}
