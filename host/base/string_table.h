// Where CString::LoadString finds its texts.
#pragma once

#include "cstringt.h"

namespace host {

// Looks a string resource up; false, out unchanged, when the current module has none of that
// number.
typedef bool (*StringLoader)(UINT id, CString& out);

// The window layer installs its look-up here; null takes it away. Not for several threads at once.
void SetStringLoader(StringLoader loader);

}  // namespace host
