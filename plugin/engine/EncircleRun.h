// What one run of the engine borrows from the drawing, and gives back.
#pragma once

#include <vector>

#include "CurrentLayerGuard.h"
#include "EncircleWatch.h"
#include "StdAfx.h"

class CEncircleLine;

// For its life the scratch layer is the current one. At the end, on every way out, everything on
// the scratch layer and every clone is erased and all layers are switched on, by the engine's own
// passes; the former current layer is current again, and a scratch layer that the run has made is
// gone. After a run that was stopped
// the layers are off and on as before.
class CEncircleRun {
public:
    explicit CEncircleRun(CEncircleLine& engine);
    ~CEncircleRun();
    CEncircleRun(const CEncircleRun&) = delete;
    CEncircleRun& operator=(const CEncircleRun&) = delete;

    // The newest entity of model space before the run, when the run has made the scratch layer:
    // nothing on that is older. Null else, and when there is no run.
    static const AcDbObjectId& GetLastBefore() { return s_lastBeforeId; }

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

    static AcDbObjectId s_lastBeforeId;

    CEncircleLine& m_engine;
    CCurrentLayerGuard m_layer;               // the scratch layer, and the one before
    std::vector<AcDbObjectId> m_cloneIds;     // erased at the end
    std::vector<AcDbObjectId> m_offLayerIds;  // before the run
    bool m_bStopped = false;                  // by the watch
};
