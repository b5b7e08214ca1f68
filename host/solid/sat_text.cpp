#include "host/solid/sat_text.h"

#include <charconv>
#include <cstring>

#include "host/solid/sat_topology.h"

namespace host::solid {

namespace {

constexpr char kProduct[] = "QZEncircleLine";
constexpr char kFullTurn[] = "6.283185307179586";

// Record numbers: the records of a kind follow one another, the kinds in this order.
struct Numbers {
    int lump, shell, face, loop, coedge, edge, vertex, surface[kSurfaceKinds], curve, point;

    explicit Numbers(const SatTopology& t) {
        const int loops = static_cast<int>(t.loops.size()),
                  edges = static_cast<int>(t.edges.size());
        lump = t.bodies;  // bodies come first, as the format wants them
        shell = lump + t.bodies;
        face = shell + static_cast<int>(t.shells.size());
        loop = face + static_cast<int>(t.faces.size());
        coedge = loop + loops;
        edge = coedge + loops;
        vertex = edge + edges;
        int next = vertex + edges;
        for (std::size_t kind = 0; kind < kSurfaceKinds; ++kind) {
            surface[kind] = next;
            next += t.surfaces[kind];
        }
        curve = next;
        point = curve + t.circles;
    }
};

class Writer {
public:
    Writer(const SatTopology& topology, const SatOptions& options)
        : t_(topology), number_(topology), options_(options) {
        text_.reserve(400 + 700 * (t_.faces.size() + 1));
    }

    std::string Write() {
        Head();
        Bodies();
        for (std::size_t i = 0; i < t_.faces.size(); ++i) Face(i);
        for (std::size_t i = 0; i < t_.loops.size(); ++i) Loop(i);
        for (std::size_t i = 0; i < t_.loops.size(); ++i) Coedge(i);
        for (std::size_t i = 0; i < t_.edges.size(); ++i) Edge(i);
        for (std::size_t i = 0; i < t_.edges.size(); ++i) Vertex(i);
        for (const SurfaceKind kind :
             {SurfaceKind::kPlane, SurfaceKind::kCone, SurfaceKind::kSphere, SurfaceKind::kTorus})
            for (const SatFace& face : t_.faces)
                if (face.surface == kind) Surface(face);
        for (const SatEdge& edge : t_.edges)
            if (edge.circle >= 0) Circle(edge);
        for (const SatEdge& edge : t_.edges) Begin("point").Point(edge.frame->At(edge.at)).End();
        text_ += "End-of-ACIS-data\n";
        return std::move(text_);
    }

private:
    bool Is700() const { return options_.version == SatVersion::k700; }

    Writer& Word(const char* word) {
        text_ += word;
        text_ += ' ';
        return *this;
    }
    Writer& Number(double value) {
        char digits[32];  // the shortest text that reads back as the same double
        value += 0.0;     // no negative zero
        const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
        text_.append(digits, end);
        text_ += ' ';
        return *this;
    }
    Writer& Ref(int record) {
        text_ += '$';
        text_ += std::to_string(record);
        text_ += ' ';
        return *this;
    }
    Writer& RefIn(int base, int index) { return Ref(index < 0 ? -1 : base + index); }
    Writer& Point(const AcGePoint3d& p) { return Number(p.x).Number(p.y).Number(p.z); }
    Writer& Vector(const AcGeVector3d& v) { return Number(v.x).Number(v.y).Number(v.z); }
    // Name and the fields that every record has: attributes, and since 7.0 an id and a pattern.
    Writer& Begin(const char* name) { return Word(name).Word(Is700() ? "$-1 -1 $-1" : "$-1"); }
    void End() { text_ += "#\n"; }

    void Head() {
        Word(Is700() ? "700" : "400").Number(Is700() ? 0.0 : static_cast<double>(Records()));
        Number(t_.bodies);
        text_ += "0\n";
        const std::string date = DateText(options_.date);
        const char* modeller = Is700() ? "ACIS 7.0" : "ACIS 4.00 NT";
        for (const char* part : {static_cast<const char*>(kProduct), modeller, date.c_str()})
            Number(static_cast<double>(std::strlen(part))).Word(part);
        text_.back() = '\n';
        Number(options_.millimetresPerUnit);
        text_ += "9.9999999999999995e-07 1e-10\n";
    }

    // Drawings state the count, files may leave it 0.
    int Records() const { return number_.point + static_cast<int>(t_.edges.size()); }

    void Bodies() {
        std::vector<int> firstShell(static_cast<std::size_t>(t_.bodies), -1);
        for (std::size_t i = t_.shells.size(); i-- > 0;)
            firstShell[static_cast<std::size_t>(t_.shells[i].body)] = static_cast<int>(i);
        for (int i = 0; i < t_.bodies; ++i)
            Begin("body").RefIn(number_.lump, i).Ref(-1).Ref(-1).End();
        for (int i = 0; i < t_.bodies; ++i)
            Begin("lump")
                .Ref(-1)
                .RefIn(number_.shell, firstShell[static_cast<std::size_t>(i)])
                .Ref(i)
                .End();
        for (std::size_t i = 0; i < t_.shells.size(); ++i) {
            const bool more =
                i + 1 < t_.shells.size() && t_.shells[i + 1].body == t_.shells[i].body;
            Begin("shell").RefIn(number_.shell, more ? static_cast<int>(i) + 1 : -1).Ref(-1);
            RefIn(number_.face, t_.shells[i].firstFace).Ref(-1);
            RefIn(number_.lump, t_.shells[i].body).End();
        }
    }

