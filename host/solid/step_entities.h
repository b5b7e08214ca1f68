// The text of a STEP file, entity by entity.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "host/solid/profile.h"

namespace host::solid {

// The shortest text that reads back as the same double, with the point that the format wants:
// "0.", "12.5", "1.E-07".
std::string StepReal(double value);

// Numbers the entities in the order in which they are written, each behind those it refers to.
class StepEntities {
public:
    // factor  from the numbers given to those of the file; for places and lengths
    StepEntities(double factor, std::size_t expectedSize) : factor_(factor) {
        text_.reserve(expectedSize);
    }

    // Begin("LINE").Word("''").Ref(3).Ref(4).End() gives the entity's number.
    // One entity, put together argument by argument; End() gives its number.
    StepEntities& Begin(const char* type);
    StepEntities& Word(const char* word);                  // as it stands
    StepEntities& Ref(int entity);                         // "#12"
    StepEntities& Refs(const std::vector<int>& entities);  // "(#1,#2)"
    StepEntities& Number(double value);                    // not scaled
    StepEntities& Length(double value) { return Number(value * factor_); }
    int End();
    // An entity of several types, its text between the brackets.
    int Complex(const std::string& types);

    // Entities by their kinds; each gives its number. Places and lengths are scaled.
    int Point(const AcGePoint3d& point);
    int Direction(const AcGeVector3d& vector);       // made unit
    int Placement(int origin, int axis, int first);  // axis and first direction at a point
    int Vertex(const AcGePoint3d& point);
    int Line(const AcGePoint3d& from, const AcGePoint3d& to);
    int Circle(int placement, double radius);
    // An arc of a profile as a rational spline, exactly the same points.
    int Arc(const Frame& frame, const Piece& arc);
    int Edge(int from, int to, int curve);  // between two vertices on a curve
    int Oriented(int edge, bool forward);   // forward: as its curve runs
    // sameSense: outside where the surface says
    int Face(const std::vector<int>& bounds, int surface, bool sameSense);

    void Text(const std::string& text) { text_ += text; }
    // Ends the file and gives it away.
    std::string Finish();

private:
    void Comma();  // between arguments
    void Triple(double x, double y, double z);

    double factor_;
    std::string text_;
    int count_ = 0;
    bool first_ = true;
};

}  // namespace host::solid
