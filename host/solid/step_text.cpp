#include "host/solid/step_text.h"

#include <cmath>
#include <vector>

#include "host/solid/sat_topology.h"
#include "host/solid/step_entities.h"

namespace host::solid {

namespace {

class Writer {
public:
    // faces  about as many as there will be
    Writer(const StepOptions& options, std::size_t faces)
        : unit_(StepUnitOf(options.unitsValue)), out_(unit_.factor, 1200 * (faces + 2)) {
        Head(StepString(options.product), options.timestamp);
    }

    void Add(const StepPart& part) {
        frame_ = part.profile->frame;
        t_ = BuildTopology({part.profile});
        edges_.clear();
        const int product = Product(StepString(part.product));
        if (context_ == 0) context_ = Context();
        axis_ = out_.Direction(frame_.axis);
        backward_ = out_.Direction(-frame_.axis);
        radial_ = out_.Direction(frame_.radial);
        normal_ = out_.Direction(frame_.Normal());
        against_ = out_.Direction(-frame_.Normal());
        for (const SatEdge& edge : t_.edges) edges_.push_back(Corner(edge));
        std::vector<int> shells;
        for (const SatShell& shell : t_.shells) shells.push_back(Shell(shell));
        const int solid = Solid(shells);
        Root(product, context_, solid);
        if (part.rgb >= 0) Colour(solid, part.rgb);
    }

    std::string Finish() {
        if (!styles_.empty())
            out_.Begin("MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION")
                .Word("''")
                .Refs(styles_)
                .Ref(context_)
                .End();
        return out_.Finish();
    }

private:
    // A corner of the profile: its vertex, and its circle, 0 for a tip.
    struct CornerIds {
        int vertex = 0, circle = 0;
    };

    void Head(const std::string& name, const std::string& timestamp) {
        out_.Text("ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION(('Revolved solid'),'2;1');\n");
        out_.Text("FILE_NAME('" + name + "','" + StepString(timestamp) +
                  "',(''),(''),'QZEncircleLine','QZEncircleLine','');\n");
        out_.Text("FILE_SCHEMA(('AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }'));\n");
        out_.Text("ENDSEC;\nDATA;\n");
    }

    // What all products of a file are said in.
    void Contexts() {
        application_ = out_.Begin("APPLICATION_CONTEXT")
                           .Word("'core data for automotive mechanical design processes'")
                           .End();
        out_.Begin("APPLICATION_PROTOCOL_DEFINITION")
            .Word("'international standard','automotive_design',2000")
            .Ref(application_)
            .End();
        productContext_ =
            out_.Begin("PRODUCT_CONTEXT").Word("''").Ref(application_).Word("'mechanical'").End();
    }

    int Product(const std::string& name) {
        if (application_ == 0) Contexts();
        const std::string quoted = "'" + name + "'";
        const int product = out_.Begin("PRODUCT")
                                .Word(quoted.c_str())
                                .Word(quoted.c_str())
                                .Word("''")
                                .Refs({productContext_})
                                .End();
        out_.Begin("PRODUCT_RELATED_PRODUCT_CATEGORY").Word("'part',$").Refs({product}).End();
        const int formation =
            out_.Begin("PRODUCT_DEFINITION_FORMATION").Word("'',''").Ref(product).End();
        const int definition = out_.Begin("PRODUCT_DEFINITION_CONTEXT")
                                   .Word("'part definition'")
                                   .Ref(application_)
                                   .Word("'design'")
                                   .End();
        const int design = out_.Begin("PRODUCT_DEFINITION")
                               .Word("'design',''")
                               .Ref(formation)
                               .Ref(definition)
                               .End();
        return out_.Begin("PRODUCT_DEFINITION_SHAPE").Word("'',''").Ref(design).End();
    }

    int LengthUnit() {
        const char* const prefix = unit_.prefix != nullptr ? unit_.prefix : ".MILLI.";
        const int metric =
            out_.Complex(std::string("LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(") + prefix + ",.METRE.)");
        if (unit_.prefix != nullptr) return metric;
        const int size = out_.Begin("LENGTH_MEASURE_WITH_UNIT")
                             .Word(("LENGTH_MEASURE(" + StepReal(unit_.millimetres) + ")").c_str())
                             .Ref(metric)
                             .End();
        const int dimension =
            out_.Begin("DIMENSIONAL_EXPONENTS").Word("1.,0.,0.,0.,0.,0.,0.").End();
        return out_.Complex(std::string("CONVERSION_BASED_UNIT('") + unit_.name + "',#" +
                            std::to_string(size) + ")LENGTH_UNIT()NAMED_UNIT(#" +
                            std::to_string(dimension) + ")");
    }

