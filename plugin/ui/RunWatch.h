// Progress of one long computation, which Esc stops.
#pragma once

#include <memory>
#include <vector>

#include "DialogProgress.h"
#include "EncircleWatch.h"

// To be installed by a CEncircleWatchScope. A run that takes longer than half a second gets a
// window with a bar for each of its passes. Keys are looked for in the thread's queue, whichever of
// its windows has the focus; other keys that were pressed meanwhile are posted again at the end.
class CRunWatch : public CEncircleWatch {
public:
    CRunWatch();
    ~CRunWatch() override;
    CRunWatch(const CRunWatch&) = delete;
    CRunWatch& operator=(const CRunWatch&) = delete;

    bool MayBreak(size_t nLines, size_t nMeetings) override;
    bool MayGoOn(const char* pPass, size_t nDone, size_t nAll) override;

    // Esc was pressed, so the run left everything as it was.
    bool IsStopped() const { return m_bStopped; }

private:
    void LookForEscape();
    void Show(const char* pPass, size_t nDone, size_t nAll);

    ULONGLONG m_nStart;
    std::vector<MSG> m_keys;  // that are not ours
    std::unique_ptr<CDialogProgress> m_pWindow;
    CString m_strPass;
    int m_nPass = 0;
    bool m_bStopped = false;
};
