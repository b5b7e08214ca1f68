// Messages to an application, its answers, and the registry keys.
#pragma once

#include "acadstrc.h"
#include "adesk.h"

namespace AcRx {
enum AppMsgCode {
    kNullMsg = 0,       // never sent
    kInitAppMsg = 1,    // the module was loaded: register commands
    kUnloadAppMsg = 2,  // it is about to go: take everything back
    kLoadDwgMsg = 3,    // a drawing was opened
    kUnloadDwgMsg = 4,  // a drawing is about to close
    kInvkSubrMsg = 5,   // for functions in Lisp, which this host has not
    kCfgMsg = 6,
    kEndMsg = 7,
    kQuitMsg = 8,  // the host is about to end
    kSaveMsg = 9,
    kDependencyMsg = 10,
    kNoDependencyMsg = 11,
    kOleUnloadAppMsg = 12,  // another program wants the host to end; never here
    kPreQuitMsg = 13,
    kInitDialogMsg = 14,
    kEndDialogMsg = 15
};
// What the module answers; kRetError to kInitAppMsg refuses to be loaded.
enum AppRetCode { kRetOK = 0, kRetError = 3 };
// How two objects compare.
enum Ordering { kLessThan = -1, kEqual = 0, kGreaterThan = 1, kNotOrderable = 2 };
}  // namespace AcRx

#define ACRX_CLASS_DICTIONARY ACRX_T("ClassDictionary")
