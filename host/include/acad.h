#pragma once

// The C-style interface under its older name.
#include "acadstrc.h"
#include "adesk.h"
