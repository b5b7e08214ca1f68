#include "StdAfx.h"

#include "SatExport.h"

#include <algorithm>

#include "FileName.h"

namespace {

CString GetFolder(const CString& strPath) {
    const int nBackslash = strPath.ReverseFind(_T('\\'));
    const int nSlash = strPath.ReverseFind(_T('/'));
    return strPath.Left((std::max)(nBackslash, nSlash) + 1);
}

CString GetTempFolder() {
    ACHAR path[MAX_PATH + 1] = {};
    const DWORD nLength = ::GetTempPath(MAX_PATH + 1, path);
    return nLength == 0 || nLength > MAX_PATH ? CString() : CString(path);
}

// A name that nothing has yet. Beside the file, so that it can take its name in one step, unless
// the modeller may stumble over the folder.
CString GetPassingPath(const CString& strPath) {
    CString strFolder = GetFolder(strPath);
    if (!IsPlainPath(strFolder)) {
        const CString strTemp = GetTempFolder();
        strFolder = IsPlainPath(strTemp) ? strTemp : strFolder;
    }
    CString strName;
    ULONGLONG nMoment = ::GetTickCount64();
    do {
        strName.Format(_T("qz%u_%u.sat"), static_cast<unsigned>(::GetCurrentProcessId()),
                       static_cast<unsigned>(nMoment++));
    } while (IsPathTaken(strFolder + strName));
    return strFolder + strName;
}

}  // namespace

bool IsPathTaken(const CString& strPath) {
    return ::GetFileAttributes(strPath) != INVALID_FILE_ATTRIBUTES;
}

bool WriteSat(const CString& strPath, const AcDbObjectId& solidId) {
    const AcDbObjectPointer<AcDb3dSolid> pSolid(solidId, AcDb::kForRead);
    if (pSolid.openStatus() != Acad::eOk) {
        return false;
    }
    AcDbVoidPtrArray entities;
    entities.append(const_cast<AcDb3dSolid*>(pSolid.object()));
    if (IsPlainPath(strPath)) {
        return AcDbBody::acisOut(strPath, entities) == Acad::eOk;
    }
    const CString strPassing = GetPassingPath(strPath);
    const bool bWritten =
        AcDbBody::acisOut(strPassing, entities) == Acad::eOk &&
        ::MoveFileEx(strPassing, strPath, MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED);
    if (!bWritten && IsPathTaken(strPassing)) {
        ::DeleteFile(strPassing);
    }
    return bWritten;
}
