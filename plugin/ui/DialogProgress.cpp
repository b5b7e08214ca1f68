#include "StdAfx.h"
#include "DialogProgress.h"

#include <cmath>
#include <limits>
#include <memory>

#include "Progress.h"
#include "AcExtensionModule.h"
#include "rxmfcapi.h"

IMPLEMENT_DYNAMIC(CDialogProgress, CDialog)

BEGIN_MESSAGE_MAP(CDialogProgress, CDialog)
END_MESSAGE_MAP()

namespace {

// The integer part, as the 64-bit conversion's lower half gives it; 0 where that conversion has no
// answer (an estimate before the first item is done divides by zero).
Adesk::Int32 Truncate(double dValue) {
    constexpr double kLimit = 9.2e18;
    if (!(std::fabs(dValue) < kLimit)) {
        return 0;
    }
    return static_cast<Adesk::Int32>(
        static_cast<Adesk::UInt32>(static_cast<Adesk::Int64>(dValue) & 0xFFFFFFFF));
}

// 32-bit product as the processor forms it, without the undefined overflow of signed numbers.
Adesk::Int32 MultiplyWrapping(Adesk::Int32 a, Adesk::Int32 b) {
    return static_cast<Adesk::Int32>(static_cast<Adesk::UInt32>(a) * static_cast<Adesk::UInt32>(b));
}

}  // namespace

CString GetProgressText(Adesk::Int32 nTotal, Adesk::Int32 nCurrent, Adesk::Int32 nFailed,
                        Adesk::Int32 nElapsed, double dFactor) {
    const double dProduct = MultiplyWrapping(nElapsed, nTotal);
    const double dEstimate =
        nCurrent == 0 ? std::numeric_limits<double>::infinity() : dProduct / nCurrent - nElapsed;
    const Adesk::Int32 nRemaining = Truncate(Truncate(dEstimate) * dFactor);
    CString strText;
    strText.Format(
        _T("\n总计：%d个 当前处理:第%d个\n失败：%d个 成功：%d个\n")
        _T("已经用时：%d秒 预计还需：%d秒\n"),
        nTotal, nCurrent, nFailed, nCurrent - nFailed, nElapsed, nRemaining);
    return strText;
}

CString GetProgressSummary(Adesk::Int32 nTotal, Adesk::Int32 nFailed, Adesk::Int32 nElapsed) {
    // An empty run has no average; it took no time per item.
    const double dAverage = nTotal == 0 ? 0.0 : static_cast<double>(nElapsed) / nTotal;
    CString strText;
    strText.Format(_T("\n总计：%d个 失败：%d个 成功：%d个 用时：%d秒 平均：%.3f秒/个\n"), nTotal,
                   nFailed, nTotal - nFailed, nElapsed, dAverage);
    return strText;
}

CDialogProgress::CDialogProgress(CWnd* pParent) : CDialog(IDD, pParent) {}

void CDialogProgress::DoDataExchange(CDataExchange* pDX) {
    CDialog::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_PROGRESS_BAR, m_progress);
    DDX_Control(pDX, IDC_PROGRESS_TEXT, m_text);
}

BOOL CDialogProgress::OnInitDialog() {
    CDialog::OnInitDialog();
    m_progress.SetRange(0, 100);
    m_nStartTime = CTime::GetCurrentTime().GetTime();
    m_bOpen = true;
    m_pFont = GetFont();
    m_text.SetFont(m_pFont);
    SetWindowText(_T("执行进度"));
    return TRUE;
}

// Enter and Escape must not end a window that shows a running loop.
void CDialogProgress::OnOK() {}
void CDialogProgress::OnCancel() {}

Adesk::Int32 CDialogProgress::GetElapsed() const {
    return static_cast<Adesk::Int32>(CTime::GetCurrentTime().GetTime() - m_nStartTime);
}

void CDialogProgress::Update(int nTotal, int nCurrent, int nFailed, double dFactor) {
    if (!m_bOpen) {
        return;
    }
    m_nTotal = nTotal;
    m_nFailed = nFailed;
    m_progress.SetRange(0, static_cast<short>(nTotal));
    m_progress.SetPos(nCurrent);
    m_text.SetWindowText(GetProgressText(nTotal, nCurrent, nFailed, GetElapsed(), dFactor));
    UpdateWindow();
}

void CDialogProgress::ShowText(const CString& strText, int nPercent) {
    m_progress.SetPos(nPercent);
    m_text.SetWindowText(strText);
    UpdateWindow();
}

void CDialogProgress::Close() {
    if (!m_bOpen) {
        return;
    }
    m_text.SetWindowText(GetProgressSummary(m_nTotal, m_nFailed, GetElapsed()));
    UpdateWindow();
    m_bOpen = false;
    DestroyWindow();
}

namespace {

// Owns the one window; null while no progress is shown.
std::unique_ptr<CDialogProgress>& GetHolder() {
    static std::unique_ptr<CDialogProgress> holder;
    return holder;
}

// Takes every waiting message. A quit message is put back for the host's own loop.
void PumpMessages() {
    MSG msg;
    while (::PeekMessage(&msg, nullptr, 0, 0, PM_REMOVE)) {
        if (msg.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(msg.wParam));
            return;
        }
        // The thread asks the windows from the message's one upwards: Tab and Enter of dialogs.
        if (!AfxGetThread()->PreTranslateMessage(&msg)) {
            ::TranslateMessage(&msg);
            ::DispatchMessage(&msg);
        }
    }
}

}  // namespace

void progressStart() {
    // A run that was started by a click inside another one's pump takes the window over.
    progressEnd();
    const CAcModuleResourceOverride resources;
    auto pDialog = std::make_unique<CDialogProgress>(acedGetAcadFrame());
    if (!pDialog->Create(CDialogProgress::IDD, acedGetAcadFrame())) {
        return;
    }
    pDialog->ShowWindow(SW_SHOW);
    pDialog->SetForegroundWindow();
    GetHolder() = std::move(pDialog);
}

void progressStep(int nTotal, int nCurrent, double dFactor) {
    if (GetHolder() == nullptr) {
        return;
    }
    PumpMessages();
    // The pump may have ended this progress.
    if (GetHolder() != nullptr) {
        GetHolder()->Update(nTotal, nCurrent, 0, dFactor);
    }
}

void progressEnd() {
    if (GetHolder() != nullptr) {
        GetHolder()->Close();
        GetHolder().reset();
    }
}
