// The C-style interface in one include.
#pragma once

// Nothing of its own: what C programs for the older interface included.
#include "adsdef.h"
#include "adscodes.h"
#include "acutads.h"
#include "acutmem.h"
