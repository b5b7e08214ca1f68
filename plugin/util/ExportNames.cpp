#include "StdAfx.h"
#include "ExportNames.h"

#include "FileName.h"

namespace {

CString GetKey(const CString& strName) {
    CString strKey(strName);
    strKey.MakeLower();
    return strKey;
}

}  // namespace

void CExportNames::Expect(const CString& strTool) {
    m_expected.insert(GetKey(MakeFileName(strTool)));
}

CString CExportNames::Take(const CString& strTool) {
    const CString strBase = MakeFileName(strTool);
    if (strBase != strTool && !m_bToldOfForbidden) {
        m_bToldOfForbidden = true;
        acutPrintf(_T("\n文件名中不允许的字符以 _ 代替：%s → %s\n"), strTool.GetString(),
                   strBase.GetString());
    }
    CString strName(strBase);
    int nNumber = 1;
    while (m_taken.count(GetKey(strName)) != 0 ||
           (nNumber > 1 && m_expected.count(GetKey(strName)) != 0)) {
        strName.Format(_T("%s-%d"), strBase.GetString(), ++nNumber);
    }
    m_taken.insert(GetKey(strName));
    if (strName != strBase) {
        acutPrintf(_T("\n刀具编号 %s 重复，文件名为 %s\n"), strTool.GetString(),
                   strName.GetString());
    }
    return strName;
}
