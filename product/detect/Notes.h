// What on a sheet explains the tool and is no part of it.
#pragma once

#include <vector>

#include "product/detect/Components.h"
#include "product/detect/Stroke.h"

namespace product::detect {

enum class NoteKind { None, Dimension, Leader, Border, Table };

// For each stroke what kind of note it is; the sheet must stand upright, its main direction level.
//
// Dimension  a line with heads of arrows at both ends, filled, open or ticks, or with a number in
//            its middle and lines square to it at both ends; and those lines, when nothing goes on
//            behind the end that stands beside it; the same of angles
// Leader     a line with one head, and the lines that go on from it to nothing; boxes and circles
//            around letters, and what leads from them
// Border     what encloses most of the rest with level and upright lines alone and holds texts, or
//            something that does not lie in its middle; and what is inside it and joined to it
// Table      level and upright lines alone, with texts in several of their cells
//
// tolerance  drawing units: points closer are one
// cost       O(n log n + t n) for t texts and heads, the second factor those strokes that are near
std::vector<NoteKind> FindNotes(const Sheet& sheet, double tolerance);

}  // namespace product::detect
