#pragma once

#include "cstringt.h"  // the name under which CString is found without windows
