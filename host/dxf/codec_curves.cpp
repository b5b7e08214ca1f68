// LINE, ARC, CIRCLE, ELLIPSE, SPLINE, RAY, XLINE, LWPOLYLINE, LEADER. Groups as in the DXF
// reference.
#include <algorithm>
#include <cmath>

#include "host/db/access.h"
#include "host/dxf/codec.h"
#include "host/dxf/field_reader.h"
#include "host/dxf/field_writer.h"
#include "host/base/angles.h"

namespace host::dxf {

namespace {

// Length of a list; the reader goes by what is there.
void Count(FieldIo& io, int code, std::size_t count) {
    if (FieldWriter* writer = io.AsWriter()) writer->PutInt(code, static_cast<std::int64_t>(count));
}

void LineFields(FieldIo& io, AcDbLine& line) {
    io.Subclass("AcDbLine");
    io.OptReal(39, Access::Thickness(line), 0.0);
    io.Point(10, Access::Start(line));
    io.Point(11, Access::End(line));
    io.Normal(Access::Normal(line));
}

void CircleFields(FieldIo& io, AcDbCircle& circle) {
    io.Subclass("AcDbCircle");
    io.OptReal(39, Access::Thickness(circle), 0.0);
    io.OcsPoint(10, Access::Center(circle), Access::Normal(circle));
    io.Real(40, Access::Radius(circle));
    io.Normal(Access::Normal(circle));
}

// The file may hold any number of degrees; in memory an angle lies within one turn.
void WrapAngle(double& angle) {
    if (angle < 0.0 || angle >= kTwoPi) angle -= kTwoPi * std::floor(angle / kTwoPi);
    if (angle >= kTwoPi) angle = 0.0;  // a hair below 0 rounds up to a full turn
}

void ArcFields(FieldIo& io, AcDbArc& arc) {
    io.Subclass("AcDbCircle");
    io.OptReal(39, Access::Thickness(arc), 0.0);
    io.OcsPoint(10, Access::Center(arc), Access::Normal(arc));
    io.Real(40, Access::Radius(arc));
    io.Normal(Access::Normal(arc));
    io.Subclass("AcDbArc");
    io.Angle(50, Access::StartAngle(arc));
    io.Angle(51, Access::EndAngle(arc));
    if (io.AsReader() == nullptr) return;
    WrapAngle(Access::StartAngle(arc));
    WrapAngle(Access::EndAngle(arc));
}

void EllipseFields(FieldIo& io, AcDbEllipse& ellipse) {
    io.Subclass("AcDbEllipse");
    io.Point(10, Access::Center(ellipse));
    io.Vector(11, Access::MajorAxis(ellipse));
    io.Normal(Access::Normal(ellipse));
    io.Real(40, Access::Ratio(ellipse));
    io.Real(41, Access::StartParam(ellipse));
    io.Real(42, Access::EndParam(ellipse));
    if (io.AsReader() == nullptr) return;
    double& end = Access::EndParam(ellipse);
    const double start = Access::StartParam(ellipse);
    if (end <= start) end = start + (end - start) - kTwoPi * std::floor((end - start) / kTwoPi);
    if (end == start) end = start + kTwoPi;
}

void RayFields(FieldIo& io, AcDbRay& ray) {
    io.Subclass("AcDbRay");
    io.Point(10, Access::Base(ray));
    io.Vector(11, Access::Direction(ray));
}

void XlineFields(FieldIo& io, AcDbXline& line) {
    io.Subclass("AcDbXline");
    io.Point(10, Access::Base(line));
    io.Vector(11, Access::Direction(line));
}

// Collects the points of one list: its x group begins a point, y and z follow.
class PointList {
public:
    PointList(std::vector<AcGePoint3d>& points, int code) : points_(points), code_(code) {}
    bool Take(int code, double value) {
        if (code == code_) {
            points_.push_back(AcGePoint3d(value, 0.0, 0.0));
        } else if (code == code_ + 10 && !points_.empty()) {
            points_.back().y = value;
        } else if (code == code_ + 20 && !points_.empty()) {
            points_.back().z = value;
        } else {
            return false;
        }
        return true;
    }

private:
    std::vector<AcGePoint3d>& points_;
    int code_;
};

void ReadSplineLists(FieldReader& io, AcDbSpline& spline) {
    PointList controls(Access::Controls(spline), 10), fits(Access::FitPoints(spline), 11);
    for (const Tag& tag : io.ScopeTags()) {
        if (KindOf(tag.code) != ValueKind::kReal) continue;
        const double value = io.RealOf(tag);
        if (controls.Take(tag.code, value) || fits.Take(tag.code, value)) continue;
        if (tag.code == 40) Access::Knots(spline).push_back(value);
        if (tag.code == 41) Access::Weights(spline).push_back(value);
    }
    // Programs write weights of 1 for splines that are not rational; a list that does not fit the
    // points says nothing.
    std::vector<double>& weights = Access::Weights(spline);
    const bool plain =
        std::all_of(weights.begin(), weights.end(), [](double w) { return w == 1.0; });
    if (plain || weights.size() != Access::Controls(spline).size()) weights.clear();
    if (Access::Degree(spline) < 1 || Access::Degree(spline) > 25) Access::Degree(spline) = 3;
    const std::size_t needed =
        Access::Controls(spline).size() + static_cast<std::size_t>(Access::Degree(spline)) + 1;
    if (Access::Knots(spline).size() != needed) {
        Access::Knots(spline).clear();
        Access::Controls(spline).clear();
        weights.clear();
    }
}

void WriteSplineLists(FieldWriter& io, const AcDbSpline& spline) {
    io.out().BeginList({10, 20, 30, 11, 21, 31, 40, 41});
    for (double knot : Access::Knots(spline)) io.PutReal(40, knot);
    for (double weight : Access::Weights(spline)) io.PutReal(41, weight);
    for (const AcGePoint3d& point : Access::Controls(spline)) io.PutPoint(10, point);
    for (const AcGePoint3d& point : Access::FitPoints(spline)) io.PutPoint(11, point);
    io.out().EndList();
}

void SplineFields(FieldIo& io, AcDbSpline& spline) {
    io.Subclass("AcDbSpline");
    FlagSet flags(io, 70);
    flags.Bit(1, Access::Closed(spline));
    flags.Bit(2, Access::Periodic(spline));
    bool rational = spline.isRational();
    flags.Bit(4, rational);
    bool planar = io.AsWriter() != nullptr && spline.isPlanar();
    flags.Bit(8, planar);
    flags.Done();
    io.IntAs(71, Access::Degree(spline));
    Count(io, 72, Access::Knots(spline).size());
    Count(io, 73, Access::Controls(spline).size());
    Count(io, 74, Access::FitPoints(spline).size());
    io.Real(42, Access::KnotTol(spline));
    io.Real(43, Access::ControlTol(spline));
    io.OptReal(44, Access::FitTol(spline), 1e-10);
    if (io.AsReader() != nullptr || spline.hasFitData()) {
        const AcGeVector3d none;
        if (io.AsReader() != nullptr || Access::StartTangent(spline) != none)
            io.Vector(12, Access::StartTangent(spline));
        if (io.AsReader() != nullptr || Access::EndTangent(spline) != none)
            io.Vector(13, Access::EndTangent(spline));
    }
    if (FieldReader* reader = io.AsReader()) ReadSplineLists(*reader, spline);
    if (FieldWriter* writer = io.AsWriter()) WriteSplineLists(*writer, spline);
}

void ReadLightVertices(FieldReader& io, AcDbPolyline& line) {
    auto& vertices = Access::Vertices(line);
    for (const Tag& tag : io.ScopeTags()) {
        if (tag.code == 10) {
            vertices.emplace_back();
            vertices.back().point.x = io.RealOf(tag);
        }
        if (vertices.empty()) continue;
        auto& vertex = vertices.back();
        switch (tag.code) {
            case 20:
                vertex.point.y = io.RealOf(tag);
                break;
            case 40:
                vertex.startWidth = io.RealOf(tag);
                break;
            case 41:
                vertex.endWidth = io.RealOf(tag);
                break;
            case 42:
                vertex.bulge = io.RealOf(tag);
                break;
            case 91:
                TakeInt(io.IntOf(tag), vertex.identifier);
                break;
            default:
                break;
        }
    }
}

void WriteLightVertices(FieldWriter& io, const AcDbPolyline& line) {
    io.out().BeginList({10, 20, 40, 41, 42, 91});
    for (const auto& vertex : Access::Vertices(line)) {
        io.PutPoint(10, vertex.point);
        if (vertex.startWidth >= 0.0 || vertex.endWidth >= 0.0) {
            io.PutReal(40, (std::max)(vertex.startWidth, 0.0));
            io.PutReal(41, (std::max)(vertex.endWidth, 0.0));
        }
        if (vertex.bulge != 0.0) io.PutReal(42, vertex.bulge);
        if (vertex.identifier != 0 && io.version() >= kVersionR2010)
            io.PutInt(91, vertex.identifier);
    }
    io.out().EndList();
}

void LightPolylineFields(FieldIo& io, AcDbPolyline& line) {
    io.Subclass("AcDbPolyline");
    Count(io, 90, Access::Vertices(line).size());
    FlagSet flags(io, 70);
    flags.Bit(1, Access::Closed(line));
    flags.Bit(128, Access::Plinegen(line));
    flags.Done();
    io.OptReal(43, Access::ConstantWidth(line), 0.0);
    io.OptReal(38, Access::Elevation(line), 0.0);
    io.OptReal(39, Access::Thickness(line), 0.0);
    if (FieldReader* reader = io.AsReader()) ReadLightVertices(*reader, line);
    if (FieldWriter* writer = io.AsWriter()) WriteLightVertices(*writer, line);
    io.Normal(Access::Normal(line));
}

void LeaderFields(FieldIo& io, AcDbLeader& leader) {
    io.Subclass("AcDbLeader");
    io.Named(3, Root::kDimStyleTable, Access::DimStyle(leader));
    io.Bool(71, Access::Arrow(leader));
    io.Bool(72, Access::Splined(leader));
    std::int64_t creation = Access::Annotation(leader).isNull() ? 3 : 0;
    io.Int(73, creation);
    if (FieldReader* reader = io.AsReader()) {
        PointList vertices(Access::Vertices(leader), 10);
        for (const Tag& tag : reader->ScopeTags())
            if (KindOf(tag.code) == ValueKind::kReal) vertices.Take(tag.code, reader->RealOf(tag));
    }
    if (FieldWriter* writer = io.AsWriter()) {
        Count(io, 76, Access::Vertices(leader).size());
        writer->out().BeginList({10, 20, 30});
        for (const AcGePoint3d& point : Access::Vertices(leader)) writer->PutPoint(10, point);
        writer->out().EndList();
    }
    if (io.AsReader() != nullptr || !Access::Annotation(leader).isNull())
        io.Handle(340, Access::Annotation(leader));
    io.Normal(Access::Normal(leader));
}

}  // namespace

const std::vector<Codec>& CurveCodecs() {
    static const std::vector<Codec> kCodecs = {
        {"LINE", AcDbLine::desc, Fields<AcDbLine, LineFields>},
        {"CIRCLE", AcDbCircle::desc, Fields<AcDbCircle, CircleFields>},
        {"ARC", AcDbArc::desc, Fields<AcDbArc, ArcFields>},
        {"ELLIPSE", AcDbEllipse::desc, Fields<AcDbEllipse, EllipseFields>, kVersionR13},
        {"SPLINE", AcDbSpline::desc, Fields<AcDbSpline, SplineFields>, kVersionR13},
        {"RAY", AcDbRay::desc, Fields<AcDbRay, RayFields>, kVersionR13},
        {"XLINE", AcDbXline::desc, Fields<AcDbXline, XlineFields>, kVersionR13},
        {"LWPOLYLINE", AcDbPolyline::desc, Fields<AcDbPolyline, LightPolylineFields>, 1014},
        {"LEADER", AcDbLeader::desc, Fields<AcDbLeader, LeaderFields>, kVersionR13}};
    return kCodecs;
}

}  // namespace host::dxf
