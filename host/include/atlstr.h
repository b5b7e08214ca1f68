#pragma once

// The name under which CString is found without windows.
#include "cstringt.h"
