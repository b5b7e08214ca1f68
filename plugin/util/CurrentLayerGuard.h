#pragma once

#include "DrawingWatch.h"

// Makes a layer of the working database the current one for the guard's life. The layer is created,
// thawed, unlocked and switched on when need be (EnsureLayer), and stays so.
class CCurrentLayerGuard {
public:
    explicit CCurrentLayerGuard(const ACHAR* pLayerName);
    ~CCurrentLayerGuard() { Restore(); }
    CCurrentLayerGuard(const CCurrentLayerGuard&) = delete;
    CCurrentLayerGuard& operator=(const CCurrentLayerGuard&) = delete;

    // What the destructor does, once: makes the former layer current again, in the database of the
    // construction. A former layer that is frozen is thawed, since no host lets a frozen one become
    // current; layer 0 when it is gone.
    void Restore();

    // The guard's layer; null when it could not be made current, nothing is changed then.
    const AcDbObjectId& GetLayerId() const { return m_layerId; }
    // The guard's layer did not exist before.
    bool IsLayerNew() const { return m_bCreated; }

private:
    AcDbDatabase* m_pDatabase;
    CDrawingWatch m_drawing;
    AcDbObjectId m_formerId;
    AcDbObjectId m_layerId;
    bool m_bCreated = false;
    bool m_bActive = false;
};
