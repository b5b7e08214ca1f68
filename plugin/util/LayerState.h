#pragma once

#include "StdAfx.h"

// How a layer of the working database was, to be made so again after work that came to nothing.
class CLayerState {
public:
    explicit CLayerState(const ACHAR* pName);

    // Switches it off or freezes it as it was. One that was not there goes again, unless it is the
    // current one or something lies on it: O(entities) then.
    void Restore() const;

private:
    CString m_strName;
    AcDbObjectId m_layerId;  // null: it was not there
    bool m_bOff = false;
    bool m_bFrozen = false;
};
