#include "host/solid/step_entities.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <complex>
#include <utility>

namespace host::solid {

namespace {

void AppendReal(double value, std::string& out) {
    char digits[32];
    value += 0.0;  // no negative zero
    const char* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    bool pointed = false;
    for (const char* c = digits; c != end; ++c) {
        pointed = pointed || *c == '.';
        if (*c == 'e') {
            if (!pointed) out += '.';
            pointed = true;
            out += 'E';
        } else {
            out += *c;
        }
    }
    if (!pointed) out += '.';
}

void AppendInt(int value, std::string& out) {
    char digits[16];
    out.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

}  // namespace

std::string StepReal(double value) {
    std::string text;
    AppendReal(value, text);
    return text;
}

void StepEntities::Comma() {
    if (!first_) text_ += ',';
    first_ = false;
}

StepEntities& StepEntities::Begin(const char* type) {
    text_ += '#';
    AppendInt(++count_, text_);
    text_ += '=';
    text_ += type;
    text_ += '(';
    first_ = true;
    return *this;
}

StepEntities& StepEntities::Word(const char* word) {
    Comma();
    text_ += word;
    return *this;
}

StepEntities& StepEntities::Ref(int entity) {
    Comma();
    text_ += '#';
    AppendInt(entity, text_);
    return *this;
}

StepEntities& StepEntities::Refs(const std::vector<int>& entities) {
    Comma();
    text_ += '(';
    first_ = true;
    for (const int entity : entities) Ref(entity);
    text_ += ')';
    return *this;
}

StepEntities& StepEntities::Number(double value) {
    Comma();
    AppendReal(value, text_);
    return *this;
}

int StepEntities::End() {
    text_ += ");\n";
    return count_;
}

int StepEntities::Complex(const std::string& types) {
    text_ += '#';
    AppendInt(++count_, text_);
    text_ += "=(" + types + ");\n";
    return count_;
}

void StepEntities::Triple(double x, double y, double z) {
    Word("''");
    text_ += ",(";
    first_ = true;
    Number(x).Number(y).Number(z);
    text_ += ')';
}

int StepEntities::Point(const AcGePoint3d& point) {
    Begin("CARTESIAN_POINT");
    Triple(point.x * factor_, point.y * factor_, point.z * factor_);
    return End();
}

int StepEntities::Direction(const AcGeVector3d& vector) {
    const double length = vector.length();
    Begin("DIRECTION");
    Triple(vector.x / length, vector.y / length, vector.z / length);
    return End();
}

int StepEntities::Placement(int origin, int axis, int first) {
    return Begin("AXIS2_PLACEMENT_3D").Word("''").Ref(origin).Ref(axis).Ref(first).End();
}

int StepEntities::Vertex(const AcGePoint3d& point) {
    const int place = Point(point);
    return Begin("VERTEX_POINT").Word("''").Ref(place).End();
}

int StepEntities::Line(const AcGePoint3d& from, const AcGePoint3d& to) {
    const int start = Point(from), direction = Direction(to - from);
    const int vector = Begin("VECTOR").Word("''").Ref(direction).Word("1.").End();
    return Begin("LINE").Word("''").Ref(start).Ref(vector).End();
}

int StepEntities::Circle(int placement, double radius) {
    return Begin("CIRCLE").Word("''").Ref(placement).Length(radius).End();
}

// A point of the unit circle is z / conj(z) for any z that has half its angle. Here z runs along
// the usual cubic that goes nearly round, at nearly even speed, so that readers who integrate
// numerically do it well: the numerator z z and the denominator z conj(z) are of degree 6, in one
// span.
int StepEntities::Arc(const Frame& frame, const Piece& arc) {
    using Turn = std::complex<double>;
    constexpr int kHalf = 3, kDegree = 6;
    constexpr double kBinomial[] = {1, 3, 3, 1}, kBinomial6[] = {1, 6, 15, 20, 15, 6, 1};
    const double angle = 2.0 * std::atan(arc.bulge);  // half the swept one
    const double pull = 4.0 / 3.0 * std::tan(angle / 4.0);
    const Turn last = std::polar(1.0, angle);
    const Turn z[] = {1.0, Turn(1.0, pull), last * Turn(1.0, -pull), last};
    const Turn start(arc.from.x - arc.centre.x, arc.from.y - arc.centre.y);
    std::vector<int> poles;
    std::string weights;
    for (int j = 0; j <= kDegree; ++j) {
        Turn numerator = 0.0;
        double weight = 0.0;
        for (int i = (std::max)(0, j - kHalf); i <= (std::min)(kHalf, j); ++i) {
            const double share = kBinomial[i] * kBinomial[j - i] / kBinomial6[j];
            numerator += share * z[i] * z[j - i];
            weight += share * (z[i] * std::conj(z[j - i])).real();
        }
        const Turn from = start * numerator / weight;
        plane::Point pole{arc.centre.x + from.real(), arc.centre.y + from.imag()};
        if (j == 0 || j == kDegree) pole = j == 0 ? arc.from : arc.to;
        poles.push_back(Point(frame.At(pole)));
        weights += (j == 0 ? "" : ",") + StepReal(j == kDegree ? 1.0 : weight);
    }
    std::string list;
    for (const int pole : poles) list += (list.empty() ? "#" : ",#") + std::to_string(pole);
    return Complex("BOUNDED_CURVE()B_SPLINE_CURVE(6,(" + list +
                   "),.UNSPECIFIED.,.F.,.F.)B_SPLINE_CURVE_WITH_KNOTS((7,7),(0.,1.),.UNSPECIFIED.)"
                   "CURVE()GEOMETRIC_REPRESENTATION_ITEM()RATIONAL_B_SPLINE_CURVE((" +
                   weights + "))REPRESENTATION_ITEM('')");
}

int StepEntities::Edge(int from, int to, int curve) {
    return Begin("EDGE_CURVE").Word("''").Ref(from).Ref(to).Ref(curve).Word(".T.").End();
}

int StepEntities::Oriented(int edge, bool forward) {
    return Begin("ORIENTED_EDGE").Word("'',*,*").Ref(edge).Word(forward ? ".T." : ".F.").End();
}

int StepEntities::Face(const std::vector<int>& bounds, int surface, bool sameSense) {
    return Begin("ADVANCED_FACE")
        .Word("''")
        .Refs(bounds)
        .Ref(surface)
        .Word(sameSense ? ".T." : ".F.")
        .End();
}

std::string StepEntities::Finish() {
    text_ += "ENDSEC;\nEND-ISO-10303-21;\n";
    return std::move(text_);
}

}  // namespace host::solid
