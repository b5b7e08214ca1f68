#include "sat_reader.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <set>
#include <sstream>

namespace sat {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTol = 1e-6;  // the file's own position tolerance

Vec operator+(const Vec& a, const Vec& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
Vec operator-(const Vec& a, const Vec& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
Vec operator*(const Vec& a, double s) { return {a.x * s, a.y * s, a.z * s}; }
double Dot(const Vec& a, const Vec& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
double Length(const Vec& a) { return std::sqrt(Dot(a, a)); }

// In the half plane of the solid's axis: x along it, r away from it.
struct Flat {
    double x = 0.0, r = 0.0;
};
double Distance(const Flat& a, const Flat& b) { return std::hypot(a.x - b.x, a.r - b.r); }

struct Circle {
    Flat at;
    bool along = false;  // its direction is right-handed about the solid's axis
};

// A surface of revolution by its meridian: a straight line or a circle.
struct Surface {
    std::string kind;
    Flat centre;        // of the meridian circle; a point of the meridian line
    double radius = 0;  // of the meridian circle
    Flat direction;     // of the meridian line
    Flat lineNormal;    // natural normal of a meridian line

    bool IsLine() const { return kind == "plane" || kind == "cone" || kind == "cylinder"; }
    Flat Normal(const Flat& p) const {
        if (IsLine()) return lineNormal;
        return {(p.x - centre.x) / radius, (p.r - centre.r) / radius};
    }
    double OffBy(const Flat& p) const {
        if (!IsLine()) return std::fabs(Distance(p, centre) - radius);
        return std::fabs((p.x - centre.x) * lineNormal.x + (p.r - centre.r) * lineNormal.r);
    }
};

class Auditor {
public:
    explicit Auditor(const File& file) : f_(file) {}

    Audit Run() {
        for (std::size_t i = 0; i < f_.records.size(); ++i)
            if (f_.records[i].name == "body") Body(static_cast<int>(i));
        for (std::size_t i = 0; i < f_.records.size(); ++i)
            if (reached_.count(static_cast<int>(i)) == 0)
                Fault(static_cast<int>(i), "is reached by nothing");
        return std::move(out_);
    }

private:
    void Fault(int record, const std::string& what) {
        const std::string name =
            record < 0 ? "null" : f_.records[static_cast<std::size_t>(record)].name;
        out_.faults.push_back("record " + std::to_string(record) + " (" + name + ") " + what);
    }
    const std::string& Text(int record, std::size_t field) {
        static const std::string kNone;
        const auto& fields = f_.records[static_cast<std::size_t>(record)].fields;
        if (field < fields.size()) return fields[field];
        Fault(record, "lacks field " + std::to_string(field));
        return kNone;
    }
    double Num(int record, std::size_t field) {
        return std::strtod(Text(record, field).c_str(), nullptr);
    }
    Vec Vector(int record, std::size_t field) {
        return {Num(record, field), Num(record, field + 1), Num(record, field + 2)};
    }
    // The record that a field points to, of the named kind; -1 for null or on a fault.
    int Ref(int record, std::size_t field, const std::string& kind, bool mayBeNull = false) {
        const std::string& text = Text(record, field);
        const int to = text.size() > 1 && text[0] == '$' ? std::atoi(text.c_str() + 1) : -2;
        if (to == -1 && mayBeNull) return -1;
        if (to < 0) {
            Fault(record, "should point to a " + kind);
            return -1;
        }
        const std::string& name = f_.records[static_cast<std::size_t>(to)].name;
        if (name != kind && !(kind == "surface" && name.find("-surface") != std::string::npos)) {
            Fault(record, "points to a " + name + " instead of a " + kind);
            return -1;
        }
        reached_.insert(to);
        return to;
    }
    void Back(int record, std::size_t field, int owner) {
        if (Text(record, field) != "$" + std::to_string(owner))
            Fault(record, "does not point back");
    }

    void Body(int body) {
        ++out_.bodies;
        reached_.insert(body);
        if (body >= std::atoi(f_.counts.c_str())) Fault(body, "does not stand at the front");
        int count = 0;
        for (int lump = Ref(body, 0, "lump"); lump >= 0;
             lump = Ref(lump, 0, "lump", true), ++count) {
            Back(lump, 2, body);
            for (int shell = Ref(lump, 1, "shell"); shell >= 0;
                 shell = Ref(shell, 0, "shell", true)) {
                Back(shell, 4, lump);
                Shell(shell);
            }
        }
        if (count != 1) Fault(body, "has not one lump");
    }

    void Shell(int shell) {
        faces_.clear();
        edges_.clear();
        hasAxis_ = false;
        for (int face = Ref(shell, 2, "face"); face >= 0; face = Ref(face, 0, "face", true)) {
            Back(face, 2, shell);
            faces_.push_back(face);
        }
        for (const int face : faces_) TakeAxis(face);
        // Euler's formula; each circle has one vertex, so only the tips' vertices count.
        int euler = 0;
        bool reachesAxis = false;
        double volume = 0.0;
        for (const int face : faces_) {
            const int loops = Face(face, volume);
            euler += 2 - loops;
            reachesAxis = reachesAxis || loops < 2;
        }
        for (const auto& [edge, uses] : edges_) {
            const bool isTip = Ref(edge, 5, "ellipse-curve", true) < 0;
            if (uses != (isTip ? 1 : 2)) Fault(edge, "has the wrong number of coedges");
            euler += isTip;
            reachesAxis = reachesAxis || isTip;
        }
        if (euler != (reachesAxis ? 2 : 0)) Fault(shell, "fails Euler's formula");
        CheckConnected(shell);
        out_.shellVolumes.push_back(volume);
        out_.volume += volume;
    }

    // Circle edges join faces into one group.
    void CheckConnected(int shell) {
        std::set<int> group{faces_.front()};
        for (bool grew = true; grew;) {
            grew = false;
            for (const auto& [a, b] : joints_)
                if (group.count(a) != group.count(b))
                    grew = group.insert(a).second | group.insert(b).second;
        }
        for (const int face : faces_)
            if (group.count(face) == 0) Fault(shell, "is not connected");
        joints_.clear();
    }

    // The solid's axis comes from the first surface or circle that has one.
    void TakeAxis(int face) {
        const int surface = Ref(face, 4, "surface");
        if (hasAxis_ || surface < 0) return;
        const std::string& name = f_.records[static_cast<std::size_t>(surface)].name;
        origin_ = Vector(surface, 0);
        if (name == "sphere-surface")
            axis_ = Vector(surface, 7);
        else
            axis_ = Vector(surface, 3);
        hasAxis_ = true;
    }
    bool IsOnAxis(const Vec& p) {
        const Vec q = p - origin_;
        return Length(q - axis_ * Dot(q, axis_)) <= kTol;
    }
    double Along(const Vec& p) { return Dot(p - origin_, axis_); }
    void CheckUnit(int record, const Vec& v) {
        if (std::fabs(Length(v) - 1.0) > 1e-10) Fault(record, "has a direction that is not unit");
    }
    double AxisSign(int record, const Vec& v) {
        const double d = Dot(v, axis_);
        if (std::fabs(std::fabs(d) - 1.0) > 1e-10) Fault(record, "is not about the solid's axis");
        return d < 0.0 ? -1.0 : 1.0;
    }

    Surface ReadSurface(int s) {
        Surface out;
        const std::string& name = f_.records[static_cast<std::size_t>(s)].name;
        const Vec centre = Vector(s, 0);
        if (!IsOnAxis(centre)) Fault(s, "is not centred on the solid's axis");
        const double x = Along(centre);
        if (name == "plane-surface") {
            const double sign = AxisSign(s, Vector(s, 3));
            CheckPerpendicular(s, Vector(s, 3), Vector(s, 6));
            out = {"plane", {x, 0.0}, 0.0, {0.0, 1.0}, {sign, 0.0}};
        } else if (name == "cone-surface") {
            const double sign = AxisSign(s, Vector(s, 3));
            const double radius = Length(Vector(s, 6));
            const double sine = Num(s, 12), cosine = Num(s, 13);
            CheckPerpendicular(s, Vector(s, 3), Vector(s, 6) * (1.0 / radius));
            if (Text(s, 9) != "1") Fault(s, "is no circular cone");
            if (std::fabs(Num(s, 14) - radius) > 1e-14 * radius)
                Fault(s, "has a u scale that is not its radius");
            if (cosine <= 0.0) Fault(s, "has a cosine that is not positive");
            if (std::fabs(std::hypot(sine, cosine) - 1.0) > 1e-12) Fault(s, "has no unit slope");
            if (sine != 0.0 && std::fabs(sine) < 1e-12) Fault(s, "has an apex at infinity");
            const Flat along{sign * cosine, sine};
            // Away from the axis.
            const Flat normal{-sign * sine, cosine};
            out = {sine == 0.0 ? "cylinder" : "cone", {x, radius}, 0.0, along, normal};
        } else if (name == "sphere-surface") {
            AxisSign(s, Vector(s, 7));
            CheckPerpendicular(s, Vector(s, 7), Vector(s, 4));
            out = {"sphere", {x, 0.0}, Num(s, 3), {}, {}};
        } else {
            AxisSign(s, Vector(s, 3));
            CheckPerpendicular(s, Vector(s, 3), Vector(s, 8));
            out = {"torus", {x, Num(s, 6)}, Num(s, 7), {}, {}};
            if (Num(s, 6) <= -Num(s, 7)) Fault(s, "is no torus: it nowhere reaches the axis");
        }
        if (!out.IsLine() && out.radius <= 0.0) Fault(s, "has a radius that is not positive");
        return out;
    }
    void CheckPerpendicular(int s, const Vec& a, const Vec& b) {
        CheckUnit(s, a);
        CheckUnit(s, b);
        if (std::fabs(Dot(a, b)) > 1e-10) Fault(s, "has directions that are not at right angles");
    }

    // Returns the number of loops; adds the face's share of volume and area.
    int Face(int face, double& volume) {
        ++out_.faces;
        const int s = Ref(face, 4, "surface");
        if (s < 0) return 0;
        if (!surfaces_.insert(s).second) Fault(face, "shares its surface");
        const Surface surface = ReadSurface(s);
        const std::string& sense = Text(face, 5);
        if (sense != "forward" && sense != "reversed") Fault(face, "has no sense");
        if (Text(face, 6) != "single") Fault(face, "is not single sided");
        const double sign = sense == "reversed" ? -1.0 : 1.0;
        out_.faceKinds.push_back((sign < 0.0 ? "-" : "") + surface.kind);
        std::vector<Circle> circles;
        std::vector<Flat> tips;
        int loops = 0;
        for (int loop = Ref(face, 1, "loop", true); loop >= 0; loop = Ref(loop, 0, "loop", true)) {
            ++loops;
            Back(loop, 2, face);
            Loop(loop, face, surface, circles, tips);
        }
        Meridian(face, surface, sign, circles, tips, volume);
        return loops;
    }

    void Loop(int loop, int face, const Surface& surface, std::vector<Circle>& circles,
              std::vector<Flat>& tips) {
        const int coedge = Ref(loop, 1, "coedge");
        if (coedge < 0) return;
        Back(coedge, 5, loop);
        if (Ref(coedge, 0, "coedge") != coedge || Ref(coedge, 1, "coedge") != coedge)
            Fault(coedge, "is not alone in its ring");
        const int edge = Ref(coedge, 3, "edge");
        if (edge < 0) return;
        ++edges_[edge];
        const int partner = Ref(coedge, 2, "coedge", true);
        const bool reversed = Text(coedge, 4) == "reversed";
        Flat at;
        if (!Edge(edge, coedge, at)) {
            if (partner >= 0) Fault(coedge, "of a tip has a partner");
            tips.push_back(at);
            if (surface.OffBy(at) > kTol) Fault(edge, "is a tip off its surface");
            return;
        }
        if (partner < 0 || Ref(partner, 2, "coedge") != coedge || Ref(partner, 3, "edge") != edge)
            Fault(coedge, "and its partner do not belong together");
        else {
            if ((Text(partner, 4) == "reversed") == reversed)
                Fault(coedge, "runs the same way as its partner");
            joints_.emplace_back(face, Ref(Ref(partner, 5, "loop"), 2, "face"));
        }
        if (surface.OffBy(at) > kTol) Fault(edge, "is a circle off the surface of its face");
        circles.push_back({at, edgeAlong_ != reversed});
    }

    // The circle's place in the half plane, or the tip's (false).
    bool Edge(int edge, int coedge, Flat& at) {
        const int vertex = Ref(edge, 0, "vertex"), end = Ref(edge, 2, "vertex");
        const int back = Ref(edge, 4, "coedge");
        if (vertex != end) Fault(edge, "is not closed");
        if (back < 0 || Text(back, 3) != "$" + std::to_string(edge))
            Fault(edge, "has no coedge of its own");
        if (Text(edge, 6) != "forward" || Text(edge, 7) != "@7" || Text(edge, 8) != "unknown")
            Fault(edge, "does not end as expected");
        Back(vertex, 0, edge);
        const int point = Ref(vertex, 1, "point");
        const Vec p = Vector(point, 0);
        const int curve = Ref(edge, 5, "ellipse-curve", true);
        const Vec q = p - origin_;
        const double x = Dot(q, axis_);
        at = {x, Length(q - axis_ * x)};
        if (curve < 0) {
            ++tipsSeen_[edge];
            out_.tips += tipsSeen_[edge] == 1;
            if (at.r > kTol) Fault(edge, "has no curve but is off the axis");
            if (back != coedge) Fault(edge, "is a tip of another loop");
            if (!(Num(edge, 1) > Num(edge, 3)))
                Fault(edge, "is a tip with a range that is not empty");
            return false;
        }
        out_.circles += circlesSeen_.insert(edge).second;
        const Vec centre = Vector(curve, 0), normal = Vector(curve, 3), major = Vector(curve, 6);
        const double radius = Length(major);
        CheckPerpendicular(curve, normal, major * (1.0 / radius));
        if (Text(curve, 9) != "1") Fault(curve, "is no circle");
        if (!IsOnAxis(centre)) Fault(curve, "is not centred on the axis");
        edgeAlong_ = AxisSign(curve, normal) > 0.0;
        if (Length(centre + major - p) > kTol) Fault(curve, "does not start at its vertex");
        if (Num(edge, 1) != 0.0 || std::fabs(Num(edge, 3) - 2.0 * kPi) > 1e-15)
            Fault(edge, "is not one full turn");
        at = {Along(centre), radius};
        return true;
    }

    // Walks from a circle to the other end of the face, in the direction that has the face on the
    // coedge's left, and integrates on the way.
    void Meridian(int face, const Surface& surface, double sign, const std::vector<Circle>& circles,
                  const std::vector<Flat>& tips, double& volume) {
        std::vector<Flat> ends;
        for (const Circle& c : circles) ends.push_back(c.at);
        for (const Flat& t : tips) ends.push_back(t);
        if (ends.size() > 2) return Fault(face, "has more than two loops");
        double share = 0.0, area = 0.0;
        if (circles.empty()) {
            FullTurn(face, surface, tips, share, area);
        } else {
            const Flat start = circles[0].at;
            const Flat into = Into(surface, sign, circles[0]);
            if (ends.size() == 1) ends.push_back(PoleFrom(face, surface, start, into));
            // Seen from the other circle, the face must lie towards the first one.
            Walk(face, surface, start, ends[1], into, share, area);
            if (circles.size() == 2) {
                const Flat back = Into(surface, sign, circles[1]);
                const Flat arriving =
                    surface.IsLine() ? into : Turned(surface, start, into, ends[1]);
                if (back.x * arriving.x + back.r * arriving.r > -0.99)
                    Fault(face, "does not lie left of both its loops");
            }
        }
        if (!(area > 0.0)) Fault(face, "has no area");
        volume += sign * share;
        out_.area += area;
    }

    // Left of travel: normal x tangent. A circle that runs right-handed about the axis has the
    // tangent axis x outward; in the half plane (x, r) the cross product with (nx, nr) is (nr, -nx)
    // for it: axis x (axis x out) = -out, out x (axis x out) = axis.
    static Flat Into(const Surface& surface, double sign, const Circle& circle) {
        const Flat n = surface.Normal(circle.at);
        const double s = circle.along ? sign : -sign;
        return {s * n.r, -s * n.x};
    }
    // Direction of travel on a meridian circle after it has come from start to another point.
    static Flat Turned(const Surface& surface, const Flat& start, const Flat& into,
                       const Flat& to) {
        const Flat n0 = surface.Normal(start), n1 = surface.Normal(to);
        const double turn = n0.x * into.r - n0.r * into.x;  // +1: counter-clockwise
        return {-turn * n1.r, turn * n1.x};
    }
    Flat PoleFrom(int face, const Surface& surface, const Flat& start, const Flat& into) {
        if (surface.kind == "plane") {
            if (into.r > 0.0) Fault(face, "is a plane that goes on without end");
            return {start.x, 0.0};
        }
        if (surface.kind != "sphere") {
            Fault(face, "lacks a loop");
            return start;
        }
        return {surface.centre.x + (into.x > 0.0 ? surface.radius : -surface.radius), 0.0};
    }

    void FullTurn(int face, const Surface& surface, const std::vector<Flat>& tips, double& share,
                  double& area) {
        if (surface.kind == "sphere" && tips.empty()) {
            const Flat a{surface.centre.x + surface.radius, 0.0};
            const Flat b{surface.centre.x - surface.radius, 0.0};
            return Walk(face, surface, a, b, {0.0, 1.0}, share, area);
        }
        if (surface.kind == "torus" && tips.size() == 2) {
            const Flat right = tips[0].x > tips[1].x ? tips[0] : tips[1];
            const Flat left = tips[0].x > tips[1].x ? tips[1] : tips[0];
            const Flat n = surface.Normal(right);
            return Walk(face, surface, right, left, {-n.r, n.x}, share, area);
        }
        Fault(face, "has no circle and is neither a sphere nor a spindle");
    }

    // share: integral of (r / 2) n_r over the face, whose sum over a closed shell is its volume.
    void Walk(int face, const Surface& surface, const Flat& a, const Flat& b, const Flat& into,
              double& share, double& area) {
        if (surface.IsLine()) {
            if ((b.x - a.x) * into.x + (b.r - a.r) * into.r <= 0.0)
                Fault(face, "lies on the wrong side of its loop");
            const double length = Distance(a, b);
            share = kPi * surface.lineNormal.r * length * (a.r * a.r + a.r * b.r + b.r * b.r) / 3.0;
            area = kPi * length * (a.r + b.r);
            if (surface.kind == "plane") area = kPi * std::fabs(a.r - b.r) * (a.r + b.r);
            return;
        }
        const Flat n = surface.Normal(a), m = surface.Normal(b);
        const double turn = n.x * into.r - n.r * into.x;
        double sweep = std::atan2(n.x * m.r - n.r * m.x, n.x * m.x + n.r * m.r);
        // By the chord where the difference of the directions has lost its digits.
        const double chord = Distance(a, b) / (2.0 * surface.radius);
        if (std::fabs(sweep) < 1e-2) sweep = std::copysign(2.0 * std::asin(chord), sweep);
        if (turn > 0.0 && sweep < 0.0) sweep += 2.0 * kPi;
        if (turn < 0.0 && sweep > 0.0) sweep -= 2.0 * kPi;
        constexpr int kPanels = 16;
        for (int i = 0; i < kPanels; ++i)
            Panel(surface, a, std::atan2(n.r, n.x), sweep * i / kPanels, sweep / kPanels, share,
                  area, face);
    }

    // Gauss-Legendre, five points; points of the arc by their difference from its start.
    void Panel(const Surface& surface, const Flat& a, double a0, double from, double width,
               double& share, double& area, int face) {
        static const double kNode[] = {0.0, 0.5384693101056831, -0.5384693101056831,
                                       0.9061798459386640, -0.9061798459386640};
        static const double kWeight[] = {0.5688888888888889, 0.4786286704993665, 0.4786286704993665,
                                         0.2369268850561891, 0.2369268850561891};
        for (int k = 0; k < 5; ++k) {
            const double phi = from + width * 0.5 * (1.0 + kNode[k]);
            const double r =
                a.r + 2.0 * surface.radius * std::sin(0.5 * phi) * std::cos(a0 + 0.5 * phi);
            if (r < -kTol) return Fault(face, "crosses the axis");
            const double ds = surface.radius * std::fabs(width) * 0.5 * kWeight[k];
            share += kPi * r * r * std::sin(a0 + phi) * ds;
            area += 2.0 * kPi * r * ds;
        }
    }

    const File& f_;
    Audit out_;
    std::vector<int> faces_;
    std::map<int, int> edges_, tipsSeen_;
    std::set<int> reached_, surfaces_, circlesSeen_;
    std::vector<std::pair<int, int>> joints_;
    bool hasAxis_ = false, edgeAlong_ = true;
    Vec origin_, axis_;
};

}  // namespace

std::string Parse(const std::string& text, File& file) {
    std::istringstream in(text);
    std::string line, word;
    if (!std::getline(in, line)) return "empty";
    std::istringstream first(line);
    std::string records, flags;
    first >> file.version >> records >> file.counts >> flags;
    if (flags != "0") return "bad first line";
    std::getline(in, line);
    for (std::string* part : {&file.product, &file.modeller, &file.date}) {
        std::size_t used = 0;
        const std::size_t length = std::stoul(line, &used);
        if (line.size() < used + 1 + length) return "a counted string is too short";
        *part = line.substr(used + 1, length);
        line.erase(0, (std::min)(line.size(), used + 1 + length + 1));
    }
    if (!line.empty()) return "more than three strings in the second line";
    std::getline(in, line);
    std::istringstream third(line);
    double position = 0, direction = 0;
    third >> file.millimetresPerUnit >> position >> direction;
    if (position != 1e-6 || direction != 1e-10) return "bad tolerances";
    const std::size_t skip = file.version == "700" ? 3 : 1;
    bool ended = false;
    while (std::getline(in, line)) {
        if (ended) return "text behind the end";
        if (line == "End-of-ACIS-data") {
            ended = true;
            continue;
        }
        std::istringstream words(line);
        Record record;
        words >> record.name;
        while (words >> word) record.fields.push_back(word);
        if (record.fields.size() < skip + 1 || record.fields.back() != "#")
            return "not a record: " + line;
        record.fields.pop_back();
        if (skip == 3 &&
            (record.fields[0] != "$-1" || record.fields[1] != "-1" || record.fields[2] != "$-1"))
            return "bad common fields: " + line;
        record.fields.erase(record.fields.begin(),
                            record.fields.begin() + static_cast<std::ptrdiff_t>(skip));
        file.records.push_back(record);
    }
    if (!ended || text.back() != '\n') return "no end line";
    for (const Record& record : file.records)
        for (const std::string& field : record.fields) {
            if (field == "nan" || field == "-nan" || field == "inf" || field == "-inf")
                return "no finite number";
            if (field[0] == '$' &&
                std::atoi(field.c_str() + 1) >= static_cast<int>(file.records.size()))
                return "pointer behind the end";
        }
    return {};
}

Audit Check(const File& file) { return Auditor(file).Run(); }

}  // namespace sat
