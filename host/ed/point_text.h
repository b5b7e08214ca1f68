// Points as they are typed.
#pragma once

#include <string>

#include "gepnt3d.h"

namespace host {

// Reads a point in drawing units: "x,y", "x,y,z", or "distance<angle" with degrees from the x axis,
// counter-clockwise; "@" in front counts from the reference. No blanks.
// point  unchanged when the text is none of these
bool ParsePoint(const std::wstring& text, const AcGePoint3d& reference, AcGePoint3d& point);

// At most six decimals, without zeros at the end, with a decimal point in every language.
std::wstring NumberText(double value);
// "x,y".
std::wstring PointText(const AcGePoint3d& point);

}  // namespace host
