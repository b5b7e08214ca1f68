// An axis and what would be a tool about it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "product/detect/Components.h"
#include "product/detect/Hangers.h"
#include "product/detect/Stroke.h"

namespace product::detect {

// What speaks for a line as an axis.
enum class AxisCue {
    CentreLine,  // drawn with the line type of centre lines
    FullLine,    // drawn full, through both ends
    Mirror,      // the contour is its own mirror image in it
    Foot,        // a half profile stands on it
};
// "centre line", "line through both ends", "mirror symmetry", "foot of a half profile".
const char* NameOf(AxisCue cue);

// In the frame of the search: the axis is level, at r = offset.
struct Candidate {
    double offset = 0;
    double start = 0, end = 0;  // of the components along the axis
    AxisCue cue = AxisCue::Mirror;
    std::vector<int> components;  // what the tool consists of
    double radius = 0;            // greatest distance from the axis
    double agreement = 0;         // share of places at which both halves reach the same height
    bool isHalf = false;          // one side of the axis is empty
    bool reachesStart = false, reachesEnd = false;  // something comes to the axis there
    bool nearAxis = false;                          // something comes near the axis anywhere
    double cover = 0;      // share of the length over which something is drawn
    double lineCover = 0;  // share of the length that the line of the cue runs along
    double foot = 0;       // share of the length along which a full line lies on the axis
    size_t strokeCount = 0;
    bool openEnds = false;  // a half's two free ends lie on the axis
    bool isPlain = false;   // of one height all along
    // Alike from both ends: what would stand on its foot is rather a whole tool seen from the side.
    double turnedRound = 0;
    std::optional<Point> standing;  // of half a contour: what stands on a line that runs on below
    bool hasPeak = false;           // something that was left out hangs on a peak of the contour
    size_t endViews = 0;            // full circles about the axis beyond its ends
    size_t holes = 0;               // full circles on the contour off the axis
    std::vector<int> floating;      // components outside of the contour, that are none of the tool
    std::vector<int> hanging;       // of the level sheet's hangers, those that are none of the tool
    double score = 0;
    std::string why;  // what weighed against it

    double Length() const { return end - start; }
};

// What the candidates of one direction are made from.
struct LevelSheet {
    Sheet sheet;                        // turned
    std::vector<Component> components;  // of the turned sheet's contour, notes left out
    std::vector<Hanger> hangers;        // on these components
    double tolerance = 0;               // drawing units
};

// Every line that one of the cues speaks for, with its components and measures; not judged yet.
//
// cost  O(n log n + c n) for c lines, of which there are at most sixty-four
std::vector<Candidate> FindCandidates(const LevelSheet& level);

}  // namespace product::detect
