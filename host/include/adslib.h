// The C-style interface in one include.
#pragma once

#include "adsdef.h"  // nothing of its own: what C programs for the older interface included
#include "adscodes.h"
#include "acutads.h"
#include "acutmem.h"
