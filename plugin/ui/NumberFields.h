#pragma once

#include "StdAfx.h"

// Whether a number in a dialog with the controls of GetValueFields() is written with a comma or
// with a Chinese point. The user is told which, and the focus goes there: reading such a text may
// end at that letter, and the rest be dropped.
bool RefuseCommas(CDialog& dialog);
