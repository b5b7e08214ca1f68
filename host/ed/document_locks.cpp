#include "host/ed/document_locks.h"

#include "dbhandle.h"

namespace host {
namespace {

bool IsWriteMode(AcAp::DocLockMode mode) {
    return mode == AcAp::kAutoWrite || mode == AcAp::kWrite || mode == AcAp::kProtectedAutoWrite ||
           mode == AcAp::kXWrite;
}

bool IsExclusive(AcAp::DocLockMode mode) { return mode == AcAp::kRead || mode == AcAp::kXWrite; }

}  // namespace

bool HoldsWriteLock(const DocumentImp& imp, const AcApDocument* context) {
    for (const DocumentLock& lock : imp.locks)
        if (lock.owner == context && IsWriteMode(lock.mode)) return true;
    return false;
}

bool IsLockConflict(const DocumentImp& imp, AcAp::DocLockMode mode, const AcApDocument* context) {
    for (const DocumentLock& lock : imp.locks)
        if (lock.owner != context && (IsExclusive(mode) || IsExclusive(lock.mode))) return true;
    return false;
}

AcAp::DocLockMode StrongestLock(const DocumentImp& imp, const AcApDocument* context, bool own) {
    int strongest = AcAp::kNone;
    for (const DocumentLock& lock : imp.locks)
        if ((lock.owner == context) == own && lock.mode > strongest) strongest = lock.mode;
    return strongest == AcAp::kNone ? AcAp::kNotLocked : static_cast<AcAp::DocLockMode>(strongest);
}

const wchar_t* LockModeName(AcAp::DocLockMode mode) {
    switch (mode) {
        case AcAp::kAutoWrite:
            return L"auto-write";
        case AcAp::kWrite:
            return L"write";
        case AcAp::kProtectedAutoWrite:
            return L"protected auto-write";
        case AcAp::kRead:
            return L"read";
        case AcAp::kXWrite:
            return L"exclusive write";
        default:
            return L"none";
    }
}

std::wstring DescribeOpenObject(const OpenObject& object) {
    ACHAR handle[AcDbHandle::kStrSiz];
    AcDbHandle(object.handle).getIntoAsciiBuffer(handle);
    const wchar_t* const mode = object.mode == AcDb::kForRead    ? L"read"
                                : object.mode == AcDb::kForWrite ? L"write"
                                                                 : L"notify";
    return std::wstring(handle) + L" " + object.className + L" " + mode;
}

}  // namespace host
