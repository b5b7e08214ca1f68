#include "product/tool/ToolPicture.h"

#include "product/picture/SolidPicture.h"
#include "product/tool/SolidBodies.h"

namespace product {
namespace {

// The rest of the axis line beyond the envelope: shares of its length.
constexpr double kSheetOverhang = 0.06;
constexpr double kPageOverhang = 0.04;
constexpr int kSheetSolidWidth = 900;  // pixels of the solid below a picture
// A dimension far away from a tool belongs to another view; the picture is not shrunk for it. Of
// the envelope's length.
constexpr double kNearby = 0.35;

Box Grown(Box box, double by) {
    box.Add(Point{box.low.x - by, box.low.y - by});
    box.Add(Point{box.high.x + by, box.high.y + by});
    return box;
}

std::vector<Vertex> Corners(const Box& box) {
    return {{box.low.x, box.low.y, 0},
            {box.high.x, box.low.y, 0},
            {box.high.x, box.high.y, 0},
            {box.low.x, box.high.y, 0}};
}

// The mirror image of the envelope's box in the axis.
void AddOtherHalf(Box& view, const Envelope& envelope, const Axis& axis) {
    if (axis.IsLevel()) {
        const Box& box = envelope.extents;
        view.Add(Point{box.low.x, 2 * axis.from.y - box.high.y});
        view.Add(Point{box.high.x, 2 * axis.from.y - box.low.y});
        return;
    }
    const AxisFrame frame(axis);
    for (const Vertex& v : envelope.vertices) {
        const Point p = frame.In({v.x, v.y});
        view.Add(frame.Out({p.x, -p.y}));
    }
}

// Along the axis past a box, which is the envelope's or that of what was picked.
void AddAxis(Picture& picture, const Box& box, double overhang, const Axis& axis) {
    if (box.IsEmpty()) return;
    picture.hasAxis = true;
    if (axis.IsLevel()) {
        picture.axisFrom = {box.low.x - overhang * box.Width(), axis.from.y};
        picture.axisTo = {box.high.x + overhang * box.Width(), axis.from.y};
    } else {
        const Box about = BoxAbout(axis, Corners(box));
        const AxisFrame frame(axis);
        picture.axisFrom = frame.Out({about.low.x - overhang * about.Width(), 0});
        picture.axisTo = frame.Out({about.high.x + overhang * about.Width(), 0});
    }
    picture.view.Add(picture.axisFrom);
    picture.view.Add(picture.axisTo);
}

void AddParts(Picture& picture, const ToolRequest& request, const ToolRun& run) {
    if (!run.parts || !run.parts->isSplit) return;
    picture.parts = {{run.parts->cut.ring, request.parts.colours.cut},
                     {run.parts->rest.ring, request.parts.colours.rest}};
}

// What was picked in, as it was given or found.
void AddWindow(Picture& picture, const ToolRequest& request) {
    const std::optional<Box>& window =
        request.rule.window ? request.rule.window : request.foundWindow;
    if (!window) return;
    picture.hasWindow = true;
    picture.window = *window;
    picture.view.Add(*window);
}

}  // namespace

Picture SheetPicture(Picture picture, const ToolRequest& request, const ToolRun& run,
                     std::string& warning) {
    picture.title = request.input;
    picture.envelope = run.envelope.vertices;
    AddParts(picture, request, run);
    picture.view = run.selection.box;
    AddWindow(picture, request);
    if (request.SeesAxis())
        AddAxis(picture, run.envelope.found ? run.envelope.extents : run.selection.box,
                kSheetOverhang, *request.axis);
    const Box tool = picture.view;
    for (const Box& dimension : picture.dimensions)
        if (tool.Meets(dimension, 0.0)) picture.view.Add(dimension);
    if (!run.solid.profile) return picture;
    std::string reason;
    if (const auto below = DrawSolid(ShownParts(request, run), kSheetSolidWidth, reason)) {
        picture.below = below->bytes;
        picture.belowWidth = below->width;
        picture.belowHeight = below->height;
    } else {
        warning = "the picture shows no solid: " + reason;
    }
    return picture;
}

Picture PagePicture(Picture picture, const ToolRequest& request, const ToolRun& run,
                    const std::vector<Finding>& findings) {
    picture.title = "Tool " + request.name;
    picture.envelope = run.envelope.vertices;
    AddParts(picture, request, run);
    picture.view = run.selection.box;
    if (run.envelope.found && request.axis) {
        const Box& box = run.envelope.extents;
        picture.view = box;
        AddOtherHalf(picture.view, run.envelope, *request.axis);
        const Box nearby = Grown(
            picture.view, kNearby * (request.axis->IsLevel() ? box.Width() : run.envelope.span));
        AddAxis(picture, box, kPageOverhang, *request.axis);
        for (const Box& dimension : picture.dimensions)
            if (nearby.Contains(dimension)) picture.view.Add(dimension);
    }
    AddWindow(picture, request);
    int number = 0;
    for (const Finding& finding : findings) {
        if (!finding.isWarning) continue;
        ++number;
        if (finding.at) picture.marks.push_back({*finding.at, std::to_string(number)});
    }
    return picture;
}

}  // namespace product
