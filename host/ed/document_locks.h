// Who holds which lock on a document, and whether locks exclude one another.
#pragma once

#include <string>

#include "host/db/build.h"
#include "host/ed/document_imp.h"

namespace host {

// True when the context (null: the application) holds a lock that allows writing.
bool HoldsWriteLock(const DocumentImp& imp, const AcApDocument* context);

// True when a lock of that mode would exclude, or be excluded by, one that another context holds.
// Shared write locks go together; an exclusive read or write lock goes with nothing.
bool IsLockConflict(const DocumentImp& imp, AcAp::DocLockMode mode, const AcApDocument* context);

// The strongest lock that the context itself, or that others, hold; kNotLocked when none.
AcAp::DocLockMode StrongestLock(const DocumentImp& imp, const AcApDocument* context, bool own);

const wchar_t* LockModeName(AcAp::DocLockMode mode);
std::wstring DescribeOpenObject(const OpenObject& object);

}  // namespace host
