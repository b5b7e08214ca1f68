#pragma once

#include "QZRect.h"

// Shows the box on the screen, wider by a tenth: what lies on the very edge may count as off it.
// Changes no data and needs no lock. False when the host has no view to show it in.
bool ShowBox(const CQZRect& box);
