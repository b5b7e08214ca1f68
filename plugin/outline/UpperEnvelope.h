// The upper envelope of pieces: at each x the highest of them.
#pragma once

#include <vector>

#include "OutlinePiece.h"

namespace outline {

// A stretch of the envelope: over [x0, x1] the piece with that place in the list is the highest.
struct Span {
    double x0 = 0, x1 = 0;
    int piece = -1;
};

// pieces  in any order; the result does not depend on it but where pieces lie on one another
// tie     heights that differ by no more are equal; the piece to the left goes on then, or else the
//         one that reaches farther right
// result  from left to right, without overlaps; where no piece is, there is no span. At each x its
//         height is that of the highest piece, less a few ties.
// cost    O((n + k) log n) for k changes of the highest piece, by halving and merging; pieces that
//         lie wholly below others are put aside before. Memory O(n).
std::vector<Span> UpperEnvelope(const std::vector<Piece>& pieces, double tie);

}  // namespace outline
