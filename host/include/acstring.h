#pragma once

// The older name of AcString.h.
#include "AcString.h"
