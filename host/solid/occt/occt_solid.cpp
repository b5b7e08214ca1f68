#include "host/solid/occt/occt_solid.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepBuilderAPI_MakeVertex.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <GProp_GProps.hxx>
#include <GeomConvert.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_Circle.hxx>
#include <Geom_Line.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Vertex.hxx>
#include <gp_Pln.hxx>

#include "host/solid/occt/occt_guard.h"

namespace host::solid {

namespace {

// Relative; the library integrates numerically.
constexpr double kVolumeTol = 1e-6;

gp_Pnt GpPoint(const AcGePoint3d& p) { return gp_Pnt(p.x, p.y, p.z); }
gp_Dir Direction(const AcGeVector3d& v) { return gp_Dir(v.x, v.y, v.z); }

// The profile as one ring again, the pieces on the axis included. The outside runs from the right
// to the left, cavities from the left to the right, so that along the axis they follow by their
// start.
std::vector<Piece> RingOf(const Profile& profile) {
    std::vector<const Chain*> chains;
    for (const Chain& chain : profile.chains) chains.push_back(&chain);
    std::sort(chains.begin() + 1, chains.end(), [](const Chain* a, const Chain* b) {
        return a->pieces.front().from.x < b->pieces.front().from.x;
    });
    std::vector<Piece> ring;
    for (const Chain* chain : chains) {
        if (!ring.empty()) {
            Piece bridge;
            bridge.from = ring.back().to;
            bridge.to = chain->pieces.front().from;
            ring.push_back(bridge);
        }
        ring.insert(ring.end(), chain->pieces.begin(), chain->pieces.end());
    }
    if (!profile.chains.front().closed) {
        Piece bridge;
        bridge.from = ring.back().to;
        bridge.to = ring.front().from;
        ring.push_back(bridge);
    }
    return ring;
}

// Revolved as a circle, an arc that comes to a point on the axis is a torus that goes on behind the
// tip: STEP readers lose the tip.
bool EndsInTip(const Piece& piece) {
    return (piece.from.y == 0.0 || piece.to.y == 0.0) && piece.centre.y != 0.0;
}

// Revolved as a line, one that leaves the axis's direction by less than about 1e-4 comes out as a
// cylinder, one that leaves the perpendicular by as little as a plane.
bool IsNearlyAligned(const Piece& line) {
    constexpr double kNearly = 1e-3;
    const double dx = std::fabs(line.to.x - line.from.x), dy = std::fabs(line.to.y - line.from.y);
    return dx != 0.0 && dy != 0.0 && (std::min)(dx, dy) < kNearly * (std::max)(dx, dy);
}

class WireMaker {
public:
    explicit WireMaker(const Frame& frame) : frame_(frame) {}

    TopoDS_Wire Make(const std::vector<Piece>& ring) {
        std::vector<TopoDS_Vertex> corners;
        corners.reserve(ring.size());
        for (const Piece& piece : ring)
            corners.push_back(BRepBuilderAPI_MakeVertex(GpPoint(frame_.At(piece.from))));
        BRepBuilderAPI_MakeWire wire;
        for (std::size_t i = 0; i < ring.size(); ++i)
            wire.Add(Edge(ring[i], corners[i], corners[(i + 1) % ring.size()]));
        return wire.Wire();
    }

private:
    TopoDS_Edge Edge(const Piece& piece, const TopoDS_Vertex& from, const TopoDS_Vertex& to) const {
        if (piece.bulge == 0.0 && !IsNearlyAligned(piece))
            return BRepBuilderAPI_MakeEdge(from, to).Edge();
        const Handle(Geom_TrimmedCurve) curve = piece.bulge == 0.0 ? Line(piece) : Arc(piece);
        if (piece.bulge != 0.0 && !EndsInTip(piece))
            return BRepBuilderAPI_MakeEdge(curve->BasisCurve(), from, to, curve->FirstParameter(),
                                           curve->LastParameter())
                .Edge();
        // As a spline, exactly the same points, it stays the meridian that it is.
        const Handle(Geom_BSplineCurve) spline =
            GeomConvert::CurveToBSplineCurve(curve, Convert_QuasiAngular);
        return BRepBuilderAPI_MakeEdge(spline, from, to, spline->FirstParameter(),
                                       spline->LastParameter())
            .Edge();
    }

