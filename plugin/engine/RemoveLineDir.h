// The side from which the drawing is looked at. A pass that takes one keeps what that side sees.
#pragma once

enum E_RemoveLine_Dir {
    E_Dir_Bottom = 0,  // from below: the lower half; hidden by what lies below
    E_Dir_Top = 1,     // from above: the upper half; hidden by what lies above
    E_Dir_Right = 2,   // hidden by what lies to the right
    E_Dir_Left = 3,    // hidden by what lies to the left
    E_Dir_None = 4     // no axis is known: all four sides are computed
};