    int Context() {
        const int length = LengthUnit();
        const int angle = out_.Complex("NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.)");
        const int solid = out_.Complex("NAMED_UNIT(*)SI_UNIT($,.STERADIAN.)SOLID_ANGLE_UNIT()");
        const int exactness = out_.Begin("UNCERTAINTY_MEASURE_WITH_UNIT")
                                  .Word("LENGTH_MEASURE(1.E-07)")
                                  .Ref(length)
                                  .Word("'distance_accuracy_value','confusion accuracy'")
                                  .End();
        const auto ref = [](int id) { return "#" + std::to_string(id); };
        return out_.Complex(
            "GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNCERTAINTY_ASSIGNED_CONTEXT((" +
            ref(exactness) + "))GLOBAL_UNIT_ASSIGNED_CONTEXT((" + ref(length) + "," + ref(angle) +
            "," + ref(solid) +
            "))REPRESENTATION_CONTEXT('Context #1','3D Context with UNIT and UNCERTAINTY')");
    }

    void Root(int product, int context, int solid) {
        const int origin = out_.Point(AcGePoint3d());
        const int placement = out_.Placement(origin, out_.Direction(AcGeVector3d(0.0, 0.0, 1.0)),
                                             out_.Direction(AcGeVector3d(1.0, 0.0, 0.0)));
        const int shape = out_.Begin("ADVANCED_BREP_SHAPE_REPRESENTATION")
                              .Word("''")
                              .Refs({placement, solid})
                              .Ref(context)
                              .End();
        out_.Begin("SHAPE_DEFINITION_REPRESENTATION").Ref(product).Ref(shape).End();
    }

    // The colour of every face of a solid, 0xRRGGBB.
    void Colour(int solid, int rgb) {
        const auto share = [&](int shift) {
            return static_cast<double>((rgb >> shift) & 0xFF) / 255.0;
        };
        const int colour = out_.Begin("COLOUR_RGB")
                               .Word("''")
                               .Number(share(16))
                               .Number(share(8))
                               .Number(share(0))
                               .End();
        const int fill = out_.Begin("FILL_AREA_STYLE_COLOUR").Word("''").Ref(colour).End();
        const int area = out_.Begin("FILL_AREA_STYLE").Word("''").Refs({fill}).End();
        const int surface = out_.Begin("SURFACE_STYLE_FILL_AREA").Ref(area).End();
        const int side = out_.Begin("SURFACE_SIDE_STYLE").Word("''").Refs({surface}).End();
        const int usage = out_.Begin("SURFACE_STYLE_USAGE").Word(".BOTH.").Ref(side).End();
        const int style = out_.Begin("PRESENTATION_STYLE_ASSIGNMENT").Refs({usage}).End();
        styles_.push_back(out_.Begin("STYLED_ITEM").Word("'color'").Refs({style}).Ref(solid).End());
    }

    // The shells behind the first are voids: their faces look away from the material all the same.
    int Solid(const std::vector<int>& shells) {
        if (shells.size() == 1)
            return out_.Begin("MANIFOLD_SOLID_BREP").Word("''").Ref(shells.front()).End();
        std::vector<int> voids;
        for (std::size_t i = 1; i < shells.size(); ++i)
            voids.push_back(
                out_.Begin("ORIENTED_CLOSED_SHELL").Word("'',*").Ref(shells[i]).Word(".T.").End());
        return out_.Begin("BREP_WITH_VOIDS").Word("''").Ref(shells.front()).Refs(voids).End();
    }

    int Shell(const SatShell& shell) {
        std::vector<int> faces;
        for (int i = 0; i < shell.faceCount; ++i)
            faces.push_back(Face(t_.faces[static_cast<std::size_t>(shell.firstFace + i)]));
        return out_.Begin("CLOSED_SHELL").Word("''").Refs(faces).End();
    }

    // ---- Corners

