#pragma once

#include "AcString.h"
