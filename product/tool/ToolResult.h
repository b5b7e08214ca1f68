// What came of one tool and of one drawing of a batch: plain values that reports show and that
// travel between processes.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "product/check/Finding.h"
#include "product/parts/Figures.h"

namespace product {

struct ToolResult {
    std::string id;                  // a name of its own in this batch, letters and digits
    std::string name, task, handle;  // handle of the envelope
    bool isComputed = false;         // an envelope was made
    bool isExported = false;         // and everything that was asked for is written
    std::string reason;              // what failed
    double seconds = 0;              // of envelope and files, without reports
    int entities = 0, vertices = 0;
    // Drawing units; 0: not known.
    double length = 0, diameter = 0, volume = 0;
    std::string unit;
    ToolFigures figures;  // for the table
    bool lowerHalf = false;
    std::optional<double> offContour, betweenHalves;
    std::vector<Finding> findings;
    std::vector<std::string> files;
    // For the page only.
    std::string svg, png;  // an element; a PNG file in base 64

    bool IsGood() const { return isComputed && isExported; }
    bool HasWarning() const;
    // As of a single computation.
    std::string Verdict() const;
};

struct DrawingResult {
    std::string input, output, source;  // output: empty when it was not written
    std::string reason;                 // what failed beside the tools; empty: nothing
    bool isUnreadable = false;
    bool isUnchanged = false;  // taken over from an earlier batch
    double seconds = 0;
    std::vector<std::string> notes;  // faults of the file that were passed over
    std::vector<ToolResult> tools;

    // Gives back their memory; clearing a string keeps it.
    void DropPictures() {
        for (ToolResult& tool : tools) {
            std::string().swap(tool.svg);
            std::string().swap(tool.png);
        }
    }
};

}  // namespace product
