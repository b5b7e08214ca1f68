// A drawing as shapes of the plane, ready to be put into a vector picture.
#pragma once

#include <string>
#include <vector>

#include "product/base/Outline.h"

namespace product {

// x' = a x + c y + e, y' = b x + d y + f.
struct Affine {
    double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

    Point operator()(Point p) const { return {a * p.x + c * p.y + e, b * p.x + d * p.y + f}; }
};

struct PathStep {
    enum Kind { Move, Line, Arc, Cubic, Close } kind = Move;
    Point to;
    Point control1, control2;         // Cubic
    double radiusX = 0, radiusY = 0;  // Arc
    double turn = 0;                  // Arc: radians from the x axis to radiusX
    bool large = false, ccw = false;  // Arc
};

class Path {
public:
    void MoveTo(Point p);
    void LineTo(Point p);
    // Along a circle or an ellipse to p.
    void ArcTo(Point p, double radiusX, double radiusY, double turn, bool large, bool ccw);
    void CubicTo(Point control1, Point control2, Point p);
    void Close();
    // Straight edges and arcs through the corners.
    void AddRing(const std::vector<Vertex>& vertices, bool closed);
    // The part of an ellipse from one parameter to another, counter-clockwise; a full one when they
    // are 2π apart. `place` maps the unit circle's plane: centre at (e, f), axes (a, b) and (c, d),
    // which must be perpendicular.
    void AddEllipse(const Affine& place, double from, double to);

    const std::vector<PathStep>& Steps() const { return m_steps; }
    bool IsEmpty() const { return m_steps.empty(); }

private:
    std::vector<PathStep> m_steps;
};

enum class Ink { Outline, Dashed, Centre, Dimension, Solid, Hatch };

struct Shape {
    enum Kind { Stroke, Label, BlockUse } kind = Stroke;
    Ink ink = Ink::Outline;
    Path path;              // Stroke
    std::string text;       // Label, UTF-8, one line
    double textHeight = 0;  // Label: height of capitals, drawing units
    int anchor = 0;         // Label: 0 begins, 1 is centred at, 2 ends at its place
    int block = -1;         // BlockUse
    Affine place;           // Label: baseline origin, x along the text, y up. BlockUse
};

// A numbered place to look at.
struct Mark {
    Point at;
    std::string label;
};

// A closed contour with its filling.
struct FilledRing {
    std::vector<Vertex> ring;
    unsigned rgb = 0;  // 0xRRGGBB
};

struct Picture {
    std::vector<Shape> shapes;
    std::vector<std::vector<Shape>> blocks;  // named by index, for Shape::block
    std::vector<Vertex> envelope;            // empty: none
    std::vector<FilledRing> parts;           // of the envelope, in their colours
    bool hasAxis = false;
    Point axisFrom, axisTo;
    bool hasWindow = false;
    Box window;
    Box view;                     // what is to be seen
    std::vector<Box> dimensions;  // extents of the dimensions among the shapes
    std::vector<Mark> marks;
    std::string title;
    // A picture to stand below, a PNG file; empty: none.
    std::string below;
    int belowWidth = 0, belowHeight = 0;
};

// The picture as an SVG document: y upwards, hairlines that keep their width at any scale, true
// arcs and curves. Coordinates are written relative to the middle of the view, for viewers
// calculate with few digits.
std::string ToSvg(const Picture& picture);

// The same as an element to stand in a page, which brings SvgStyle(): no size of its own, and the
// prefix, a letter and digits, keeps its names apart from those of other pictures there.
std::string ToSvgElement(const Picture& picture, const std::string& prefix);

// The look of the picture's classes.
const char* SvgStyle();

// RFC 4648.
std::string Base64(const std::string& bytes);
// The bytes again; what is no digit of it is passed over.
std::string FromBase64(const std::string& text);

}  // namespace product
