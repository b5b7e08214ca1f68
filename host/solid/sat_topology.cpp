#include "host/solid/sat_topology.h"

namespace host::solid {

namespace {

class Builder {
public:
    void AddBody(const Profile& profile) {
        frame_ = &profile.frame;
        for (const Chain& chain : profile.chains) AddShell(chain);
        ++out.bodies;
    }

    SatTopology out;

private:
    // Each piece is a face, each corner off the axis a circle. The face whose piece ends in a
    // corner runs along its circle, the face whose piece starts there runs against it: with the
    // material left of the profile both then have it on their left, whatever the kind of surface.
    void AddShell(const Chain& chain) {
        const std::size_t n = chain.pieces.size();
        const int shell = static_cast<int>(out.shells.size());
        const int firstFace = static_cast<int>(out.faces.size());
        const int firstEdge = static_cast<int>(out.edges.size());
        out.shells.push_back({out.bodies, firstFace, static_cast<int>(n)});

        std::vector<int> startEdge(n, -1), endEdge(n, -1);
        for (std::size_t i = 0; i < n; ++i) {
            const Piece& piece = chain.pieces[i];
            const bool last = i + 1 == n;
            if (i == 0 && !chain.closed) startEdge[0] = AddTip(piece, piece.from);
            if (last && !chain.closed)
                endEdge[i] = AddTip(piece, piece.to);
            else
                startEdge[(i + 1) % n] = endEdge[i] = AddCircle(piece.to);
        }
        for (std::size_t i = 0; i < n; ++i) {
            AddFace(chain.pieces[i], shell);
            AddLoop(startEdge[i], true);
            AddLoop(endEdge[i], false);
        }
        PairLoops(firstEdge);
    }

    // A cone or a torus ends in a point where it reaches the axis; a disc and a sphere go on.
    int AddTip(const Piece& piece, const Point& end) {
        const SurfaceKind kind = SurfaceOf(piece);
        if (kind == SurfaceKind::kPlane || kind == SurfaceKind::kSphere) return -1;
        out.edges.push_back({end, frame_, -1, -1});
        return static_cast<int>(out.edges.size()) - 1;
    }

    int AddCircle(const Point& corner) {
        out.edges.push_back({corner, frame_, -1, out.circles++});
        return static_cast<int>(out.edges.size()) - 1;
    }

    void AddFace(const Piece& piece, int shell) {
        SatFace face;
        face.piece = &piece;
        face.frame = frame_;
        face.shell = shell;
        face.surface = SurfaceOf(piece);
        face.surfaceNumber = out.surfaces[static_cast<std::size_t>(face.surface)]++;
        out.faces.push_back(face);
    }

    void AddLoop(int edge, bool reversed) {
        if (edge < 0) return;
        SatFace& face = out.faces.back();
        const int loop = static_cast<int>(out.loops.size());
        if (face.loopCount++ == 0) face.firstLoop = loop;
        const bool isTip = out.edges[static_cast<std::size_t>(edge)].circle < 0;
        out.loops.push_back({static_cast<int>(out.faces.size()) - 1, edge, -1, reversed && !isTip});
    }

    void PairLoops(int firstEdge) {
        const SatFace& first = out.faces[static_cast<std::size_t>(out.shells.back().firstFace)];
        if (static_cast<int>(out.edges.size()) == firstEdge) return;  // a whole sphere has no edge
        for (std::size_t i = static_cast<std::size_t>(FirstLoopFrom(first)); i < out.loops.size();
             ++i) {
            SatEdge& edge = out.edges[static_cast<std::size_t>(out.loops[i].edge)];
            if (edge.loop < 0) {
                edge.loop = static_cast<int>(i);
                continue;
            }
            out.loops[i].partner = edge.loop;
            out.loops[static_cast<std::size_t>(edge.loop)].partner = static_cast<int>(i);
        }
    }

    // The first loop of the shell that begins with this face, which itself may have none.
    int FirstLoopFrom(const SatFace& first) const {
        for (const SatFace* face = &first; face != out.faces.data() + out.faces.size(); ++face)
            if (face->firstLoop >= 0) return face->firstLoop;
        return static_cast<int>(out.loops.size());
    }

    const Frame* frame_ = nullptr;
};

}  // namespace

SurfaceKind SurfaceOf(const Piece& piece) {
    if (piece.IsArc()) return piece.centre.y == 0.0 ? SurfaceKind::kSphere : SurfaceKind::kTorus;
    return piece.from.x == piece.to.x ? SurfaceKind::kPlane : SurfaceKind::kCone;
}

SatTopology BuildTopology(const std::vector<const Profile*>& bodies) {
    Builder builder;
    for (const Profile* profile : bodies) builder.AddBody(*profile);
    return std::move(builder.out);
}

}  // namespace host::solid
