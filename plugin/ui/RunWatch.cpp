#include "StdAfx.h"
#include "RunWatch.h"

#include "AcExtensionModule.h"
#include "rxmfcapi.h"

namespace {

// Most runs are over before anybody wants to see how far they are, milliseconds.
constexpr ULONGLONG kPatience = 500;

}  // namespace

CRunWatch::CRunWatch() : m_nStart(::GetTickCount64()) {}

CRunWatch::~CRunWatch() {
    if (m_pWindow != nullptr) {
        m_pWindow->DestroyWindow();
    }
    for (const MSG& key : m_keys) {
        ::PostMessage(key.hwnd, key.message, key.wParam, key.lParam);
    }
}

bool CRunWatch::MayBreak(size_t, size_t) {
    LookForEscape();
    return !m_bStopped;
}

bool CRunWatch::MayGoOn(const char* pPass, size_t nDone, size_t nAll) {
    LookForEscape();
    if (!m_bStopped && ::GetTickCount64() - m_nStart >= kPatience) {
        Show(pPass, nDone, nAll);
    }
    return !m_bStopped;
}

void CRunWatch::LookForEscape() {
    MSG key;
    while (::PeekMessage(&key, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE)) {
        if (key.message != WM_KEYDOWN) {
            // The thread is to end: its quit message comes whatever is asked for.
            ::PostQuitMessage(static_cast<int>(key.wParam));
            m_bStopped = true;
            return;
        }
        if (key.wParam == VK_ESCAPE) {
            m_bStopped = true;
        } else {
            m_keys.push_back(key);
        }
    }
}

void CRunWatch::Show(const char* pPass, size_t nDone, size_t nAll) {
    if (m_pWindow == nullptr) {
        const CAcModuleResourceOverride resources;
        auto pWindow = std::make_unique<CDialogProgress>(acedGetAcadFrame());
        if (!pWindow->Create(CDialogProgress::IDD, acedGetAcadFrame())) {
            return;
        }
        pWindow->ShowWindow(SW_SHOW);
        pWindow->SetForegroundWindow();
        m_pWindow = std::move(pWindow);
    }
    const CString strPass(pPass);
    if (strPass != m_strPass) {
        m_strPass = strPass;
        ++m_nPass;
    }
    // Not every pass knows how much there is.
    const int nPercent =
        nAll == 0
            ? 0
            : static_cast<int>(100.0 * static_cast<double>(nDone) / static_cast<double>(nAll));
    CString strText;
    strText.Format(_T("\n正在计算包络线，第%d步\n按 Esc 取消\n"), m_nPass);
    m_pWindow->ShowText(strText, nPercent);
}
