#include "product/detect/Judge.h"

#include <algorithm>

namespace product::detect {
namespace {

constexpr double kSymbolHeights = 5;  // heights of letters: no smaller tool could be read

void Against(Candidate& candidate, double weight, const char* why) {
    candidate.score -= weight;
    if (!candidate.why.empty()) candidate.why += ", ";
    candidate.why += why;
}

void WeighLine(Candidate& candidate) {
    if (candidate.cue == AxisCue::CentreLine) {
        if (candidate.lineCover >= 0.8)
            candidate.score += 0.45;
        else if (candidate.lineCover >= 0.4)
            candidate.score += 0.25;
        else
            Against(candidate, 0, "the centre line covers only a part");
    } else if (candidate.cue == AxisCue::FullLine) {
        candidate.score += 0.25;
    }
}

void WeighHalves(Candidate& candidate) {
    if (candidate.isHalf) {
        const bool isDrawn = (candidate.cue == AxisCue::CentreLine && candidate.lineCover >= 0.8) ||
                             candidate.cue == AxisCue::FullLine;
        if (isDrawn || (candidate.openEnds && candidate.foot < 0.1))
            candidate.score += 0.35;
        else if (candidate.foot > 0.9)
            candidate.score += 0.3;
        // So does a whole tool on its face; no half of one is the same from both its ends.
        if (!isDrawn && candidate.turnedRound >= 0.8)
            Against(candidate, 0.3,
                    "it is the same from both ends, as a whole tool on its face is");
        // Every closed shape stands on each of its sides; half a tool lies on its long one.
        if (!isDrawn && candidate.Length() < 2 * candidate.radius)
            Against(candidate, 0.2, "it would stand on its short side");
        return;
    }
    if (candidate.agreement >= 0.97)
        candidate.score += 0.35;
    else if (candidate.agreement >= 0.6 && candidate.reachesStart && candidate.reachesEnd)
        // Threads and single inserts: the rest of the contour says where the middle is.
        candidate.score += 0.3;
    else if (candidate.agreement >= 0.9)
        candidate.score += 0.25;
    else if (candidate.agreement >= 0.7)
        candidate.score += 0.12;
    else
        Against(candidate, 0.1, "its halves differ");
}

void WeighPlace(Candidate& candidate) {
    if (!candidate.nearAxis)
        Against(candidate, 0.6, "nothing comes near the line: it lies between two views");
    else if (!candidate.reachesStart && !candidate.reachesEnd)
        Against(candidate, 0.35, "the contour does not come to the line");
    else if (candidate.reachesStart && candidate.reachesEnd)
        candidate.score += 0.1;
    if (candidate.cover < 0.7) Against(candidate, 0.2, "much of its length is empty");
}

void WeighShape(Candidate& candidate, double greatest) {
    const double slender = candidate.Length() / (2 * candidate.radius);
    if (slender >= 1.2)
        candidate.score += 0.1;
    else if (slender < 0.5)
        candidate.score -= 0.1;
    const double share = candidate.Length() / std::max(greatest, 1e-300);
    if (share < 0.03)
        Against(candidate, 0.4, "far smaller than what else is drawn");
    else if (share < 0.08)
        Against(candidate, 0.15, "much smaller than what else is drawn");
    else
        candidate.score += 0.1 * std::min(1.0, 5 * share);
}

// Symbols of title blocks, letters in frames, plates seen from the front, views of flat things.
void WeighSymbol(Candidate& candidate, double greatest, double letters) {
    if (candidate.Length() < kSymbolHeights * letters && candidate.Length() < 0.35 * greatest)
        Against(candidate, 0.5, "no larger than a symbol beside the sheet's letters");
    if (candidate.isPlain) Against(candidate, 0.1, "no more than a rectangle");
    if (candidate.strokeCount <= 6 && candidate.endViews >= 2 && !candidate.isPlain)
        Against(candidate, 0.3, "it may be the symbol of the projection");
    if (candidate.hasPeak) Against(candidate, 0, "a mark may stand on its contour");
    if (candidate.holes >= 3) Against(candidate, 0.3, "several circles lie off the line");
}

}  // namespace

void Judge(Candidate& candidate, double greatest, double letters) {
    candidate.score = 0;
    candidate.why.clear();
    WeighLine(candidate);
    WeighHalves(candidate);
    WeighPlace(candidate);
    WeighShape(candidate, greatest);
    WeighSymbol(candidate, greatest, letters);
    candidate.score = std::clamp(candidate.score, 0.0, 1.0);
}

}  // namespace product::detect
