// Stretches of an envelope that are too narrow to be anything.
#pragma once

#include <vector>

#include "Halves.h"
#include "OutlineLaw.h"
#include "UpperEnvelope.h"

namespace outline {

// Takes out spans that are no wider than `step`: where one curve ends and the next begins a hair
// farther on, what lies below both would show between them.
void DropSlivers(std::vector<Span>& spans, double step);

// Takes out of a profile without gaps what has no width of its own: spikes narrower than g that
// stand out by more than g, down to what is beside them, and slots between walls narrower than 2g,
// within which no end is seen, up to the lower wall's top. Spikes are reported as tails, slots as
// bridges.
//
// cost  O(n)
void MendNarrow(std::vector<Piece>& pieces, std::vector<Span>& spans, const Measures& measures,
                Envelope& envelope);

}  // namespace outline
