// How a long run shows its progress. The module shows a window, the command line a bar; whoever
// links the batch records supplies the three.
#pragma once

// Begins to show progress.
void progressStart();

// Takes the waiting window messages, so that the host stays responsive, and shows where the run is.
// Any handler may run inside: the caller must expect tasks, tools and even the drawing to be gone.
//
// nTotal    number of items
// nCurrent  index of the item about to be processed, from 0
// dFactor   multiplies the estimate of the remaining time
void progressStep(int nTotal, int nCurrent, double dFactor);

// Ends it.
void progressEnd();
