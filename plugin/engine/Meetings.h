// Where the working segments meet.
#pragma once

#include <vector>

#include "LineInfo.h"

// Adds to every record the points at which other records meet it: what a loop over all pairs i < j
// gives that intersects i with j wherever their boxes overlap, and adds the point to both by
// CLineInfo::AddBreakPoint(). A shared corner is a meeting too; collinear lines have none.
//
// result   that of the loop bit for bit: a point near an earlier one is dropped, so each record
//          must see its partners in rising order
// cost     O((n + k) log n) for k meetings. Pairs come from an index in an order that keeps
//          neighbours together; visiting them in input order takes about four times as long on
//          large drawings because of cache misses. The meetings are then handed to both records in
//          order. Lines that are drawn several times are met once for all.
void AddMeetingPoints(std::vector<CLineInfo>& lines, const AcGeTol& tol);

// At how many points the lines cross or touch one another, shared corners left out. Breaking
// makes at most two more pieces for each. For telling what a run will take before it does.
// O((n + k) log n), without any memory for the meetings.
size_t CountMeetings(const std::vector<CLineInfo>& lines, const AcGeTol& tol);
