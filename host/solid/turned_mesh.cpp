#include "host/solid/turned_mesh.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/base/angles.h"

namespace host::solid {

namespace {

constexpr double kFewestSectors = 24.0;
constexpr double kMostSectors = 720.0;
constexpr double kMostChords = 4096.0;  // of one arc

// The angle whose chord leaves the circle by no more than the tolerance.
double StepAngle(double radius, double tolerance) {
    const double rise = (std::min)(1.0, tolerance / radius);
    return 2.0 * std::acos(1.0 - rise);
}

class Turner {
public:
    Turner(const Profile& profile, double tolerance)
        : m_frame(profile.frame), m_tolerance(tolerance) {
        double highest = 0.0;
        for (const Chain& chain : profile.chains)
            for (const Piece& piece : chain.pieces)
                highest = (std::max)(highest, BoxOf(piece).high.y);
        const double sectors = highest > 0 ? kTwoPi / StepAngle(highest, tolerance) : 0.0;
        m_sectors = static_cast<int>(
            std::ceil((std::min)((std::max)(sectors, kFewestSectors), kMostSectors)));
        for (int i = 0; i < m_sectors; ++i) {
            const double angle = kTwoPi * i / m_sectors;
            m_away.push_back(m_frame.radial * std::cos(angle) + m_frame.Normal() * std::sin(angle));
        }
    }

    void Add(const Piece& piece) {
        const double sweep = 2.0 * piece.HalfAngle();
        int chords = 1;
        if (piece.IsArc())
            chords = static_cast<int>((std::min)(
                std::ceil(std::abs(sweep) / StepAngle(piece.radius, m_tolerance)), kMostChords));
        const Vector start = piece.StartDirection();
        AddRing(piece.from, start);
        for (int k = 1; k <= chords; ++k) {
            const double angle = sweep * k / chords;
            // From the start along the chord there: no way through a far-away centre.
            const Point p =
                k == chords ? piece.to
                            : piece.from + Turned(start, angle / 2.0) *
                                               (2.0 * piece.radius * std::sin(std::abs(angle) / 2));
            AddRing(p, piece.IsArc() ? Turned(start, angle) : start);
            AddStrip(p.y == 0.0);
        }
    }

    Mesh mesh;

private:
    // The material is on the left of travel.
    void AddRing(const Point& p, const Vector& travel) {
        m_wasOnAxis = std::exchange(m_isOnAxis, p.y == 0.0);
        for (const AcGeVector3d& away : m_away) {
            mesh.points.push_back(m_frame.origin + m_frame.axis * p.x + away * p.y);
            mesh.normals.push_back(m_frame.axis * travel.y - away * travel.x);
        }
    }

    // Between the last two rings; what comes to a point on the axis has one triangle a sector.
    void AddStrip(bool endsOnAxis) {
        const int to = static_cast<int>(mesh.points.size()) - m_sectors;
        const int from = to - m_sectors;
        for (int i = 0; i < m_sectors; ++i) {
            const int next = (i + 1) % m_sectors;
            if (!endsOnAxis) mesh.triangles.push_back({from + i, to + i, to + next});
            if (!m_wasOnAxis) mesh.triangles.push_back({from + i, to + next, from + next});
        }
    }

    const Frame& m_frame;
    double m_tolerance;
    int m_sectors = 0;
    std::vector<AcGeVector3d> m_away;  // unit, from the axis, one a sector
    bool m_isOnAxis = false, m_wasOnAxis = false;
};

}  // namespace

Mesh TurnedMesh(const Profile& profile, double chordTolerance) {
    Turner turner(profile, chordTolerance);
    for (const Chain& chain : profile.chains)
        for (const Piece& piece : chain.pieces) turner.Add(piece);
    return std::move(turner.mesh);
}

}  // namespace host::solid
