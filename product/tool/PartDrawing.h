// Parts and profiles as entities: in the drawing itself, and as a drawing of their own.
#pragma once

#include <string>
#include <vector>

#include "arxHeaders.h"
#include "host/solid/profile.h"
#include "product/base/Outline.h"

namespace product {

// Layers of the two parts, here and in drawings by others.
constexpr const ACHAR* kCutLayer = _T("CUT");
constexpr const ACHAR* kRestLayer = _T("NOCUT");
// The profile of a tool that is not split, in a drawing of its own.
constexpr const ACHAR* kProfileLayer = _T("PROFILE");

// Whether an entity on a layer of the parts is one that DrawPart() drew: contours by others are
// never replaced.
bool IsOwnPart(const AcDbEntity& entity);

// Puts the closed ring of a part on its layer, marked as drawn here. The layer is made when missing
// (CUT yellow, NOCUT grey), thawed, unlocked and switched on.
//
// result  the polyline's handle; the drawing is the working database
// fails   Failure with NoResult when it cannot be drawn
std::string DrawPart(const std::vector<Vertex>& ring, const ACHAR* layer);

struct ProfilePart {
    const host::solid::Profile* profile = nullptr;
    const ACHAR* layer = nullptr;
};

// Writes a drawing that holds nothing but the closed profiles, where their frames say: of a tool
// along z they stand upright, in the plane of x and z. R2018, in the unit given.
//
// fails  Failure with Output when the file cannot be written; the text ends with --profile or the
//        place that is given
void WriteProfile(const std::string& path, const std::vector<ProfilePart>& parts,
                  AcDb::UnitsValue units, const char* place);

}  // namespace product
