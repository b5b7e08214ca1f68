#include "StdAfx.h"
#include "NumberFields.h"

#include "EncircleValues.h"

bool RefuseCommas(CDialog& dialog) {
    for (const SValueField& field : GetValueFields()) {
        CString strText;
        dialog.GetDlgItemText(field.m_nControl, strText);
        if (strText.FindOneOf(_T(",，．。")) < 0) {
            continue;
        }
        strText.Format(_T("%s：小数点请用“.”"), field.m_pLabel);
        AfxMessageBox(strText);
        dialog.GotoDlgCtrl(dialog.GetDlgItem(field.m_nControl));
        return true;
    }
    return false;
}
