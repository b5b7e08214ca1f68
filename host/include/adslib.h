// The C-style interface in one include.
#pragma once

#include "adsdef.h"
#include "adscodes.h"
#include "acutads.h"
#include "acutmem.h"
