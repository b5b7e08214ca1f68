#pragma once

// Brings what was changed in the drawing to the screen. A highlight that is set before is lost with
// the next redraw.
void FlushGraphics();
