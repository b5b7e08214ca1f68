// What one run of the engine borrows from the drawing, and gives back.
#pragma once

#include <vector>

#include "CurrentLayerGuard.h"
#include "EncircleWatch.h"
#include "StdAfx.h"

// For its life the scratch layer is the current one. At the end, on every way out, everything on
// the scratch layer and every clone is erased, all layers are switched on, the former current layer
// is current again, and a scratch layer that the run has made is gone. After a run that was stopped
// the layers are off and on as before.
class CEncircleRun {
public:
    CEncircleRun();
    ~CEncircleRun();
    CEncircleRun(const CEncircleRun&) = delete;
    CEncircleRun& operator=(const CEncircleRun&) = delete;

    // False when there is no drawing or the scratch layer cannot be used; nothing is changed then.
    bool IsReady() const { return !m_layer.GetLayerId().isNull(); }

    // Clones the picked entities into their own space, in picking order, and puts the clones on the
    // scratch layer. Left out: what cannot be opened, is no entity of a space of the working
    // database, lies on the dimension layer or on a locked one (its clone could not be changed); an
    // entity picked twice counts once.
    //
    // bKeepLook        line types that come from a layer are stated on the clones before they move
    // bWithDimensions  entities on the dimension layer take part as well
    AcDbObjectIdArray Clone(const AcDbObjectIdArray& pickedIds, bool bKeepLook,
                            bool bWithDimensions = false);

    // Calls run(), which may be stopped by the installed CEncircleWatch; whatever it has not done
    // by then stays undone.
    template <class Run>
    void Watch(const Run& run) {
        try {
            run();
        } catch (const SEncircleStop&) {
            m_bStopped = true;
        }
    }

private:
    void EraseScratch();

    CCurrentLayerGuard m_layer;
    AcDbObjectId m_lastBeforeId;
    std::vector<AcDbObjectId> m_cloneIds;
    std::vector<AcDbObjectId> m_offLayerIds;  // before the run
    bool m_bStopped = false;
};
