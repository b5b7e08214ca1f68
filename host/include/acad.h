#pragma once

#include "acadstrc.h"
#include "adesk.h"
