// The command line: what is accepted, and one clear sentence for what is not.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "apps/qzenvelope/Options.h"

namespace {

using testing::HasSubstr;

app::Options Parse(const std::string& line) {
    std::istringstream words(line);
    std::vector<std::string> arguments;
    for (std::string word; words >> word;) arguments.push_back(word);
    return app::ParseOptions(arguments);
}

TEST(Options, NegativeNumbersInBothSpellings) {
    for (const char* line :
         {"compute a.dxf --centre=-5,-.5 --window=-1,-2,-30,40 --side-length=0",
          "compute a.dxf --centre -5,-.5 --window -1,-2,-30,40 --side-length 0",
          "compute --window -30,40,-1,-2 --center -5,-.5 a.dxf --side-length 0",
          "compute --window -1,40,-30,-2 --centre -5e0,-5e-1 --side-length 0 a.dxf"}) {
        SCOPED_TRACE(line);
        const app::ToolRequest o = Parse(line).compute.request;
        EXPECT_EQ("a.dxf", o.input);
        ASSERT_TRUE(o.axis && o.rule.window);
        EXPECT_EQ(-5, o.axis->from.x);
        EXPECT_EQ(-0.5, o.axis->from.y);
        EXPECT_TRUE(o.axis->IsLevel() && o.SeesAxis());
        EXPECT_EQ(-30, o.rule.window->low.x);
        EXPECT_EQ(-2, o.rule.window->low.y);
        EXPECT_EQ(-1, o.rule.window->high.x);
        EXPECT_EQ(40, o.rule.window->high.y);
        EXPECT_EQ(0, o.parameters.sideLength);
    }
}

TEST(Options, EveryOptionArrives) {
    const app::ComputeOptions o =
        Parse(
            "compute in.dxf --no-axis --half lower --algorithm hatch --include-dashed "
            "--vertical-ends --point-tolerance 0.1 --line-tolerance 0.2 --horver-tolerance 0.3 "
            "--arc-precision 0.4 --side-length 0.5 -o out.dxf --svg out.svg --json")
            .compute;
    const app::ToolParameters& p = o.request.parameters;
    EXPECT_FALSE(o.request.axis || o.request.rule.window || o.request.SeesAxis());
    EXPECT_TRUE(p.IsLower() && p.includeDashed && p.verticalEnds && o.json);
    EXPECT_EQ(app::Algorithm::Hatch, p.algorithm);
    EXPECT_EQ(0.1, p.pointTolerance);
    EXPECT_EQ(0.2, p.lineTolerance);
    EXPECT_EQ(0.3, p.horVerTolerance);
    EXPECT_EQ(0.4, p.arcPrecision);
    EXPECT_EQ(0.5, p.sideLength);
    EXPECT_EQ("out.dxf", o.request.output);
    EXPECT_EQ("out.svg", o.request.svg);
}

TEST(Options, WhatTheExactEnvelopeIsAskedForArrives) {
    const app::Options all = Parse(
        "compute in.dxf --axis -5,0,-5,-80 --point-tolerance 0.1 --side-length 0.2 --overshoot 0.3 "
        "--curve-tolerance 0.4 --take-circles --strict --crossing 0,0,-1,-1 --layer A* --layer B "
        "--exclude-layer DIM --exclude-type SPLINE --arc-precision 0.5");
    const app::ComputeOptions& o = all.compute;
    const app::ToolParameters& p = o.request.parameters;
    EXPECT_EQ(app::Algorithm::Exact, p.algorithm);
    EXPECT_EQ(app::Half::Both, p.half);
    EXPECT_TRUE(p.takeCircles && o.isStrict && !o.findsTools && o.request.rule.isCrossing);
    EXPECT_EQ(0.1, p.exact.point);
    EXPECT_EQ(0.2, p.exact.side);
    EXPECT_EQ(0.3, p.exact.overshoot);
    EXPECT_EQ(0.4, p.exact.curve);
    EXPECT_EQ(-80, o.request.axis->to.y);
    EXPECT_EQ((std::vector<std::string>{"A*", "B"}), o.request.rule.layers);
    EXPECT_EQ((std::vector<std::string>{"DIM"}), o.request.rule.withoutLayers);
    EXPECT_EQ((std::vector<std::string>{"SPLINE"}), o.request.rule.withoutTypes);
    EXPECT_EQ((std::vector<std::string>{"--arc-precision changes nothing with --algorithm exact"}),
              all.warnings);
    // Absent lengths are the law's own, whatever the steps have for them.
    const app::ComputeOptions plain = Parse("compute in.dxf").compute;
    EXPECT_TRUE(plain.findsTools);
    EXPECT_EQ(0, plain.request.parameters.exact.point);
    EXPECT_EQ(0, plain.request.parameters.exact.side);
    // The steps look at the upper half unless asked otherwise.
    EXPECT_EQ(app::Half::Upper,
              Parse("compute in.dxf --algorithm 3 --centre 0,0").compute.request.parameters.half);
    // An outline without an axis is the steps' alone.
    EXPECT_EQ(app::Algorithm::Live,
              Parse("compute in.dxf --no-axis").compute.request.parameters.algorithm);
}

TEST(Options, WhatABatchIsAskedForArrives) {
    const app::BatchOptions o =
        Parse(
            "batch a.dxf b.dxf --out dir --report page.html --jobs 3 --task one --task two --step "
            "--stl --chord-tolerance 0.02 --half lower --algorithm 2 --arc-precision 0.4")
            .batch;
    EXPECT_EQ((std::vector<std::string>{"a.dxf", "b.dxf"}), o.inputs);
    EXPECT_EQ("dir", o.request.out);
    EXPECT_EQ("page.html", o.report);
    EXPECT_EQ((std::vector<std::string>{"one", "two"}), o.request.tasks);
    EXPECT_EQ(3, o.jobs);
    EXPECT_TRUE(o.request.withPage && o.request.step && o.request.stl && !o.request.fromFrames);
    EXPECT_EQ(0.02, o.request.chordTolerance);
    EXPECT_TRUE(o.request.parameters.IsLower());
    EXPECT_EQ(app::Algorithm::Second, o.request.parameters.algorithm);
    EXPECT_EQ(0.4, o.request.parameters.arcPrecision);
    EXPECT_FALSE(Parse("batch a.dxf").batch.request.withPage);
}

// The help, the engine and the requests: one set of numbers.
TEST(Options, HelpNamesTheEnginesOwnDefaults) {
    const std::string help = Parse("compute --help").text;
    for (const char* usual : {"else 0.0005)", "(0.001)", "(1e-6)", "(0.3)", "else 5)"})
        EXPECT_THAT(help, HasSubstr(usual));
    const app::ToolParameters p = Parse("compute a.dxf --centre 0,0").compute.request.parameters;
    EXPECT_EQ(0.0005, p.pointTolerance);
    EXPECT_EQ(0.001, p.lineTolerance);
    EXPECT_EQ(1e-6, p.horVerTolerance);
    EXPECT_EQ(0.3, p.arcPrecision);
    EXPECT_EQ(5.0, p.sideLength);
    EXPECT_TRUE(!p.includeDashed && !p.verticalEnds && !p.IsLower());
}

TEST(Options, Refusals) {
    const struct {
        const char* line;
        const char* message;
    } cases[] = {
        {"", "no command given; use compute, batch, report, info or copy"},
        {"--json", "A subcommand is required"},
        {"frobnicate", "there is no command 'frobnicate'"},
        {"compute --centre 0,0", "IN is required"},
        {"copy a.dxf", "OUT is required"},
        {"compute a.dxf --auto --centre 0,0", "leave --centre, --axis and --no-axis out"},
        {"compute a.dxf --centre 0,0 --axis 0,0,1,0", "both say where the axis is"},
        {"compute a.dxf --axis 1,2,1,2", "has no length"},
        {"compute a.dxf --axis 1,2,1", "has 3 numbers where 4 are needed"},
        {"compute a.dxf --algorithm exact --no-axis", "the exact envelope has an axis"},
        {"compute a.dxf --algorithm 3 --half both", "--half both is of the exact envelope"},
        {"compute a.dxf --algorithm 3 --take-circles", "--take-circles is of the exact envelope"},
        {"compute a.dxf --window 0,0,1,1 --crossing 0,0,1,1", "both say what is picked"},
        {"compute a.dxf --crossing 0,0,0,1", "--crossing: '0,0,0,1' has no area"},
        {"compute a.dxf --overshoot 0", "leaves no length"},
        {"compute a.dxf --units furlong", "'furlong' is no unit"},
        {"compute a.dxf --centre 5", "has 1 number where 2 are needed"},
        {"compute a.dxf --centre 5,6,7", "has 3 numbers where 2 are needed"},
        {"compute a.dxf --centre a,b", "'a,b' is not a number"},
        {"compute a.dxf --centre 5;6", "something that is no number"},
        {"compute a.dxf --centre 0x10,0", "something that is no number"},
        {"compute a.dxf --centre nan,0", "'nan,0' is not a finite number"},
        {"compute a.dxf --centre 1e999,0", "is out of range"},
        {"compute a.dxf --centre 0,0 --window 1,2,3", "has 3 numbers where 4 are needed"},
        {"compute a.dxf --centre 0,0 --window 1,2,1,8", "has no area"},
        {"compute a.dxf --centre 0,0 --window 1,2,inf,8", "is not a finite number"},
        {"compute a.dxf --centre 0,0 --arc-precision 0", "leaves no length"},
        {"compute a.dxf --centre 0,0 --arc-precision -0.3", "--arc-precision: -0.3 is negative"},
        {"compute a.dxf --centre 0,0 --arc-precision nan", "is not a finite number"},
        {"compute a.dxf --centre 0,0 --point-tolerance 0", "leaves no length"},
        {"compute a.dxf --centre 0,0 --line-tolerance -1e-9", "is negative"},
        {"compute a.dxf --centre 0,0 --horver-tolerance inf", "is not a finite number"},
        {"compute a.dxf --centre 0,0 --side-length -5", "--side-length: -5 is negative"},
        {"compute a.dxf --centre 0,0 --half left", "--half"},
        {"compute a.dxf --centre 0,0 --algorithm 4", "--algorithm"},
        {"compute a.dxf --centre 0,0 --frobnicate", "--frobnicate"},
        {"compute a.dxf --centre --json", "--centre"},
        {"info", "DRAWING is required"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        try {
            Parse(c.line);
            ADD_FAILURE() << "accepted";
        } catch (const app::Failure& failure) {
            EXPECT_THAT(failure.what(), HasSubstr(c.message));
            EXPECT_EQ(app::kUsage, app::StatusOf(failure.Code()));
        }
    }
}

TEST(Options, HelpIsNoFailure) {
    for (const char* line : {"--help", "compute --help", "copy -h", "--version"}) {
        SCOPED_TRACE(line);
        const app::Options options = Parse(line);
        EXPECT_EQ(app::Options::Command::Nothing, options.command);
        EXPECT_THAT(options.text, HasSubstr("qzenvelope"));
    }
    EXPECT_THAT(Parse("compute --help").text, HasSubstr("--arc-precision"));
}

}  // namespace
