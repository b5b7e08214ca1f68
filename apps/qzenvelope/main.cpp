// qzenvelope: envelopes of rotating tools from the command line.

#include <cstdio>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "product/tool/Drawing.h"
#include "product/tool/EnvelopeRun.h"
#include "product/report/Info.h"
#include "apps/qzenvelope/Options.h"
#include "product/picture/PictureBuilder.h"
#include "product/report/Report.h"
#include "product/tool/SolidRun.h"
#include "apps/qzenvelope/BatchRun.h"
#include "apps/qzenvelope/FileRoles.h"
#include "host/sys/file_io.h"

namespace {

using namespace app;

// The rest of the axis line beyond the outline, as drawn in the picture: a share of its width.
constexpr double kAxisOverhangInPicture = 0.06;
constexpr int kSolidWidth = 900;  // pixels of the solid below a picture

void Warn(const std::string& input, const std::string& warning) {
    std::fprintf(stderr, "qzenvelope: %s: warning: %s\n", input.c_str(), warning.c_str());
}

void WritePicture(Picture picture, const EnvelopeRun& run, const SolidRun& solid,
                  const ComputeOptions& options) {
    picture.title = options.input;
    picture.envelope = run.envelope.vertices;
    picture.view = run.selection.box;
    if (options.window) {
        picture.hasWindow = true;
        picture.window = *options.window;
        picture.view.Add(*options.window);
    }
    if (!options.noAxis && options.centre) {
        const Box& box = run.envelope.found ? run.envelope.extents : run.selection.box;
        picture.hasAxis = true;
        picture.axisFrom = box.minX - kAxisOverhangInPicture * box.Width();
        picture.axisTo = box.maxX + kAxisOverhangInPicture * box.Width();
        picture.axisY = options.centre->y;
        picture.view.Add(Point{picture.axisFrom, picture.axisY});
        picture.view.Add(Point{picture.axisTo, picture.axisY});
    }
    // The tool's own dimensions are shown whole.
    const Box tool = picture.view;
    for (const Box& dimension : picture.dimensions)
        if (tool.Meets(dimension)) picture.view.Add(dimension);
    std::string reason;
    if (solid.profile) {
        if (const auto below = DrawSolid(solid, kSolidWidth, reason)) {
            picture.below = below->bytes;
            picture.belowWidth = below->width;
            picture.belowHeight = below->height;
        } else {
            Warn(options.input, "the picture shows no solid: " + reason);
        }
    }
    const std::string svg = ToSvg(picture);
    host::FileError error;
    if (!host::WriteFileAtomically(options.svg, {std::string_view(svg)}, error))
        throw Failure(kNoResult, options.svg + ": the picture cannot be written: " + error.reason +
                                     "; choose another place with --svg");
}

void Print(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0)
        throw Failure(kNoResult, "the standard output cannot be written");
}

ExitStatus Compute(const ComputeOptions& options) {
    CheckFiles(options);
    Drawing drawing(options.input);
    // Taken before the run, which switches every layer on.
    Picture picture;
    if (!options.svg.empty()) picture = PictureBuilder(drawing.Database()).Run();
    const EnvelopeRun run = RunEnvelope(drawing.Database(), options);
    for (const std::string& warning : run.warnings) Warn(options.input, warning);
    SolidRun solid;
    if (run.envelope.found && options.centre)
        solid = RevolveRing(run.envelope.vertices, run.envelope.closed, *options.centre);
    if (run.envelope.found && !options.output.empty()) drawing.Write(options.output);
    if (!options.svg.empty()) WritePicture(std::move(picture), run, solid, options);
    if (run.envelope.found && options.WantsSolidFile())
        WriteSolidFiles(solid, ToolName(run.envelope, options.input), drawing.Database(), options);
    Print(options.json ? RunJson(run, solid, drawing, options)
                       : RunSummary(run, solid, drawing, options));
    if (run.envelope.found) return kDone;
    throw Failure(kNoResult,
                  options.input +
                      ": no envelope: nothing that was picked is seen from the chosen half; check"
                      " --centre and --half, and the list of what was left out");
}

ExitStatus Run(const std::vector<std::string>& arguments) {
    const Options options = ParseOptions(arguments);
    switch (options.command) {
        case Options::Command::Compute:
            return Compute(options.compute);
        case Options::Command::Batch:
            return RunBatch(options.batch);
        case Options::Command::Info:
            Print(InfoText(Drawing(options.info.input), options.info.input, options.info.json));
            return kDone;
        case Options::Command::Copy:
            Drawing(options.copy.input).Write(options.copy.output);
            return kDone;
        case Options::Command::Nothing:
            Print(options.text);
            return kDone;
    }
    return kUsage;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const Failure& failure) {
        std::fprintf(stderr, "qzenvelope: %s\n", failure.what());
        return failure.Status();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "qzenvelope: %s\n", error.what());
        return kNoResult;
    }
}
