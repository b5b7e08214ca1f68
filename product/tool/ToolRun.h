// One run of one tool, the only way to one: from a request to envelope, solid, files, findings and
// pictures. A single computation, a batch and its workers differ in where their requests come from.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "EncircleTrace.h"
#include "product/check/Findings.h"
#include "product/picture/PictureBuilder.h"
#include "product/tool/Selection.h"
#include "product/tool/SolidRun.h"
#include "product/tool/ExactRun.h"
#include "product/tool/ToolParts.h"
#include "product/tool/ToolRequest.h"

namespace product {

// What came of a request; filled as far as the run went, also when it fails.
struct ToolRun {
    Selection selection;
    // The request made sense and the drawing has changed: earlier envelopes are gone.
    bool isBegun = false;
    int envelopesErased = 0;
    AcDbObjectId envelopeId;  // null: there is none
    Envelope envelope;
    CEncircleTrace trace;
    std::optional<SExactResult> exact;  // when the exact envelope was asked for
    double seconds = 0;                 // of the engine alone, wall clock
    std::vector<std::string> warnings;  // what the user should know though the run went on
    SolidRun solid;
    std::optional<ToolParts> parts;  // with a solid only
    std::vector<std::string> files;  // of the solid and its profile, as they were written
};

// What a person may want to look at.
struct ToolReview {
    std::vector<Finding> findings;
    OutlineFigures figures;
    // For the page: an SVG element and a PNG file of the solid; empty where there is nothing to
    // show.
    std::string svg, png;
};

// Runs tools of one drawing, one after the other. The host keeps state for the whole process: one
// drawing at a time.
class ToolRunner {
public:
    // Makes the database the working one.
    //
    // withPictures  pictures will be asked for. What layers show is read now: the first run
    //               switches every layer on.
    ToolRunner(AcDbDatabase& database, bool withPictures);

    // Picks, checks the request, draws the axis, runs the engine, takes the axis away again,
    // revolves what came out and finds its parts. No envelope is no failure: found stays false.
    //
    // drawing  gains the envelope and its layer, loses earlier envelopes among what is picked;
    //          every layer is switched on
    // fails    Failure: Request for parameters that make no sense for what was picked,
    //          NothingThere when that is nothing, NotCarriedOut for what no algorithm here can do,
    //          NoResult when the axis cannot be drawn or the envelope not be read; as FindParts(),
    //          there is then no envelope either
    void Compute(const ToolRequest& request, ToolRun& run);

    // Writes the picture and the solid's files, each as a whole or not at all.
    // fails  Failure: NoSolid when there is an envelope, but no solid of it, Output when a file
    //        cannot be written
    void WriteFiles(const ToolRequest& request, ToolRun& run);

    // Tells what is worth a look: gaps, what was left out, where the envelope meets itself. With
    // pictures also how far it lies from the drawing's contour, and its pictures for the page.
    //
    // id       a name of its own on the page, a letter and digits; empty: no pictures
    // before   what is known of the tool already
    // result   the findings in the order of SortFindings(), which numbers the marks of pictures
    // fails    never: what cannot be shown is a finding
    ToolReview Review(const ToolRequest& request, const ToolRun& run, const std::string& id,
                      const std::vector<Finding>& before);

private:
    void DrawEnvelope(const ToolRequest& request, ToolRun& run);
    void DrawExactEnvelope(const ToolRequest& request, ToolRun& run);
    void TakeParts(const ToolRequest& request, ToolRun& run);
    void DrawForPage(const ToolRequest& request, const ToolRun& run, const std::string& id,
                     ToolReview& review);

    AcDbDatabase& m_database;
    std::unique_ptr<PictureBuilder> m_pictures;  // null: none are asked for
    // Nobody else touches the drawing between two tools: the scratch layer of solids is looked
    // through once.
    bool m_isSolidLayerEmpty = false;
};

}  // namespace product
