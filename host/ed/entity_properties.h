// What an entity is like, by name and as text: for the command that changes it and for panels.
#pragma once

#include <string>
#include <vector>

#include "dbmain.h"

namespace host {

struct EntityProperty {
    const wchar_t* name;  // as typed, its capitals are enough: "LAyer", "Radius"
    std::wstring value;
    bool mayChange = true;
};

// The properties of an entity that is open, what it is drawn with first, then its geometry.
// Points are "x,y", angles degrees, lengths drawing units.
std::vector<EntityProperty> PropertiesOf(const AcDbEntity& entity);

// Changes one. The entity is open for write.
// name    as in PropertiesOf, in capitals
// value   as typed; a layer, linetype or color by its name or number, "BYLAYER" where that has
// sense result  eInvalidInput for what is no such value, eNotApplicable for a property that the
// entity
//         does not have, eKeyNotFound for a layer or linetype that the drawing does not have
Acad::ErrorStatus SetProperty(AcDbEntity& entity, const std::wstring& name,
                              const std::wstring& value);

// The names of all properties that can be changed, as keywords.
std::vector<std::wstring> PropertyKeywords();

}  // namespace host
