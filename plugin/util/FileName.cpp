#include "StdAfx.h"

#include "FileName.h"

namespace {

constexpr const ACHAR* kForbidden = _T("\\/:*?\"<>|");
constexpr unsigned kFirstPrintable = 0x20;
constexpr unsigned kFirstBeyondAscii = 0x80;

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

bool IsForbidden(ACHAR c) {
    return static_cast<unsigned>(c) < kFirstPrintable || CString(kForbidden).Find(c) >= 0;
}

bool IsBadEnd(ACHAR c) { return c == _T('.') || c == _T(' '); }

}  // namespace

bool IsFileName(const CString& strName) {
    return !strName.IsEmpty() && MakeFileName(strName) == strName;
}

CString MakeFileName(const CString& strText) {
    CString strName(strText);
    for (int i = 0; i < strName.GetLength(); ++i) {
        const bool bLast = i + 1 == strName.GetLength();
        if (IsForbidden(strName[i]) || (bLast && IsBadEnd(strName[i]))) {
            strName.SetAt(i, _T('_'));
        }
    }
    if (IsDevice(strName)) {
        const int nDot = strName.Find(_T('.'));
        strName.Insert(nDot < 0 ? strName.GetLength() : nDot, _T('_'));
    }
    return strName.IsEmpty() ? CString(_T("_")) : strName;
}

bool IsPlainPath(const CString& strPath) {
    for (int i = 0; i < strPath.GetLength(); ++i) {
        if (static_cast<unsigned>(strPath[i]) >= kFirstBeyondAscii) {
            return false;
        }
    }
    return true;
}
