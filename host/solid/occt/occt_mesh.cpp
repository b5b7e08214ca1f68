#include "host/solid/occt/occt_solid.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepTools.hxx>
#include <BRep_Tool.hxx>
#include <Poly_Triangulation.hxx>
#include <TopExp_Explorer.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <gp_Vec.hxx>

#include "host/solid/occt/occt_guard.h"

namespace host::solid {

namespace {

// Facets also turn by no more than this (radians), so that small fillets keep their roundness.
constexpr double kAngularTol = 0.35;
// A normal shorter than this, for a surface of unit-sized derivatives, is no direction: at poles.
constexpr double kNoNormal = 1e-12;

AcGeVector3d NormalAt(const BRepAdaptor_Surface& surface, const gp_Pnt2d& uv, bool reversed) {
    gp_Pnt at;
    gp_Vec u, v;
    surface.D1(uv.X(), uv.Y(), at, u, v);
    const gp_Vec n = u.Crossed(v);
    const double length = n.Magnitude();
    if (length <= kNoNormal) return {};
    const double s = (reversed ? -1.0 : 1.0) / length;
    return {n.X() * s, n.Y() * s, n.Z() * s};
}

// Where the surface has no normal, its triangles have.
void FillMissingNormals(Mesh& mesh, std::size_t firstPoint, std::size_t firstTriangle) {
    for (std::size_t t = firstTriangle; t < mesh.triangles.size(); ++t) {
        const auto& corner = mesh.triangles[t];
        const auto point = [&](int i) {
            return mesh.points[static_cast<std::size_t>(corner[static_cast<std::size_t>(i)])];
        };
        const AcGeVector3d n = (point(1) - point(0)).crossProduct(point(2) - point(0)).normal();
        for (const int i : corner) {
            AcGeVector3d& normal = mesh.normals[static_cast<std::size_t>(i)];
            if (static_cast<std::size_t>(i) >= firstPoint && normal.lengthSqrd() == 0.0) normal = n;
        }
    }
}

bool AddFace(const TopoDS_Face& face, Mesh& mesh, std::string& reason) {
    TopLoc_Location location;
    const Handle(Poly_Triangulation) facets = BRep_Tool::Triangulation(face, location);
    if (facets.IsNull()) {
        reason = "a face cannot be divided into triangles";
        return false;
    }
    const bool reversed = face.Orientation() == TopAbs_REVERSED;
    const BRepAdaptor_Surface surface(face);
    const std::size_t firstPoint = mesh.points.size(), firstTriangle = mesh.triangles.size();
    for (int i = 1; i <= facets->NbNodes(); ++i) {
        const gp_Pnt p = facets->Node(i).Transformed(location.Transformation());
        mesh.points.emplace_back(p.X(), p.Y(), p.Z());
        mesh.normals.push_back(NormalAt(surface, facets->UVNode(i), reversed));
    }
    const int base = static_cast<int>(firstPoint) - 1;
    for (int i = 1; i <= facets->NbTriangles(); ++i) {
        int a, b, c;
        facets->Triangle(i).Get(a, b, c);
        if (reversed) std::swap(b, c);
        mesh.triangles.push_back({base + a, base + b, base + c});
    }
    FillMissingNormals(mesh, firstPoint, firstTriangle);
    return true;
}

}  // namespace

bool TriangulateShape(const TopoDS_Shape& shape, double chordTolerance, Mesh& mesh,
                      std::string& reason) {
    return Guarded("dividing the solid into triangles", reason, [&] {
        // A shape keeps the triangles it was given, even if they are finer or coarser than asked.
        BRepTools::Clean(shape);
        const BRepMesh_IncrementalMesh mesher(shape, chordTolerance, false, kAngularTol, false);
        if (!mesher.IsDone()) {
            reason = "the solid cannot be divided into triangles";
            return false;
        }
        Mesh made;
        for (TopExp_Explorer faces(shape, TopAbs_FACE); faces.More(); faces.Next())
            if (!AddFace(TopoDS::Face(faces.Current()), made, reason)) return false;
        mesh = std::move(made);
        return true;
    });
}

}  // namespace host::solid
