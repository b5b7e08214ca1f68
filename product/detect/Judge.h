// How much speaks for a candidate.
#pragma once

#include "product/detect/Candidate.h"

namespace product::detect {

// From here on a candidate is taken for a tool; below kLeast it is not even told of.
constexpr double kSure = 0.6;
constexpr double kLeast = 0.25;

// Sets the candidate's score, 0 to 1, and what weighs against it.
//
// greatest  length of the longest candidate of the sheet
// letters   usual height of the sheet's texts; 0: it has none
void Judge(Candidate& candidate, double greatest, double letters);

}  // namespace product::detect
