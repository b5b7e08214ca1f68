// A tool's two envelopes, by steps and exact, and everything about them that is worth a look.
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "apps/qzhost/review/DrawingCopy.h"
#include "apps/qzhost/review/ToolPick.h"
#include "product/check/Finding.h"
#include "product/tool/SolidRun.h"

namespace app {

// A line of the list: gaps, open ends, what was left out.
struct ReviewRow {
    QString kind, text;
    bool isWarning = false;
    std::optional<product::Point> at;
    std::vector<AcDbObjectId> ids;  // in the drawing, to be marked
};

struct EnvelopeReview {
    std::vector<product::Vertex> steps, exact;  // closed rings; empty: there is none
    product::SolidRun solid;                    // of the steps' envelope
    double length = 0.0, diameter = 0.0;        // of the same
    // Where they differ most, when they do.
    std::optional<product::Point> greatest;
    QString difference;  // in words
    QString reason;      // why there is no envelope by steps
    std::vector<ReviewRow> rows;
};

// Computes both in a copy; the drawing itself is only read.
//
// drawing  of what was picked
// copy     of it; gains nothing that stays
// cost     both computations; tools that would come to too many lines are refused in words
EnvelopeReview ReviewTool(AcDbDatabase& drawing, DrawingCopy& copy, const ToolPick& pick,
                          const product::ToolParameters& parameters);

}  // namespace app
