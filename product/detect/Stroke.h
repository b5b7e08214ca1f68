// What the search for tools sees of a sheet: strokes, texts and filled heads of arrows.
//
// Words used throughout this room:
//   stroke     one line or arc of the drawing, blocks taken apart
//   note       what explains the tool and is no part of it: dimensions, leaders, tables, borders
//   component  strokes that touch one another
//   frame of an axis  s along the axis, r to its left; the sheet turned so that the axis is level
//   candidate  an axis and the components that would be a tool about it
#pragma once

#include <array>
#include <string>
#include <vector>

#include "plane/curve.h"
#include "product/base/Outline.h"

namespace product::detect {

enum class StrokeKind {
    Contour,  // drawn full
    Centre,   // drawn with the line type of centre lines
    Hidden,   // dashed, dotted and the like
};

struct Stroke {
    std::vector<Point> points;         // two of a line; arcs by chords of at most 10 degrees
    std::vector<plane::Curve> curves;  // what the points stand for, as it is drawn; not turned
    bool isArc = false;
    bool isFullCircle = false;
    Point centre;  // of an arc
    double radius = 0;
    StrokeKind kind = StrokeKind::Contour;
    int entity = 0;  // index of the picked entity that it is or came from

    Point From() const { return points.front(); }
    Point To() const { return points.back(); }
    bool IsLine() const { return !isArc && points.size() == 2; }
    double Length() const;
};

// A text with the place and the height of its letters; angle in radians.
struct NoteText {
    Point at;  // its middle
    double height = 0;
    double halfLength = 0;  // from its middle to its ends
    double angle = 0;
    bool isNumber = false;  // what a dimension shows: digits with signs, units and tolerances
};

// A filled triangle, as heads of arrows are drawn.
struct ArrowHead {
    Point tip, back;  // back: the middle of the side opposite
};

struct Sheet {
    std::vector<Stroke> strokes;
    std::vector<NoteText> texts;
    std::vector<ArrowHead> heads;
    Box box;  // of the strokes
};

Box BoxOf(const Stroke& stroke);
double Diagonal(const Box& box);

// A turn about a point: into a frame whose first axis has that direction, and back.
class Frame {
public:
    Frame() = default;
    Frame(Point origin, double angle);
    // A quarter turn on, without rounding.
    Frame Squarely() const;
    Point In(Point p) const;
    Point Out(Point p) const;
    double Angle() const { return m_angle; }

private:
    Point m_origin;
    double m_angle = 0, m_cos = 1, m_sin = 0;
};

// The whole sheet in a frame.
Sheet Turned(const Sheet& sheet, const Frame& frame);

}  // namespace product::detect
