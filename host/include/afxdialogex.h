#pragma once

#include "afxwin.h"

// A dialog; the original adds colours and pictures of the background, which this host has not.
class CDialogEx : public CDialog {
    DECLARE_DYNAMIC(CDialogEx)
public:
    CDialogEx() = default;
    explicit CDialogEx(UINT nIDTemplate, CWnd* pParent = nullptr) : CDialog(nIDTemplate, pParent) {}

protected:
    DECLARE_MESSAGE_MAP()
};
