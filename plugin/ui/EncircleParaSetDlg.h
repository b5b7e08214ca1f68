// Modal dialog for the engine parameters of tasks.
#pragma once

#include "EncircleValues.h"
#include "res/resource.h"

// The caller fills params, runs DoModal and reads params after IDOK. A number that cannot be read
// keeps the dialog open; closing by the caption box changes nothing.
class CEncircleParaSetDlg : public CDialogEx {
    DECLARE_DYNAMIC(CEncircleParaSetDlg)

public:
    explicit CEncircleParaSetDlg(CWnd* pParent = nullptr);
    enum { IDD = IDD_PARAMS };

    CEncircleCalInfo params;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;
    void OnOK() override;
    DECLARE_MESSAGE_MAP()

private:
    SEncircleValues m_values;
};
