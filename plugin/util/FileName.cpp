#include "StdAfx.h"

#include "FileName.h"

namespace {

constexpr const ACHAR* kForbidden = _T("\\/:*?\"<>|");
constexpr unsigned kFirstPrintable = 0x20;

const ACHAR* const kDevices[] = {
    _T("CON"),  _T("PRN"),  _T("AUX"),  _T("NUL"),  _T("COM1"), _T("COM2"), _T("COM3"), _T("COM4"),
    _T("COM5"), _T("COM6"), _T("COM7"), _T("COM8"), _T("COM9"), _T("LPT1"), _T("LPT2"), _T("LPT3"),
    _T("LPT4"), _T("LPT5"), _T("LPT6"), _T("LPT7"), _T("LPT8"), _T("LPT9")};

// Such a name opens the device whatever follows its first dot.
bool IsDevice(const CString& strName) {
    const int nDot = strName.Find(_T('.'));
    const CString strStem = nDot < 0 ? strName : strName.Left(nDot);
    for (const ACHAR* pDevice : kDevices) {
        if (strStem.CompareNoCase(pDevice) == 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

bool IsFileName(const CString& strName) {
    if (strName.IsEmpty() || strName.FindOneOf(kForbidden) >= 0 || IsDevice(strName)) {
        return false;
    }
    for (int i = 0; i < strName.GetLength(); ++i) {
        if (static_cast<unsigned>(strName[i]) < kFirstPrintable) {
            return false;
        }
    }
    const ACHAR last = strName[strName.GetLength() - 1];
    return last != _T('.') && last != _T(' ');
}
