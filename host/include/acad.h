#pragma once

#include "acadstrc.h"  // the C-style interface under its older name
#include "adesk.h"
