#pragma once

#include <vector>

#include "StdAfx.h"

// What became of the tools of one run.
struct SRunReport {
    int m_nDone = 0;
    int m_nFailed = 0;
    int m_nNotRun = 0;                // the run ended before, or the tool was deleted meanwhile
    std::vector<CString> m_failures;  // one line for each that failed: its name and why

    // Counts a failure and tells it on the command line.
    void AddFailure(const CString& strTool, const CString& strReason);
    void Add(const SRunReport& other);
    // Everything that was to be done was done.
    bool IsClean() const { return m_nFailed == 0 && m_nNotRun == 0; }
    // The three counts on one line.
    CString GetCounts() const;
    // The asked text; unless the run was clean, the counts and the failures on lines of their own.
    CString GetMessage(const ACHAR* pText) const;
};

// Why a computation found no envelope, as a line for the user.
//
// sourceIds  the tool's entities
// bAxis      an axis could be drawn
CString GetNoEnvelopeReason(const AcDbObjectIdArray& sourceIds, bool bAxis);