    void Face(std::size_t i) {
        const SatFace& face = t_.faces[i];
        const SatShell& shell = t_.shells[static_cast<std::size_t>(face.shell)];
        const int next = static_cast<int>(i) + 1;
        const bool more = next < shell.firstFace + shell.faceCount;
        Begin("face").RefIn(number_.face, more ? next : -1).RefIn(number_.loop, face.firstLoop);
        RefIn(number_.shell, face.shell).Ref(-1);
        RefIn(number_.surface[static_cast<std::size_t>(face.surface)], face.surfaceNumber);
        Word(IsReversed(face) ? "reversed" : "forward").Word("single").End();
    }

    // Surface normals point away from the axis, the sphere's centre, the torus's circle; planes are
    // written with the normal that points out of the material.
    static bool IsReversed(const SatFace& face) {
        switch (face.surface) {
            case SurfaceKind::kPlane:
                return false;
            case SurfaceKind::kCone:
                return face.piece->to.x > face.piece->from.x;
            case SurfaceKind::kSphere:
            case SurfaceKind::kTorus:
                break;
        }
        return face.piece->bulge < 0.0;
    }

    void Loop(std::size_t i) {
        const SatLoop& loop = t_.loops[i];
        const bool more = i + 1 < t_.loops.size() && t_.loops[i + 1].face == loop.face;
        Begin("loop").RefIn(number_.loop, more ? static_cast<int>(i) + 1 : -1);
        RefIn(number_.coedge, static_cast<int>(i)).RefIn(number_.face, loop.face).End();
    }

    void Coedge(std::size_t i) {
        const SatLoop& loop = t_.loops[i];
        const int self = number_.coedge + static_cast<int>(i);
        Begin("coedge").Ref(self).Ref(self).RefIn(number_.coedge, loop.partner);
        RefIn(number_.edge, loop.edge).Word(loop.reversed ? "reversed" : "forward");
        RefIn(number_.loop, static_cast<int>(i)).Ref(-1).End();
    }

    // Start and end are the same vertex. A tip has no curve and an empty range.
    void Edge(std::size_t i) {
        const SatEdge& edge = t_.edges[i];
        const bool isTip = edge.circle < 0;
        const int vertex = number_.vertex + static_cast<int>(i);
        Begin("edge").Ref(vertex);
        if (Is700()) Word(isTip ? "1" : "0");
        Ref(vertex);
        if (Is700()) Word(isTip ? "0" : kFullTurn);
        RefIn(number_.coedge, edge.loop).RefIn(number_.curve, edge.circle).Word("forward");
        if (Is700()) Word("@7 unknown");
        End();
    }

    void Vertex(std::size_t i) {
        const int number = static_cast<int>(i);
        Begin("vertex").RefIn(number_.edge, number).RefIn(number_.point, number).End();
    }

    void Circle(const SatEdge& edge) {
        const Frame& f = *edge.frame;
        Begin("ellipse-curve").Point(f.At(edge.at.x, 0.0)).Vector(f.axis);
        Vector(f.radial * edge.at.y).Word("1 I I").End();
    }

    void Surface(const SatFace& face) {
        switch (face.surface) {
            case SurfaceKind::kPlane:
                return Plane(face);
            case SurfaceKind::kCone:
                return Cone(face);
            case SurfaceKind::kSphere:
                return Sphere(face);
            case SurfaceKind::kTorus:
                return Torus(face);
        }
    }

    void Plane(const SatFace& face) {
        const Frame& f = *face.frame;
        const bool up = face.piece->to.y > face.piece->from.y;
        Begin("plane-surface").Point(f.At(face.piece->from.x, 0.0));
        Vector(up ? f.axis : -f.axis).Vector(f.radial).Word("forward_v I I I I").End();
    }

    // From the circle at the wider end, so that the radius there is never 0.
    void Cone(const SatFace& face) {
        const Frame& f = *face.frame;
        const Piece& p = *face.piece;
        const plane::Point& wide = p.to.y > p.from.y ? p.to : p.from;
        const plane::Vector along = p.to.x > p.from.x ? p.Chord() : -p.Chord();
        const bool isCylinder = along.y == 0.0;
        const double length = Length(along);
        Begin("cone-surface").Point(f.At(wide.x, 0.0)).Vector(f.axis).Vector(f.radial * wide.y);
        Word("1 I I");
        Number(isCylinder ? 0.0 : along.y / length).Number(isCylinder ? 1.0 : along.x / length);
        Number(wide.y).Word("forward I I I I").End();
    }

    void Sphere(const SatFace& face) {
        const Frame& f = *face.frame;
        Begin("sphere-surface").Point(f.At(face.piece->centre)).Number(face.piece->radius);
        Vector(f.radial).Vector(f.axis).Word("forward_v I I I I").End();
    }

    // The major radius keeps its sign: below the axis the surface is the lemon's inner part.
    void Torus(const SatFace& face) {
        const Frame& f = *face.frame;
        const Piece& p = *face.piece;
        Begin("torus-surface").Point(f.At(p.centre.x, 0.0)).Vector(f.axis).Number(p.centre.y);
        Number(p.radius).Vector(f.radial).Word("forward_v I I I I").End();
    }

    const SatTopology& t_;
    const Numbers number_;
    const SatOptions& options_;
    std::string text_;
};

}  // namespace

std::string SatText(const std::vector<const Profile*>& bodies, const SatOptions& options) {
    const SatTopology topology = BuildTopology(bodies);
    return Writer(topology, options).Write();
}

}  // namespace host::solid
