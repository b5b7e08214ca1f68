// Marks beside a contour: letters in boxes and circles with what leads from them, and angles.
#pragma once

#include <vector>

#include "product/detect/Heads.h"
#include "product/detect/Notes.h"

namespace product::detect {

// A sheet and what is known of its notes so far.
struct NoteSheet {
    const Sheet& sheet;
    double tolerance;  // drawing units
    const NearLines& lines;
    std::vector<NoteKind>& kinds;  // by stroke

    void Mark(int stroke, NoteKind kind) {
        if (kinds[stroke] == NoteKind::None) kinds[stroke] = kind;
    }
};

// Marks what goes on from a leader's end, as far as one line follows the other, and a triangle at
// the last one's end.
void FollowLeader(NoteSheet& notes, int from, Point end);

// Rectangles close around texts, alone or several in a row, and small circles around a text, with
// the lines that lead from them. Such a rectangle belongs to nothing else: no more than one line
// comes to its corners.
//
// cost  O(t m) for t texts and m strokes near one
void MarkLetters(NoteSheet& notes);

// Arcs with a number or two heads between two lines that point to their centre, and these lines
// when nothing goes on at their ends.
void MarkAngles(NoteSheet& notes, const std::vector<LineHeads>& heads);

}  // namespace product::detect
