// HATCH. Its loops repeat groups whose meaning depends on the place, so they are read in order.
#include <algorithm>

#include "host/db/access.h"
#include "host/dxf/codec.h"
#include "host/dxf/field_reader.h"
#include "host/dxf/field_writer.h"
#include "host/base/angles.h"

namespace host::dxf {

namespace {

// Steps through the tags of the hatch. Counts in the file are not trusted: what follows decides.
class HatchTags {
public:
    explicit HatchTags(FieldReader& io) : io_(io), tags_(io.ScopeTags()) {}

    bool Done() const { return at_ >= tags_.size(); }
    int Code() const { return Done() ? -1 : tags_[at_].code; }
    void Skip() { ++at_; }
    double Real() { return io_.RealOf(tags_[at_++]); }
    int Int() {
        constexpr std::int64_t kBound = 1 << 30;
        return static_cast<int>(std::clamp(io_.IntOf(tags_[at_++]), -kBound, kBound));
    }
    double Angle() { return Real() * kPi / 180.0; }
    AcDbObjectId Id() { return io_.IdOf(tags_[at_++]); }
    // The x group is next; y follows when the file is right.
    AcGePoint2d Point() {
        const int code = Code();
        AcGePoint2d point(Real(), 0.0);
        if (Code() == code + 10) point.y = Real();
        return point;
    }
    // The value if that group is next.
    void RealIf(int code, double& value) {
        if (Code() == code) value = Real();
    }
    void IntIf(int code, int& value) {
        if (Code() == code) value = Int();
    }
    void FlagIf(int code, bool& value) {
        if (Code() == code) value = Int() != 0;
    }

private:
    FieldReader& io_;
    std::vector<Tag> tags_;
    std::size_t at_ = 0;
};

void ReadPolylineLoop(HatchTags& tags, HatchLoop& loop) {
    int count = 0;
    tags.FlagIf(72, loop.hasBulges);
    tags.FlagIf(73, loop.closed);
    tags.IntIf(93, count);
    while (tags.Code() == 10) {
        HatchVertex vertex;
        vertex.point = tags.Point();
        tags.RealIf(42, vertex.bulge);
        loop.vertices.push_back(vertex);
    }
}

void ReadSplineEdge(HatchTags& tags, HatchEdge& edge) {
    int ignored = 0;
    tags.IntIf(94, edge.degree);
    tags.FlagIf(73, edge.rational);
    tags.FlagIf(74, edge.periodic);
    tags.IntIf(95, ignored);
    tags.IntIf(96, ignored);
    while (tags.Code() == 40) edge.knots.push_back(tags.Real());
    while (tags.Code() == 10) {
        edge.points.push_back(tags.Point());
        if (tags.Code() == 42) edge.weights.push_back(tags.Real());
    }
    while (tags.Code() == 42) edge.weights.push_back(tags.Real());
    tags.IntIf(97, ignored);
    while (tags.Code() == 11) edge.fitPoints.push_back(tags.Point());
    while (tags.Code() == 12 || tags.Code() == 13) tags.Point();
}

bool ReadEdge(HatchTags& tags, HatchEdge& edge) {
    const int kind = tags.Int();
    if (kind < 1 || kind > 4) return false;
    edge.kind = static_cast<HatchEdgeKind>(kind);
    if (edge.kind == HatchEdgeKind::kSpline) {
        ReadSplineEdge(tags, edge);
        return true;
    }
    AcGePoint2d first, second;
    if (tags.Code() == 10) first = tags.Point();
    if (tags.Code() == 11) second = tags.Point();
    if (edge.kind == HatchEdgeKind::kLine) {
        edge.start = first;
        edge.end = second;
        return true;
    }
    edge.center = first;
    edge.major.set(second.x, second.y);
    tags.RealIf(40, edge.radius);
    if (tags.Code() == 50) edge.startAngle = tags.Angle();
    if (tags.Code() == 51) edge.endAngle = tags.Angle();
    tags.FlagIf(73, edge.counterClockwise);
    return true;
}

void ReadLoop(HatchTags& tags, HatchData& data) {
    HatchLoop loop;
    loop.flags = tags.Int();
    int count = 0;
    if (loop.IsPolyline()) {
        ReadPolylineLoop(tags, loop);
    } else {
        tags.IntIf(93, count);
        while (tags.Code() == 72) {
            HatchEdge edge;
            if (!ReadEdge(tags, edge)) break;
            loop.edges.push_back(std::move(edge));
        }
    }
    tags.IntIf(97, count);
    while (tags.Code() == 330) loop.sources.push_back(tags.Id());
    data.loops.push_back(std::move(loop));
}

void ReadPatternLine(HatchTags& tags, HatchData& data) {
    HatchPatternLine line;
    line.angle = tags.Angle();
    double x = 0.0, y = 0.0;
    tags.RealIf(43, x);
    tags.RealIf(44, y);
    line.base.set(x, y);
    x = y = 0.0;
    tags.RealIf(45, x);
    tags.RealIf(46, y);
    line.offset.set(x, y);
    int count = 0;
    tags.IntIf(79, count);
    while (tags.Code() == 49) line.dashes.push_back(tags.Real());
    data.patternLines.push_back(std::move(line));
}

// The elevation point and the loops come first; what follows the loops repeats no code but 10.
void ReadHatch(FieldReader& io, HatchData& data) {
    HatchTags tags(io);
    bool seeds = false, loops = false;
    while (!tags.Done()) {
        switch (tags.Code()) {
            case 92:
                ReadLoop(tags, data);
                break;
            case 53:
                ReadPatternLine(tags, data);
                break;
            case 91:
                loops = true;
                tags.Skip();
                break;
            case 98:
                seeds = true;
                tags.Skip();
                break;
            case 10:
                if (seeds)
                    data.seeds.push_back(tags.Point());
                else
                    tags.Skip();
                break;
            case 30:
                if (!loops)
                    data.elevation = tags.Real();
                else
                    tags.Skip();
                break;
            case 70:
                data.solid = tags.Int() != 0;
                break;
            case 71:
                data.associative = tags.Int() != 0;
                break;
            case 75:
                data.style = tags.Int();
                break;
            case 76:
                data.patternType = tags.Int();
                break;
            case 52:
                data.patternAngle = tags.Angle();
                break;
            case 41:
                data.patternScale = tags.Real();
                break;
            case 77:
                data.patternDouble = tags.Int() != 0;
                break;
            case 47:
                data.pixelSize = tags.Real();
                break;
            default:
                tags.Skip();
                break;
        }
    }
}

void WriteEdge(FieldWriter& io, const HatchEdge& edge) {
    io.PutInt(72, static_cast<int>(edge.kind));
    switch (edge.kind) {
        case HatchEdgeKind::kLine:
            io.PutPoint(10, edge.start);
            io.PutPoint(11, edge.end);
            return;
        case HatchEdgeKind::kEllipse:
        case HatchEdgeKind::kArc:
            io.PutPoint(10, edge.center);
            if (edge.kind == HatchEdgeKind::kEllipse)
                io.PutPoint(11, AcGePoint2d(edge.major.x, edge.major.y));
            io.PutReal(40, edge.radius);
            io.PutAngle(50, edge.startAngle);
            io.PutAngle(51, edge.endAngle);
            io.PutInt(73, edge.counterClockwise ? 1 : 0);
            return;
        case HatchEdgeKind::kSpline:
            break;
    }
    io.PutInt(94, edge.degree);
    io.PutInt(73, edge.rational ? 1 : 0);
    io.PutInt(74, edge.periodic ? 1 : 0);
    io.PutInt(95, static_cast<std::int64_t>(edge.knots.size()));
    io.PutInt(96, static_cast<std::int64_t>(edge.points.size()));
    for (double knot : edge.knots) io.PutReal(40, knot);
    for (std::size_t i = 0; i < edge.points.size(); ++i) {
        io.PutPoint(10, edge.points[i]);
        if (edge.rational && i < edge.weights.size()) io.PutReal(42, edge.weights[i]);
    }
    if (io.version() < kVersionR2010) return;
    io.PutInt(97, static_cast<std::int64_t>(edge.fitPoints.size()));
    for (const AcGePoint2d& point : edge.fitPoints) io.PutPoint(11, point);
}

void WriteLoop(FieldWriter& io, const HatchLoop& loop) {
    io.PutInt(92, loop.flags);
    if (loop.IsPolyline()) {
        io.PutInt(72, loop.hasBulges ? 1 : 0);
        io.PutInt(73, loop.closed ? 1 : 0);
        io.PutInt(93, static_cast<std::int64_t>(loop.vertices.size()));
        for (const HatchVertex& vertex : loop.vertices) {
            io.PutPoint(10, vertex.point);
            if (loop.hasBulges) io.PutReal(42, vertex.bulge);
        }
    } else {
        io.PutInt(93, static_cast<std::int64_t>(loop.edges.size()));
        for (const HatchEdge& edge : loop.edges) WriteEdge(io, edge);
    }
    std::vector<AcDbObjectId> sources;
    for (AcDbObjectId id : loop.sources)
        if (!id.isNull() && !id.isErased()) sources.push_back(id);
    io.PutInt(97, static_cast<std::int64_t>(sources.size()));
    for (AcDbObjectId id : sources) io.PutId(330, id);
}

void WritePattern(FieldWriter& io, const HatchData& data) {
    io.PutInt(75, data.style);
    io.PutInt(76, data.patternType);
    if (!data.solid) {
        io.PutAngle(52, data.patternAngle);
        io.PutReal(41, data.patternScale);
        io.PutInt(77, data.patternDouble ? 1 : 0);
        io.PutInt(78, static_cast<std::int64_t>(data.patternLines.size()));
        for (const HatchPatternLine& line : data.patternLines) {
            io.PutAngle(53, line.angle);
            io.PutReal(43, line.base.x);
            io.PutReal(44, line.base.y);
            io.PutReal(45, line.offset.x);
            io.PutReal(46, line.offset.y);
            io.PutInt(79, static_cast<std::int64_t>(line.dashes.size()));
            for (double dash : line.dashes) io.PutReal(49, dash);
        }
    }
    if (data.pixelSize != 0.0) io.PutReal(47, data.pixelSize);
    io.PutInt(98, static_cast<std::int64_t>(data.seeds.size()));
    for (const AcGePoint2d& seed : data.seeds) io.PutPoint(10, seed);
}

// Groups that a changed hatch replaces as a whole; gradients (450 and up) stay as they came.
const std::vector<int>& OwnedCodes() {
    static const std::vector<int> kCodes = {10, 20, 30, 11, 21, 12, 22, 13, 23, 40, 41, 42, 43,
                                            44, 45, 46, 47, 49, 50, 51, 52, 53, 72, 73, 74, 75,
                                            76, 77, 78, 79, 91, 92, 93, 94, 95, 96, 97, 98, 330};
    return kCodes;
}

void HatchFields(FieldIo& io, AcDbHatch& hatch) {
    HatchData& data = Access::Hatch(hatch);
    io.Subclass("AcDbHatch");
    io.Text(2, data.patternName);
    io.Normal(data.normal);
    if (FieldReader* reader = io.AsReader()) {
        ReadHatch(*reader, data);
        return;
    }
    FieldWriter& writer = *io.AsWriter();
    writer.PutInt(70, data.solid ? 1 : 0);
    writer.PutInt(71, data.associative ? 1 : 0);
    writer.out().BeginList(OwnedCodes());
    writer.PutPoint(10, AcGePoint3d(0.0, 0.0, data.elevation));
    writer.PutInt(91, static_cast<std::int64_t>(data.loops.size()));
    for (const HatchLoop& loop : data.loops) WriteLoop(writer, loop);
    WritePattern(writer, data);
    writer.out().EndList();
}

}  // namespace

const std::vector<Codec>& HatchCodecs() {
    static const std::vector<Codec> kCodecs = {
        {"HATCH", AcDbHatch::desc, Fields<AcDbHatch, HatchFields>, 1014}};
    return kCodecs;
}

}  // namespace host::dxf
