// From where the pointer is to the point that is meant: object snap, ortho, polar and the grid.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "host/ed/object_snap.h"

namespace app {

// What a click would give.
struct Aim {
    AcGePoint3d point;
    std::optional<host::Snap> snap;
    std::wstring label;    // what the point is, for the tooltip; empty: just where the pointer is
    bool isOnRay = false;  // drawn from the base through the point
};

class PointAid {
public:
    using Sources = std::function<std::vector<const host::SnapSource*>(const AcGePoint3d&, double)>;

    unsigned modes = host::kSnapUsual;
    bool isSnapping = true;
    bool isOrtho = false;
    bool isPolar = true;
    bool isOnGrid = false;
    double gridStep = 10.0;
    double polarStep = 15.0;  // degrees

    // For the next point only; 0: no snap at all; nothing: as set.
    std::optional<unsigned> once;

    // sources   entities near a place, within a distance
    // aperture  how far the pointer may be off, drawing units
    // base      what ortho and polar go by; null: neither
    Aim At(const AcGePoint3d& pointer, double aperture, const AcGePoint3d* base,
           const Sources& sources);
    // The next of the points found at the last place.
    void Cycle() { ++m_cycle; }
    // A prompt begins or ends.
    void Reset();

private:
    AcGePoint3d m_lastPointer;
    size_t m_cycle = 0;
};

// "END", "nea", "none" typed at a prompt for a point: the modes meant; nothing for other words.
std::optional<unsigned> ParseSnapWord(const std::wstring& word);

}  // namespace app