    CornerIds Corner(const SatEdge& edge) {
        CornerIds ids;
        if (edge.circle < 0) return ids;  // a tip's vertex is its face's affair
        ids.vertex = out_.Vertex(frame_.At(edge.at));
        const int centre = out_.Point(frame_.At(edge.at.x, 0.0));
        const int circle = out_.Circle(out_.Placement(centre, axis_, radial_), edge.at.y);
        ids.circle = out_.Edge(ids.vertex, ids.vertex, circle);
        return ids;
    }

    // ---- Faces

    // Which corners bound the piece: the one where it starts, the one where it ends.
    struct Ends {
        const CornerIds *start = nullptr, *end = nullptr;
    };
    Ends EndsOf(const SatFace& face) const {
        Ends ends;
        for (int i = 0; i < face.loopCount; ++i) {
            const auto edge = static_cast<std::size_t>(
                t_.loops[static_cast<std::size_t>(face.firstLoop + i)].edge);
            const plane::Point& at = t_.edges[edge].at;
            const bool isStart =
                ends.start == nullptr && at.x == face.piece->from.x && at.y == face.piece->from.y;
            (isStart ? ends.start : ends.end) = &edges_[edge];
        }
        return ends;
    }

    int Face(const SatFace& face) {
        const Ends ends = EndsOf(face);
        if (face.surface == SurfaceKind::kPlane) return PlaneFace(face, ends);
        if (!HasCircle(ends.start) && !HasCircle(ends.end)) return WholeFace(face);
        // A sphere goes on over the axis, where it has no corner but its seam an end.
        const int from = VertexAt(ends.start, face.piece->from);
        const int to = VertexAt(ends.end, face.piece->to);
        const int curve = Meridian(*face.piece);
        const int seam = out_.Edge(from, to, curve);
        std::vector<int> loop;
        if (HasCircle(ends.end)) loop.push_back(out_.Oriented(ends.end->circle, true));
        loop.push_back(out_.Oriented(seam, false));
        if (HasCircle(ends.start)) loop.push_back(out_.Oriented(ends.start->circle, false));
        loop.push_back(out_.Oriented(seam, true));
        bool looksOut = true;
        const int surface = Surface(face, curve, looksOut);
        const int bound = Bound(loop);
        return out_.Face({bound}, surface, looksOut);
    }

    static bool HasCircle(const CornerIds* corner) {
        return corner != nullptr && corner->circle != 0;
    }

    // A corner's own vertex, or a new one on the axis.
    int VertexAt(const CornerIds* corner, const plane::Point& at) {
        return HasCircle(corner) ? corner->vertex : out_.Vertex(frame_.At(at));
    }

    // From axis to axis: the surface is closed and has no edge, only a point to begin at.
    int WholeFace(const SatFace& face) {
        const int vertex = out_.Vertex(frame_.At(face.piece->from));
        const int loop = out_.Begin("VERTEX_LOOP").Word("''").Ref(vertex).End();
        const int bound = out_.Begin("FACE_BOUND").Word("''").Ref(loop).Word(".T.").End();
        bool looksOut = true;
        const int surface = Surface(face, Meridian(*face.piece), looksOut);
        return out_.Face({bound}, surface, looksOut);
    }

    int Bound(const std::vector<int>& edges) {
        const int loop = out_.Begin("EDGE_LOOP").Word("''").Refs(edges).End();
        return out_.Begin("FACE_BOUND").Word("''").Ref(loop).Word(".T.").End();
    }

    int PlaneFace(const SatFace& face, const Ends& ends) {
        std::vector<int> bounds;
        if (ends.start != nullptr)
            bounds.push_back(Bound({out_.Oriented(ends.start->circle, false)}));
        if (ends.end != nullptr) bounds.push_back(Bound({out_.Oriented(ends.end->circle, true)}));
        const Piece& p = *face.piece;
        const int centre = out_.Point(frame_.At(p.from.x, 0.0));
        const int placement =
            out_.Placement(centre, p.to.y > p.from.y ? axis_ : backward_, radial_);
        return out_.Face(bounds, out_.Begin("PLANE").Word("''").Ref(placement).End(), true);
    }

