#pragma once

#include "AcString.h"  // the older name of AcString.h
