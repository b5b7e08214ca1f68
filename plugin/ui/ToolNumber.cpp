#include "StdAfx.h"
#include "ToolNumber.h"

namespace {

bool IsDigit(ACHAR c) { return c >= _T('0') && c <= _T('9'); }

// Adds one to a decimal number written out, whatever its length.
CString Increment(const CString& strDigits) {
    CString strNext(strDigits);
    for (int i = strNext.GetLength() - 1; i >= 0; --i) {
        if (strNext.GetAt(i) != _T('9')) {
            strNext.SetAt(i, static_cast<ACHAR>(strNext.GetAt(i) + 1));
            return strNext;
        }
        strNext.SetAt(i, _T('0'));
    }
    return _T("1") + strNext;
}

}  // namespace

CString GetNextToolNumber(const CString& strNumber) {
    int nStart = strNumber.GetLength();
    while (nStart > 0 && IsDigit(strNumber.GetAt(nStart - 1))) {
        --nStart;
    }
    while (nStart < strNumber.GetLength() && strNumber.GetAt(nStart) == _T('0')) {
        ++nStart;
    }
    if (nStart == strNumber.GetLength()) {
        return strNumber + _T("1");
    }
    return strNumber.Left(nStart) + Increment(strNumber.Mid(nStart));
}
