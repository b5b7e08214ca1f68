// What is asked for: one tool of a drawing, or all of them. Programs and dialogs fill these records
// from whatever their users type; everything below takes them from here.
#pragma once

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "arxHeaders.h"
#include "EncircleCalInfo.h"
#include "plane/curve.h"
#include "product/base/Axis.h"
#include "product/detect/ReadSheet.h"
#include "product/parts/PartRequest.h"

namespace product {

// How the envelope is found.
enum class Algorithm {
    Live,    // what the four sides see of the chords
    Hatch,   // the boundary traced around the tool
    First,   // the two earlier forms of Live, for other modules' sake
    Second,  //
    Exact    // from the true curves
};

// As command lines and reports name them: 3, hatch, 1, 2, exact.
const char* NameOf(Algorithm algorithm);
// "upper", "lower", "both".
const char* NameOf(Half half);

// How one envelope is computed; lengths in drawing units. A new record holds the engine's own
// defaults, which stand in CEncircleCalInfo and nowhere else.
struct ToolParameters {
    ToolParameters();
    // Those of a stored task.
    explicit ToolParameters(const CEncircleCalInfo& stored);

    Half half = Half::Upper;
    Algorithm algorithm = Algorithm::Live;
    bool includeDashed;      // dashed and centre lines take part
    bool verticalEnds;       // both ends are closed by lines straight down to the axis
    double pointTolerance;   // points closer than this are one
    double lineTolerance;    // for tests between lines
    double horVerTolerance;  // a line is horizontal or vertical within this
    double arcPrecision;     // length of the chords that stand for curves
    double sideLength;       // how far in the left and right ends are looked for
    // Lines that what is picked may come to; more take minutes and gigabytes, which hardly anybody
    // means.
    double limit = 2e6;

    // Of the exact envelope, which has lengths of its own: 0 is the default that fits the size of
    // what lies in the half.
    struct ExactLengths {
        double point = 0;      // points closer than this are one: min(0.0005, 5e-6 size)
        double side = 0;       // how deep a face may lie: min(5, size / 10)
        double overshoot = 0;  // what is no longer may be an overshoot: min(0.5, size / 100)
        double curve = 0;      // how far arcs may leave splines: min(1e-3, 1e-5 size)
    } exact;
    bool takeCircles = false;  // full circles and ellipses take part; of the exact envelope alone

    bool IsLower() const { return half == Half::Lower; }
};

// The engine's record of the parameters; no axis.
// fails  Failure with NotCarriedOut for both halves, which no pipeline of the engine knows
CEncircleCalInfo EngineRecordOf(const ToolParameters& parameters);

// What is picked of model space. Patterns as the host's: * any run, ? any character, several
// separated by commas, letters in any case; UTF-8.
struct PickRule {
    std::optional<Box> window;
    bool isCrossing = false;                 // what the window touches counts, too
    std::vector<std::string> layers;         // only entities on one of these; empty: all
    std::vector<std::string> withoutLayers;  // and none on one of these
    std::vector<std::string> withoutTypes;   // names as files have them: INSERT, SPLINE

    bool HasFilters() const {
        return !layers.empty() || !withoutLayers.empty() || !withoutTypes.empty();
    }
    // What of a picked block's content takes part, by the layer on which it shows and its type; no
    // filter when nothing is filtered.
    detect::ItemFilter Filter() const;
};

// Files of the revolved solid; empty: not written.
struct SolidFiles {
    std::string sat, step, stl, png;
    double chordTolerance = 0;  // of the STL file; 0: a thousandth of the largest diameter
    std::optional<AcDb::UnitsValue> units;  // of the drawing; none: what its header says

    bool Any() const { return !sat.empty() || !step.empty() || !stl.empty() || !png.empty(); }
};

// What the files of the parts add to a name where each part has a file of its own.
constexpr const char* kCutSuffix = "-CUT";
constexpr const char* kRestSuffix = "-NOCUT";
constexpr const char* kProfileSuffix = "-profile";  // of a batch
// The same before the extension: "a.stl" becomes "a-CUT.stl". An empty path stays.
std::string WithSuffix(const std::string& path, const std::string& suffix);

// One tool of a drawing that was read.
struct ToolRequest {
    std::string input;  // the drawing's file, as messages name it
    ToolParameters parameters;

    // What is picked: these entities, else what the rule says. Envelopes of earlier runs among them
    // are replaced.
    std::optional<AcArray<AcDbObjectId>> picked;
    PickRule rule;
    // For the exact envelope: these curves stand for what is picked, which holds more than the
    // tool.
    std::vector<plane::Curve> curves;
    AcDbObjectId formerEnvelope;  // replaced too, if it still is one; null: none

    std::optional<Box> foundWindow;  // around a tool that was found; pictures show it

    // None: the outline of all four sides, and no solid.
    std::optional<Axis> axis;
    // The envelope is computed as if there were no axis; a solid still turns about it.
    bool ignoresAxis = false;
    bool SeesAxis() const { return axis.has_value() && !ignoresAxis; }

    // What is written; empty: not.
    std::string output;  // the drawing with its envelope
    std::string svg;     // a picture of drawing, envelope and solid
    SolidFiles solid;
    std::string profile;  // a drawing of the solid's profile alone
    PartRequest parts;

    // The tool's name; empty: the number of the frame around the envelope, else the input's name.
    std::string name;
    // The name that the solid's files are given, without folder and extension; when set, it must be
    // one that every file system takes.
    std::optional<std::string> fileName;
    // The option by which the folder of the solid's files was chosen; null: each file's own.
    const char* place = nullptr;
    // The solid passes through the drawing as in the plug-in's batch: see RevolveInDrawing().
    bool solidInDrawing = false;
};

// Where tools get their names from, when no rule is given: their frames, the stored tasks, the
// tools file, else the drawing's file.
struct NameRule {
    bool byFile = false;
    std::string pattern;  // of a text near the tool, as the host's wildcards; empty: none

    bool IsUsual() const { return !byFile && pattern.empty(); }
};

// Every tool of some drawings.
struct BatchRequest {
    ToolParameters parameters;       // stored tasks bring their own
    std::string out = "out";         // folder of the drawings and solids
    std::vector<std::string> tasks;  // stored tasks to run; empty: all
    bool fromFrames = false;         // although the drawing stores tasks
    NameRule name;
    // Written beside the SAT files.
    bool step = false, stl = false;
    bool profile = false;  // as TOOL-profile.dxf
    PartRequest parts;
    double chordTolerance = 0;  // of the STL files, as in SolidFiles
    // The page is wanted: its pictures are drawn and the envelopes checked against the drawing.
    bool withPage = false;
};

}  // namespace product
