// The table behind selection-set names.
#pragma once

#include <memory>
#include <vector>

#include "adsdef.h"
#include "dbid.h"

namespace host {

// Most sets at a time.
constexpr int kMaxSelectionSets = 128;

using SelectionSet = std::vector<AcDbObjectId>;

// Makes a set and its name; false when all are in use.
bool NewSelectionSet(SelectionSet entities, ads_name name);
// Null for a name that is no set's.
SelectionSet* FindSelectionSet(const ads_name name);
bool FreeSelectionSet(const ads_name name);  // false for a name that is no set's
int SelectionSetCount();                     // in use now

}  // namespace host
