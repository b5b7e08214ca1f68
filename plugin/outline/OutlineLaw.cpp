#include "StdAfx.h"

#include "OutlineLaw.h"

#include <algorithm>
#include <cmath>

#include "Bridges.h"
#include "Faces.h"
#include "Ring.h"
#include "Slivers.h"
#include "Tails.h"

namespace outline {
namespace {

// Units in the last place that a coordinate may be off after it was computed.
constexpr double kRounding = 8.9e-16;

bool IsNumber(double value) { return std::fabs(value) <= kFarthest; }
bool IsPlace(const plane::Point& p) { return IsNumber(p.x) && IsNumber(p.y); }

// How far the coordinates may be off at least: by how they are stored.
double RoundingOf(const std::vector<Contour>& curves) {
    double farthest = 0;
    for (const Contour& c : curves)
        for (const plane::Point& p : {c.curve.from, c.curve.to})
            farthest = (std::max)({farthest, std::fabs(p.x), std::fabs(p.y)});
    return kRounding * farthest;
}

bool IsGiven(const Lengths& lengths) {
    for (const double length : {lengths.point, lengths.side, lengths.overshoot, lengths.curve})
        if (!(length >= 0.0)) return false;
    return true;
}

std::vector<Piece> PiecesOf(const std::vector<plane::Curve>& curves, double upright) {
    std::vector<Piece> pieces;
    pieces.reserve(curves.size());
    for (size_t i = 0; i < curves.size(); ++i)
        AppendPieces(curves[i], static_cast<int>(i), upright, pieces);
    return pieces;
}

// Straight pieces where between the first and the last span nothing is; reported.
void FillGaps(std::vector<Piece>& pieces, std::vector<Span>& spans, const Measures& m,
              Envelope& envelope) {
    std::vector<Span> filled;
    filled.reserve(spans.size());
    for (const Span& span : spans) {
        if (!filled.empty() && span.x0 - filled.back().x1 > 2 * m.tiny) {
            const Span& last = filled.back();
            Piece line;
            line.x0 = last.x1;
            line.y0 = HeightAt(pieces[last.piece], last.x1);
            line.x1 = span.x0;
            line.y1 = HeightAt(pieces[span.piece], span.x0);
            const plane::Point from{line.x0, line.y0}, to{line.x1, line.y1};
            envelope.gaps.push_back({from, to, plane::Distance(from, to)});
            pieces.push_back(line);
            filled.push_back({line.x0, line.x1, static_cast<int>(pieces.size()) - 1});
        }
        filled.push_back(span);
    }
    spans.swap(filled);
}

// A place strictly between the ends where the profile comes down to the axis.
bool ComesDown(const std::vector<Piece>& pieces, const std::vector<Span>& spans, double g,
               plane::Point& place) {
    // From either end the profile may rise from the axis; between the places where it has done so
    // it must stay above.
    size_t first = 0, last = spans.size();
    const auto highest = [&](size_t i) {
        return HighestIn(pieces[spans[i].piece], spans[i].x0, spans[i].x1);
    };
    while (first < last && highest(first) <= g) ++first;
    while (last > first && highest(last - 1) <= g) --last;
    for (size_t i = first; i < last; ++i) {
        const Piece& p = pieces[spans[i].piece];
        double lo = spans[i].x0, hi = spans[i].x1;
        // Within the outermost spans what lies before the profile has risen may be low.
        const double top = (std::min)((std::max)(p.cx, lo), hi);
        if (i == first && HeightAt(p, lo) <= g) lo = p.bend > 0 ? top : hi;
        if (i + 1 == last && HeightAt(p, hi) <= g) hi = p.bend > 0 ? top : spans[i].x0;
        if (lo > hi) continue;
        if (LowestIn(p, lo, hi) > g) continue;
        const bool isBottom = p.bend < 0 && p.cx > lo && p.cx < hi;
        place.x = isBottom ? p.cx : (HeightAt(p, lo) <= HeightAt(p, hi) ? lo : hi);
        place.y = 0;
        return true;
    }
    return false;
}

// Seen free ends that are left; not those from which a gap was closed.
void ReportOpenEnds(const std::vector<StrokeEnd>& ends, const std::vector<bool>& isLeft, double g,
                    Envelope& envelope) {
    std::vector<plane::Point>& open = envelope.openEnds;
    for (size_t i = 0; i < ends.size(); ++i)
        if (isLeft[i] && ends[i].isSeen) open.push_back(ends[i].at);
    std::sort(open.begin(), open.end(), [](const plane::Point& a, const plane::Point& b) {
        return a.x != b.x ? a.x < b.x : a.y < b.y;
    });
    const auto isSame = [&](const plane::Point& a, const plane::Point& b) {
        return plane::Distance(a, b) <= 2 * g;
    };
    open.erase(std::unique(open.begin(), open.end(), isSame), open.end());
    // Gaps stand from left to right, as the ends do.
    const auto& gaps = envelope.gaps;
    const auto isAtGap = [&](const plane::Point& p) {
        auto it = std::lower_bound(gaps.begin(), gaps.end(), p.x - 2 * g,
                                   [](const Span2& gap, double x) { return gap.to.x < x; });
        for (; it != gaps.end() && it->from.x <= p.x + 2 * g; ++it)
            if (isSame(it->from, p) || isSame(it->to, p)) return true;
        return false;
    };
    open.erase(std::remove_if(open.begin(), open.end(), isAtGap), open.end());
}

void Refuse(Envelope& envelope, Refusal refusal, const plane::Point& place = {}) {
    envelope.refusal = refusal;
    envelope.place = place;
    envelope.edges.clear();
}

// From the strokes to the outline.
void Build(const std::vector<Contour>& strokes, const Measures& m, bool isVertical,
           Envelope& envelope) {
    const CurveTree tree(strokes);
    const StrokeEnds found = FindEnds(strokes, tree, m);
    std::vector<StrokeEnd> ends = found.ends;
    std::vector<plane::Curve> curves;
    curves.reserve(strokes.size() + found.joins.size());
    for (const Contour& c : strokes) curves.push_back(c.curve);
    for (const Join& join : found.joins) curves.push_back(join.line);
    const std::vector<Piece> drawn = PiecesOf(curves, m.tiny);
    if (drawn.empty()) return Refuse(envelope, Refusal::OnlyUpright, strokes.front().curve.from);
    std::vector<Span> drawnSpans = UpperEnvelope(drawn, m.tie);
    // As wide as the step by which ends look beside themselves, so that what they see is drawn.
    DropSlivers(drawnSpans, 2 * m.tiny);
    const ProfileIndex drawnProfile(drawn, drawnSpans);
    LookAtEnds(ends, drawnProfile, m);

    const Scene scene{strokes, tree, m, drawnProfile, ends};
    const Bridges bridges = FindBridges(scene);
    envelope.bridges = bridges.reports;
    Tails tails = CutTails(scene, bridges);
    envelope.tails = tails.reports;
    std::vector<bool> isLeft(ends.size());
    std::vector<plane::Point> freeEnds;
    for (size_t i = 0; i < ends.size(); ++i) {
        isLeft[i] = ends[i].isFree && !bridges.isJoined[i] && !tails.isCut[i];
        if (isLeft[i]) freeEnds.push_back(ends[i].at);
    }

    std::vector<plane::Curve>& rest = tails.curves;
    // What joins the end of a tail goes with it.
    for (const Join& join : found.joins)
        if (!tails.isCut[join.end]) rest.push_back(join.line);
    rest.insert(rest.end(), bridges.curves.begin(), bridges.curves.end());
    std::vector<Piece> pieces = PiecesOf(rest, m.tiny);
    if (pieces.empty()) return Refuse(envelope, Refusal::OnlyUpright, strokes.front().curve.from);
    std::vector<Span> spans = UpperEnvelope(pieces, m.tie);
    DropSlivers(spans, 2 * m.tiny);
    FillGaps(pieces, spans, m, envelope);
    MendNarrow(pieces, spans, m, envelope);
    ReportOpenEnds(ends, isLeft, m.g, envelope);
    plane::Point place;
    if (ComesDown(pieces, spans, m.g, place)) return Refuse(envelope, Refusal::TwoTools, place);

    const ProfileIndex profile(pieces, spans);
    const FaceInput input{rest,      profile, m, freeEnds, spans.front().x0, spans.back().x1,
                          isVertical};
    const std::vector<plane::Curve> left = FindFace(input, false);
    const std::vector<plane::Curve> right = FindFace(input, true);
    const std::vector<plane::Curve> top = ProfileEdges(pieces, spans, m.tiny);
    std::vector<plane::Curve> chain;
    for (size_t i = left.size(); i-- > 0;) chain.push_back(left[i].Reversed());
    chain.insert(chain.end(), top.begin(), top.end());
    chain.insert(chain.end(), right.begin(), right.end());
    envelope.edges = CleanChain(std::move(chain), m.tiny, m.g);
}

}  // namespace

bool IsWithin(const plane::Curve& c) {
    return IsPlace(c.from) && IsPlace(c.to) && IsNumber(c.bulge) &&
           (!c.IsArc() || (IsPlace(c.centre) && IsNumber(c.radius)));
}

Envelope FindEnvelope(const Request& request) {
    Envelope envelope;
    envelope.lengths = request.lengths;
    const auto refuse = [&](Refusal refusal, const plane::Point& place = {}) {
        Refuse(envelope, refusal, place);
        return envelope;
    };
    for (const Contour& c : request.curves)
        if (!IsWithin(c.curve)) {
            envelope.source = c.source;
            return refuse(Refusal::NotFinite, IsPlace(c.curve.from) ? c.curve.from
                                              : IsPlace(c.curve.to) ? c.curve.to
                                                                    : plane::Point{});
        }
    if (!IsGiven(request.lengths)) return refuse(Refusal::BadLengths);
    const std::vector<Contour> inHalf = ToHalf(request.curves, request.half);
    if (inHalf.empty()) return refuse(Refusal::Empty);
    const double rounding = (std::max)(request.rounding, RoundingOf(inHalf));
    const Measures m = MeasureHalf(inHalf, request.lengths, rounding);
    if (!(m.size > 1 / kFarthest)) return refuse(Refusal::Empty, inHalf.front().curve.from);
    envelope.size = m.size;
    envelope.lengths = WithDefaults(request.lengths, m.size, rounding);
    if (!AreSensible(envelope.lengths, m.size, rounding))
        return refuse(Refusal::BadLengths, inHalf.front().curve.from);
    const std::vector<Contour> strokes = FindStrokes(inHalf, m, envelope.ignored);
    if (strokes.empty()) return refuse(Refusal::Empty, inHalf.front().curve.from);
    Build(strokes, m, request.verticalEnds, envelope);
    return envelope;
}

}  // namespace outline