    Handle(Geom_TrimmedCurve) Line(const Piece& piece) const {
        const gp_Pnt from = GpPoint(frame_.At(piece.from));
        const gp_Vec along(from, GpPoint(frame_.At(piece.to)));
        return new Geom_TrimmedCurve(new Geom_Line(from, along), 0.0, along.Magnitude());
    }

    // An arc that turns right is counter-clockwise about the opposite normal.
    Handle(Geom_TrimmedCurve) Arc(const Piece& piece) const {
        const AcGeVector3d normal = piece.bulge > 0.0 ? frame_.Normal() : -frame_.Normal();
        const AcGePoint3d centre = frame_.At(piece.centre);
        const gp_Ax2 axes(GpPoint(centre), Direction(normal),
                          Direction(frame_.At(piece.from) - centre));
        return new Geom_TrimmedCurve(new Geom_Circle(axes, piece.radius), 0.0,
                                     4.0 * std::atan(std::fabs(piece.bulge)));
    }

    const Frame& frame_;
};

class OcctSolid : public KernelSolid {
public:
    bool Build(const Profile& profile, double expectedVolume, std::string& reason) {
        const Frame& frame = profile.frame;
        const TopoDS_Wire wire = WireMaker(frame).Make(RingOf(profile));
        const gp_Pln plane(GpPoint(frame.origin), Direction(frame.Normal()));
        BRepBuilderAPI_MakeFace face(plane, wire);
        if (!face.IsDone()) {
            reason = "the kernel does not take the profile as a face";
            return false;
        }
        BRepPrimAPI_MakeRevol revol(face.Face(),
                                    gp_Ax1(GpPoint(frame.origin), Direction(frame.axis)));
        if (!revol.IsDone()) {
            reason = "the kernel cannot revolve the profile";
            return false;
        }
        shape_ = revol.Shape();
        return Check(expectedVolume, reason);
    }

    double Volume() const override { return volume_; }
    bool StepText(const StepOptions& options, std::string& text,
                  std::string& reason) const override {
        return WriteStep(shape_, options, text, reason);
    }
    bool Triangulate(double chordTolerance, Mesh& mesh, std::string& reason) const override {
        return TriangulateShape(shape_, chordTolerance, mesh, reason);
    }

private:
    bool Check(double expectedVolume, std::string& reason) {
        if (!BRepCheck_Analyzer(shape_).IsValid()) {
            reason = "the kernel finds its own solid of the profile invalid";
            return false;
        }
        GProp_GProps properties;
        BRepGProp::VolumeProperties(shape_, properties);
        volume_ = properties.Mass();
        // Turned inside out by a frame that runs the other way.
        if (volume_ < 0.0) {
            shape_.Reverse();
            volume_ = -volume_;
        }
        if (std::fabs(volume_ - expectedVolume) <= kVolumeTol * expectedVolume) return true;
        reason = "the kernel's solid has a volume of " + std::to_string(volume_) + " instead of " +
                 std::to_string(expectedVolume);
        return false;
    }

    TopoDS_Shape shape_;
    double volume_ = 0.0;
};

}  // namespace

void SilenceMessages() { Message::DefaultMessenger()->ChangePrinters().Clear(); }

std::unique_ptr<KernelSolid> MakeOcctSolid(const Profile& profile, double expectedVolume,
                                           std::string& reason) {
    auto solid = std::make_unique<OcctSolid>();
    const bool made = Guarded("revolving the profile", reason,
                              [&] { return solid->Build(profile, expectedVolume, reason); });
    if (!made) solid.reset();
    return solid;
}

}  // namespace host::solid
