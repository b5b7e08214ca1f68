#pragma once

#include "acadstrc.h"
#include "adesk.h"

// The name of a status, e.g. "eWasErased"; a number outside the enumeration gives "eUnknownStatus".
// The text lives as long as the program.
// For messages; no decision should hang on it.
const ACHAR* acadErrorStatusText(Acad::ErrorStatus es);
