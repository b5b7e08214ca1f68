#pragma once

#include <memory>

#include "AxisLine.h"

// The axis line of one computation about a picked centre, drawn on the envelope's layer: the user's
// own layer may be locked, and the line could not be erased again.
class CToolAxis {
public:
    // bExact  of the exact envelope, whose axis may be a centre line in any direction (see
    //         FindCentreAxis); else level
    CToolAxis(const AcDbObjectIdArray& ids, const AcGePoint3d& centre, bool bExact);

    // Null when there is no line.
    const AcDbObjectId& GetId() const { return m_line->GetId(); }
    // False when the line is still in the drawing afterwards.
    bool Erase() { return m_line->Erase(); }

private:
    std::unique_ptr<CAxisLine> m_line;
};
