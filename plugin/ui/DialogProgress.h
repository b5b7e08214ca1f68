// The progress window of batch runs. Reached only through the three operations of Progress.h.
#pragma once

#include "res/resource.h"

// Modeless, without buttons and close box.
class CDialogProgress : public CDialog {
    DECLARE_DYNAMIC(CDialogProgress)

public:
    explicit CDialogProgress(CWnd* pParent = nullptr);
    enum { IDD = IDD_PROGRESS };

    // Shows where the run is. factor multiplies the estimate of the remaining time.
    void Update(int nTotal, int nCurrent, int nFailed, double dFactor);
    // Shows a text of its own, and a share of 100.
    void ShowText(const CString& strText, int nPercent);
    // Shows the summary as the last text and destroys the window.
    void Close();

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    DECLARE_MESSAGE_MAP()

private:
    Adesk::Int32 GetElapsed() const;

    CProgressCtrl m_progress;
    CStatic m_text;
    Adesk::Int64 m_nStartTime = 0;  // calendar time in whole seconds
    bool m_bOpen = false;
    CFont* m_pFont = nullptr;
    Adesk::Int32 m_nTotal = 0;
    Adesk::Int32 m_nFailed = 0;
};

// The texts of the window, formed without one.
//
// nElapsed, seconds since the start; the remaining time is estimated from the time per item so far,
// multiplied by dFactor, and 0 when there is no estimate yet.
CString GetProgressText(Adesk::Int32 nTotal, Adesk::Int32 nCurrent, Adesk::Int32 nFailed,
                        Adesk::Int32 nElapsed, double dFactor);
CString GetProgressSummary(Adesk::Int32 nTotal, Adesk::Int32 nFailed, Adesk::Int32 nElapsed);