    // The piece in the profile's plane, run from its start to its end.
    int Meridian(const Piece& piece) {
        if (!piece.IsArc()) return out_.Line(frame_.At(piece.from), frame_.At(piece.to));
        if (EndsInTip(piece)) return out_.Arc(frame_, piece);
        const int centre = out_.Point(frame_.At(piece.centre));
        const plane::Vector start = piece.from - piece.centre;
        const int first = out_.Direction(frame_.axis * start.x + frame_.radial * start.y);
        return out_.Circle(out_.Placement(centre, piece.bulge > 0.0 ? normal_ : against_, first),
                           piece.radius);
    }

    // The whole circle, revolved, is a torus only when it stays off the axis.
    static bool MeetsItself(const Piece& arc) {
        return arc.centre.y != 0.0 && arc.centre.y <= arc.radius;
    }

    // Revolved as a circle, such an arc would go on behind its tip, which readers then lose.
    static bool EndsInTip(const Piece& arc) {
        return (arc.from.y == 0.0 || arc.to.y == 0.0) && arc.centre.y != 0.0;
    }

    // looksOut: whether the surface's own normal leads out of the material.
    int Surface(const SatFace& face, int meridian, bool& looksOut) {
        const Piece& p = *face.piece;
        switch (face.surface) {
            case SurfaceKind::kPlane:
                break;
            case SurfaceKind::kCone:
                looksOut = p.to.x < p.from.x;
                return Cone(p);
            case SurfaceKind::kSphere:
                looksOut = p.bulge > 0.0;
                return Sphere(p);
            case SurfaceKind::kTorus:
                looksOut = !MeetsItself(p) && p.bulge > 0.0;
                return MeetsItself(p) ? Revolved(meridian) : Torus(p);
        }
        return 0;
    }

    // From the circle at the wider end, the axis towards where it widens.
    int Cone(const Piece& p) {
        const plane::Point& wide = p.to.y > p.from.y ? p.to : p.from;
        const plane::Point& narrow = p.to.y > p.from.y ? p.from : p.to;
        const int centre = out_.Point(frame_.At(wide.x, 0.0));
        const bool isCylinder = wide.y == narrow.y;
        const int placement =
            out_.Placement(centre, isCylinder || wide.x > narrow.x ? axis_ : backward_, radial_);
        if (isCylinder)
            return out_.Begin("CYLINDRICAL_SURFACE").Word("''").Ref(placement).Length(wide.y).End();
        return out_.Begin("CONICAL_SURFACE")
            .Word("''")
            .Ref(placement)
            .Length(wide.y)
            .Number(std::atan2(wide.y - narrow.y, std::fabs(wide.x - narrow.x)))
            .End();
    }

    int Sphere(const Piece& p) {
        const int placement = out_.Placement(out_.Point(frame_.At(p.centre)), axis_, radial_);
        return out_.Begin("SPHERICAL_SURFACE").Word("''").Ref(placement).Length(p.radius).End();
    }

    int Torus(const Piece& p) {
        const int centre = out_.Point(frame_.At(p.centre.x, 0.0));
        const int placement = out_.Placement(centre, axis_, radial_);
        return out_.Begin("TOROIDAL_SURFACE")
            .Word("''")
            .Ref(placement)
            .Length(p.centre.y)
            .Length(p.radius)
            .End();
    }

    int Revolved(int meridian) {
        const int origin = out_.Point(frame_.origin);
        const int line = out_.Begin("AXIS1_PLACEMENT").Word("''").Ref(origin).Ref(axis_).End();
        return out_.Begin("SURFACE_OF_REVOLUTION").Word("''").Ref(meridian).Ref(line).End();
    }

    const StepUnit& unit_;
    StepEntities out_;
    int application_ = 0, productContext_ = 0, context_ = 0;
    std::vector<int> styles_;
    // Of the part in hand.
    Frame frame_;
    SatTopology t_;
    std::vector<CornerIds> edges_;  // by number of the topology's edge
    int axis_ = 0, backward_ = 0, radial_ = 0, normal_ = 0, against_ = 0;
};

}  // namespace

std::string StepText(const Profile& profile, const StepOptions& options) {
    return StepText({{&profile, options.product, -1}}, options);
}

std::string StepText(const std::vector<StepPart>& parts, const StepOptions& options) {
    std::size_t pieces = 0;
    for (const StepPart& part : parts)
        for (const Chain& chain : part.profile->chains) pieces += chain.pieces.size();
    Writer writer(options, pieces);
    for (const StepPart& part : parts) writer.Add(part);
    return writer.Finish();
}

}  // namespace host::solid
