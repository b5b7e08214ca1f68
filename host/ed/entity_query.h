// Finding entities of a drawing: what is displayed, what can be picked, what lies in a rectangle,
// what meets a filter.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "acedads.h"
#include "dbid.h"
#include "gepnt3d.h"

class AcApDocument;
class AcDbDatabase;
class AcDbEntity;

namespace host {

// What takes an entity out of a query.
struct QueryRules {
    bool skipFrozen = false;     // on a frozen layer
    bool skipLocked = false;     // on a locked one
    bool skipOff = false;        // on one that is off
    bool skipInvisible = false;  // by its own switch
    bool allSpaces = false;      // every layout, not only the current space

    // What the screen shows; what the selection by "A" takes; what "X" takes.
    static QueryRules Displayed() { return {true, false, true, true, false}; }
    static QueryRules ModeAll() { return {true, true, false, false, false}; }
    static QueryRules WholeDrawing() { return {false, false, false, false, true}; }
};

// Entities in the order of the drawing. O(entities).
std::vector<AcDbObjectId> QueryEntities(AcDbDatabase& database, const QueryRules& rules);

// Whether one entity passes; false when it cannot be opened.
bool MeetsRules(AcDbObjectId id, const QueryRules& rules);

// The newest displayed entity, or none.
std::vector<AcDbObjectId> LastDisplayed(const AcApDocument& document);

// Displayed entities that lie wholly inside the rectangle of the two corners (window), or that
// touch it as well (crossing: by the curves themselves, for other entities by their extents).
std::vector<AcDbObjectId> QueryRectangle(AcDbDatabase& database, const AcGePoint3d& corner1,
                                         const AcGePoint3d& corner2, bool isCrossing);

// The displayed entity nearest to the point, at most the aperture (drawing units) away; null when
// none is.
AcDbObjectId PickAt(AcDbDatabase& database, const AcGePoint3d& point, double aperture);

// The same among these entities, which are displayed: for a caller that has them sorted by place.
std::vector<AcDbObjectId> QueryRectangleAmong(const std::vector<AcDbObjectId>& entities,
                                              const AcGePoint3d& corner1,
                                              const AcGePoint3d& corner2, bool isCrossing);
AcDbObjectId PickAmong(const std::vector<AcDbObjectId>& entities, const AcGePoint3d& point,
                       double aperture);

// A selection filter: conditions on DXF name (0), linetype (6), layer (8) and colour (62), that all
// must hold; texts as wildcard patterns.
class EntityFilter {
public:
    // Nothing for a chain with another code. A null chain lets everything pass.
    static std::optional<EntityFilter> FromChain(const resbuf* chain);
    bool Passes(AcDbObjectId id) const;  // opens the entity for reading

private:
    struct Condition {
        int code;
        std::wstring text;
        int number;
    };
    std::vector<Condition> m_conditions;
};

}  // namespace host
