// Where GEOS is not to be had, boundaries are not traced, and callers are told so.
#include "aced.h"
#include "acutads.h"

Acad::ErrorStatus acedTraceBoundary(const AcGePoint3d&, bool, AcDbVoidPtrArray& result) {
    result.setLogicalLength(0);
    acutPrintf(L"\nThis build of the host traces no boundaries: it has no GEOS.\n");
    return Acad::eNotImplementedYet;
}
