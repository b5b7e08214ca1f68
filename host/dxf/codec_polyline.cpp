// POLYLINE, VERTEX, SEQEND, INSERT. Vertices and attributes are records of their own.
#include "host/db/access.h"
#include "host/dxf/codec.h"
#include "host/dxf/field_reader.h"
#include "host/dxf/field_writer.h"

namespace host::dxf {

namespace {

// Flag bits of POLYLINE (group 70) and VERTEX; the types of smoothing (group 75).
constexpr std::int64_t kPolyCurveFit = 2, kPolySplineFit = 4, kPoly3d = 8;
constexpr std::int64_t kVertexCurveFit = 1, kVertexTangent = 2, kVertexSplineFit = 8,
                       kVertexControl = 16, kVertex3d = 32;
constexpr std::int64_t kQuadratic = 5, kCubic = 6;

// The point of a POLYLINE is a dummy; only its z, the elevation, counts.
void DummyPoint(FieldIo& io, double& elevation) {
    AcGePoint3d point(0.0, 0.0, elevation);
    io.Point(10, point);
    elevation = point.z;
}

// R12 wants to be told that vertices or attributes follow; later versions allow it.
void Follows(FieldIo& io, bool follows) {
    if (FieldWriter* writer = io.AsWriter())
        if (follows) writer->PutInt(66, 1);
}

void Polyline2dFields(FieldIo& io, AcDb2dPolyline& line) {
    io.Subclass("AcDb2dPolyline");
    Follows(io, true);
    DummyPoint(io, Access::Elevation(line));
    io.OptReal(39, Access::Thickness(line), 0.0);
    AcDb::Poly2dType& type = Access::Type(line);
    FlagSet flags(io, 70);
    flags.Bit(1, Access::Closed(line));
    bool curve = type == AcDb::k2dFitCurvePoly;
    bool spline = type == AcDb::k2dQuadSplinePoly || type == AcDb::k2dCubicSplinePoly;
    flags.Bit(kPolyCurveFit, curve);
    flags.Bit(kPolySplineFit, spline);
    flags.Done(true);
    io.OptReal(40, Access::StartWidth(line), 0.0);
    io.OptReal(41, Access::EndWidth(line), 0.0);
    std::int64_t smooth = !spline ? 0 : type == AcDb::k2dQuadSplinePoly ? kQuadratic : kCubic;
    io.OptInt(75, smooth, std::int64_t{0});
    io.Normal(Access::Normal(line));
    if (io.AsReader() == nullptr) return;
    type = spline  ? (smooth == kQuadratic ? AcDb::k2dQuadSplinePoly : AcDb::k2dCubicSplinePoly)
           : curve ? AcDb::k2dFitCurvePoly
                   : AcDb::k2dSimplePoly;
}

void Polyline3dFields(FieldIo& io, AcDb3dPolyline& line) {
    io.Subclass("AcDb3dPolyline");
    Follows(io, true);
    double elevation = 0.0;
    DummyPoint(io, elevation);
    AcDb::Poly3dType& type = Access::Type(line);
    FlagSet flags(io, 70);
    flags.Bit(1, Access::Closed(line));
    bool spline = type != AcDb::k3dSimplePoly, is3d = true;
    flags.Bit(kPolySplineFit, spline);
    flags.Bit(kPoly3d, is3d);
    flags.Done();
    std::int64_t smooth = !spline ? 0 : type == AcDb::k3dQuadSplinePoly ? kQuadratic : kCubic;
    io.OptInt(75, smooth, std::int64_t{0});
    if (io.AsReader() == nullptr) return;
    type = !spline                ? AcDb::k3dSimplePoly
           : smooth == kQuadratic ? AcDb::k3dQuadSplinePoly
                                  : AcDb::k3dCubicSplinePoly;
}

void Vertex2dFields(FieldIo& io, AcDb2dVertex& vertex) {
    io.Subclass("AcDbVertex");
    io.Subclass("AcDb2dVertex");
    io.Point(10, Access::Position(vertex));
    io.OptReal(40, Access::StartWidth(vertex), 0.0);
    io.OptReal(41, Access::EndWidth(vertex), 0.0);
    io.OptReal(42, Access::Bulge(vertex), 0.0);
    AcDb::Vertex2dType& type = Access::Type(vertex);
    FlagSet flags(io, 70);
    bool curve = type == AcDb::k2dCurveFitVertex, spline = type == AcDb::k2dSplineFitVertex,
         control = type == AcDb::k2dSplineCtlVertex;
    flags.Bit(kVertexCurveFit, curve);
    flags.Bit(kVertexTangent, Access::TangentUsed(vertex));
    flags.Bit(kVertexSplineFit, spline);
    flags.Bit(kVertexControl, control);
    flags.Done(true);
    io.OptAngle(50, Access::Tangent(vertex), 0.0);
    if (io.AsReader() == nullptr) return;
    type = control  ? AcDb::k2dSplineCtlVertex
           : spline ? AcDb::k2dSplineFitVertex
           : curve  ? AcDb::k2dCurveFitVertex
                    : AcDb::k2dVertex;
}

void Vertex3dFields(FieldIo& io, AcDb3dPolylineVertex& vertex) {
    io.Subclass("AcDbVertex");
    io.Subclass("AcDb3dPolylineVertex");
    io.Point(10, Access::Position(vertex));
    AcDb::Vertex3dType& type = Access::Type(vertex);
    FlagSet flags(io, 70);
    bool fit = type == AcDb::k3dFitVertex, control = type == AcDb::k3dControlVertex, is3d = true;
    flags.Bit(kVertexSplineFit, fit);
    flags.Bit(kVertexControl, control);
    flags.Bit(kVertex3d, is3d);
    flags.Done();
    if (io.AsReader() == nullptr) return;
    type = control ? AcDb::k3dControlVertex : fit ? AcDb::k3dFitVertex : AcDb::k3dSimpleVertex;
}

void SequenceEndFields(FieldIo&, AcDbObject&) {}

void ReferenceFields(FieldIo& io, AcDbBlockReference& reference) {
    Follows(io, !Access::Owned(reference).ids.empty());
    io.Named(2, Root::kBlockTable, Access::Block(reference));
    io.OcsPoint(10, Access::Position(reference), Access::Normal(reference));
    AcGeScale3d& scale = Access::Scale(reference);
    io.OptReal(41, scale.sx, 1.0);
    io.OptReal(42, scale.sy, 1.0);
    io.OptReal(43, scale.sz, 1.0);
    io.OptAngle(50, Access::Rotation(reference), 0.0);
}

void InsertFields(FieldIo& io, AcDbBlockReference& reference) {
    io.Subclass("AcDbBlockReference");
    ReferenceFields(io, reference);
    io.Normal(Access::Normal(reference));
}

void MInsertFields(FieldIo& io, AcDbMInsertBlock& reference) {
    io.Subclass("AcDbMInsertBlock");
    ReferenceFields(io, reference);
    io.OptInt(70, Access::Columns(reference), Adesk::UInt16(1));
    io.OptInt(71, Access::Rows(reference), Adesk::UInt16(1));
    // Counts below one, which some programs write, mean one.
    constexpr Adesk::UInt16 kLargest = 0x7FFF;
    for (Adesk::UInt16* count : {&Access::Columns(reference), &Access::Rows(reference)})
        if (io.AsReader() != nullptr && (*count == 0 || *count > kLargest)) *count = 1;
    io.OptReal(44, Access::ColumnSpacing(reference), 0.0);
    io.OptReal(45, Access::RowSpacing(reference), 0.0);
    io.Normal(Access::Normal(reference));
}

}  // namespace

const std::vector<Codec>& PolylineCodecs() {
    static const std::vector<Codec> kCodecs = {
        {"POLYLINE", AcDb2dPolyline::desc, Fields<AcDb2dPolyline, Polyline2dFields>},
        {"POLYLINE", AcDb3dPolyline::desc, Fields<AcDb3dPolyline, Polyline3dFields>},
        {"VERTEX", AcDb2dVertex::desc, Fields<AcDb2dVertex, Vertex2dFields>},
        {"VERTEX", AcDb3dPolylineVertex::desc, Fields<AcDb3dPolylineVertex, Vertex3dFields>},
        {"SEQEND", AcDbSequenceEnd::desc, SequenceEndFields},
        {"INSERT", AcDbBlockReference::desc, Fields<AcDbBlockReference, InsertFields>},
        {"INSERT", AcDbMInsertBlock::desc, Fields<AcDbMInsertBlock, MInsertFields>}};
    return kCodecs;
}

}  // namespace host::dxf
