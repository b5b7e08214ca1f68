// What a catalogue says of a tool's shape, as far as its profile tells.
#pragma once

#include <optional>

#include "host/solid/profile.h"

namespace product {

// Lengths in drawing units, angles in degrees. What the profile does not tell stays empty: nothing
// is guessed. Symbols of ISO 13399 in brackets.
struct ToolFigures {
    std::optional<double> tipDiameter;      // [DC] of the first cylinder behind the tip
    std::optional<double> cuttingDiameter;  // [DCX] the greatest of the cutting part
    std::optional<double> greatestDiameter;
    std::optional<double> overallLength;  // [OAL]
    std::optional<double> cuttingLength;  // [LCF] of a tool that is split
    std::optional<double> usableLength;   // [LU] from the tip to the first diameter above DC
    std::optional<double> neckDiameter;   // [DN] of the smaller cylinder between cutting part and
    std::optional<double> neckLength;     //      shank
    std::optional<double> shankDiameter;  // [DMM] of the last cylinder at the machine's end
    std::optional<double> shankLength;    // [LS] with its chamfer
    std::optional<double> cornerRadius;   // [RE] of the arc into the first cylinder
    std::optional<double> chamferWidth;   // [CHW] of the line that does so, across the axis
    std::optional<double> chamferAngle;   // [KCH] its angle to the axis
    std::optional<double> pointAngle;     // [SIG] of the cone at the tip
    std::optional<double> pointLength;    // [PL]
    std::optional<double> volume, cuttingVolume;
};

// What is asked of a profile.
struct FigureRequest {
    bool isTipHigh = true;
    bool isTipSure = false;  // without it nothing that depends on the tip is told
    const host::solid::Profile* cut = nullptr;  // the cutting part; null: not split
};

// The figures of a profile; a corner within kPositionTol of another's height has it.
// cost  O(pieces)
ToolFigures FiguresOf(const host::solid::Profile& profile, const FigureRequest& request);

}  // namespace product
