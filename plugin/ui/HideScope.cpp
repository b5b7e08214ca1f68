#include "StdAfx.h"
#include "HideScope.h"

#include "rxmfcapi.h"

CHideScope::CHideScope(const CWnd& window) : m_hWnd(window.GetSafeHwnd()), m_hFocus(::GetFocus()) {
    ::ShowWindow(m_hWnd, SW_HIDE);
    if (CWnd* const pView = acedGetAcadDwgView()) {
        pView->SetFocus();
    }
}

CHideScope::~CHideScope() {
    if (::IsWindow(m_hWnd)) {
        ::ShowWindow(m_hWnd, SW_SHOW);
        if (::IsWindow(m_hFocus) && ::IsChild(m_hWnd, m_hFocus)) {
            ::SetFocus(m_hFocus);
        }
    }
    acedPostCommandPrompt();
}
