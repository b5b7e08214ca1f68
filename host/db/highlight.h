// Which entities are highlighted on the screen, in all drawings.
#pragma once

#include <functional>
#include <unordered_set>

#include "dbid.h"

namespace host {

void SetHighlighted(AcDbObjectId id, bool isHighlighted);
// Of drawings that are open and of such as were; ask the identifier.
const std::unordered_set<AcDbObjectId>& HighlightedEntities();
// Counts the changes.
unsigned HighlightRevision();
// Called after each change; one at a time, empty for none.
void SetHighlightSink(std::function<void()> sink);

}  // namespace host
