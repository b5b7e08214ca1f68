#include "product/tool/ToolPicture.h"

#include "product/picture/SolidPicture.h"

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
    box.Add(Point{box.minX - by, box.minY - by});
    box.Add(Point{box.maxX + by, box.maxY + by});
    return box;
}

void AddAxis(Picture& picture, const Box& box, double overhang, double height) {
    picture.hasAxis = true;
    picture.axisFrom = box.minX - overhang * box.Width();
    picture.axisTo = box.maxX + overhang * box.Width();
    picture.axisY = height;
    picture.view.Add(Point{picture.axisFrom, height});
    picture.view.Add(Point{picture.axisTo, height});
}

}  // namespace

Picture SheetPicture(Picture picture, const ToolRequest& request, const ToolRun& run,
                     std::string& warning) {
    picture.title = request.input;
    picture.envelope = run.envelope.vertices;
    picture.view = run.selection.box;
    if (request.window) {
        picture.hasWindow = true;
        picture.window = *request.window;
        picture.view.Add(*request.window);
    }
    if (request.SeesAxis())
        AddAxis(picture, run.envelope.found ? run.envelope.extents : run.selection.box,
                kSheetOverhang, request.axis->from.y);
    const Box tool = picture.view;
    for (const Box& dimension : picture.dimensions)
        if (tool.Meets(dimension)) picture.view.Add(dimension);
    if (!run.solid.profile) return picture;
    std::string reason;
    if (const auto below = DrawSolid(*run.solid.profile, kSheetSolidWidth, reason)) {
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
    picture.view = run.selection.box;
    if (run.envelope.found && request.axis) {
        const double height = request.axis->from.y;
        const Box& box = run.envelope.extents;
        picture.view = box;
        picture.view.Add(Point{box.minX, 2 * height - box.maxY});
        picture.view.Add(Point{box.maxX, 2 * height - box.minY});
        const Box nearby = Grown(picture.view, kNearby * box.Width());
        AddAxis(picture, box, kPageOverhang, height);
        for (const Box& dimension : picture.dimensions)
            if (nearby.Contains(dimension)) picture.view.Add(dimension);
    }
    int number = 0;
    for (const Finding& finding : findings) {
        if (!finding.isWarning) continue;
        ++number;
        if (finding.at) picture.marks.push_back({*finding.at, std::to_string(number)});
    }
    return picture;
}

}  // namespace product
