#include "StdAfx.h"

#include "EncircleWatch.h"

CEncircleWatch* CEncircleWatch::s_pCurrent = nullptr;

void CEncircleWatch::Ask(const char* pPass, size_t nDone, size_t nAll) {
    if (!s_pCurrent->MayGoOn(pPass, nDone, nAll)) {
        throw SEncircleStop();
    }
}

CEncircleWatchScope::CEncircleWatchScope(CEncircleWatch& watch)
    : m_pFormer(CEncircleWatch::s_pCurrent) {
    CEncircleWatch::s_pCurrent = &watch;
}

CEncircleWatchScope::~CEncircleWatchScope() { CEncircleWatch::s_pCurrent = m_pFormer; }
