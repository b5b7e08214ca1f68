#pragma once

#include "QZRect.h"

// The centre line of one computation: drawn in model space and erased again at the end of its life.
class CAxisLine {
public:
    // Horizontal through a height, past the box of the picked entities. An empty box makes no line.
    CAxisLine(const CQZRect& box, double dHeight);
    // From one point to another.
    CAxisLine(const AcGePoint3d& from, const AcGePoint3d& to);
    ~CAxisLine() { Erase(); }
    CAxisLine(const CAxisLine&) = delete;
    CAxisLine& operator=(const CAxisLine&) = delete;

    // Null when there is no line.
    const AcDbObjectId& GetId() const { return m_id; }

    // What the destructor does, once. False when the line is still in the drawing afterwards.
    bool Erase();

private:
    AcDbObjectId m_id;
};
