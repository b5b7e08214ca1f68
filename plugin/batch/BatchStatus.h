#pragma once

#include "StdAfx.h"

// How far a tool or a task has come, for the computation and for the export alike. A drawing may
// bring other numbers; they are kept and shown as an empty cell.
enum BatchStatus : Adesk::Int32 { kBatchNotStarted = 0, kBatchDone = 1, kBatchFailed = 2 };

// The texts of the grids' columns.
CString GetExecStatusText(BatchStatus status);
CString GetExportStatusText(BatchStatus status);

// One status for many: failed when any failed; else not started when any is not; else done. Not
// started for none at all.
class CStatusRollUp {
public:
    void Add(BatchStatus status) {
        m_bAny = true;
        m_bFailed = m_bFailed || status == kBatchFailed;
        m_bOpen = m_bOpen || status == kBatchNotStarted;
    }
    BatchStatus GetStatus() const {
        if (m_bFailed) {
            return kBatchFailed;
        }
        return m_bAny && !m_bOpen ? kBatchDone : kBatchNotStarted;
    }

private:
    bool m_bAny = false;
    bool m_bFailed = false;
    bool m_bOpen = false;
};
