// LINE, PLINE and ARC: so that a missing face can be drawn.
#include <algorithm>
#include <cmath>

#include "aced.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "dbpl.h"
#include "host/base/angles.h"
#include "host/ed/command_tools.h"
#include "host/ed/session.h"

namespace host {
namespace {

constexpr int kDragChords = 32;  // of an arc that follows the pointer

struct Circle {
    AcGePoint3d centre;
    double radius = 0.0;
};

// Through three points; false when they lie on a line.
bool Through(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c, Circle& circle) {
    const double bx = b.x - a.x, by = b.y - a.y, cx = c.x - a.x, cy = c.y - a.y;
    const double cross = 2.0 * (bx * cy - by * cx);
    const double size = bx * bx + by * by + cx * cx + cy * cy;
    if (std::fabs(cross) <= 1e-12 * size) return false;
    const double b2 = bx * bx + by * by, c2 = cx * cx + cy * cy;
    const AcGeVector3d out((cy * b2 - by * c2) / cross, (bx * c2 - cx * b2) / cross, 0.0);
    circle.centre = a + out;
    circle.radius = out.length();
    return true;
}

double AngleOf(const AcGePoint3d& centre, const AcGePoint3d& p) {
    return std::atan2(p.y - centre.y, p.x - centre.x);
}

std::vector<Piece> ArcPieces(const AcGePoint3d& centre, double radius, double start, double sweep) {
    std::vector<Piece> pieces;
    const auto at = [&](int i) {
        const double angle = start + sweep * i / kDragChords;
        return centre + AcGeVector3d(std::cos(angle), std::sin(angle), 0.0) * radius;
    };
    for (int i = 0; i < kDragChords; ++i) pieces.push_back({at(i), at(i + 1)});
    return pieces;
}

// Counter-clockwise from the start.
double SweepTo(double start, double end) {
    double sweep = std::fmod(end - start, 2.0 * kPi);
    if (sweep <= 0.0) sweep += 2.0 * kPi;
    return sweep;
}

CommandEnd AddArc(AcApDocument& document, const Circle& circle, double start, double end) {
    auto arc = std::make_unique<AcDbArc>(circle.centre, circle.radius, start, end);
    return AddToDrawing(*document.database(), std::move(arc)) == Acad::eOk ? CommandEnd::kEnded
                                                                           : CommandEnd::kFailed;
}

CommandEnd ArcAboutCentre(AcApDocument& document) {
    const Answer centre = AskPoint(L"\nSpecify center point of arc: ");
    if (centre.kind != Answer::kGiven) return CommandEnd::kCancelled;
    PointRequest request;
    request.base = &centre.point;
    const Answer start = AskPoint(L"\nSpecify start point of arc: ", request);
    if (start.kind != Answer::kGiven) return CommandEnd::kCancelled;
    const Circle circle{centre.point, start.point.distanceTo(centre.point)};
    const double from = AngleOf(centre.point, start.point);
    if (circle.radius == 0.0) {
        Say(L"The start lies on the center.");
        return CommandEnd::kFailed;
    }
    request.drag = [&](const AcGePoint3d& at) {
        return ArcPieces(circle.centre, circle.radius, from,
                         SweepTo(from, AngleOf(circle.centre, at)));
    };
    const Answer end = AskPoint(L"\nSpecify end point of arc: ", request);
    if (end.kind != Answer::kGiven) return CommandEnd::kCancelled;
    return AddArc(document, circle, from, AngleOf(circle.centre, end.point));
}

// A polyline while it is drawn.
struct Path {
    struct Corner {
        AcGePoint3d point;
        double bulge = 0.0;  // of the segment that starts here
    };
    std::vector<Corner> corners;
    bool isArc = false;

    // Where the last segment points to at its end.
    double Heading() const {
        if (corners.size() < 2) return 0.0;
        const Corner& from = corners[corners.size() - 2];
        const AcGePoint3d& to = corners.back().point;
        return AngleOf(from.point, to) + 2.0 * std::atan(from.bulge);
    }
    // Of an arc that goes on smoothly to the point.
    double BulgeTo(const AcGePoint3d& to) const {
        const double turn = AngleOf(corners.back().point, to) - Heading();
        return std::tan(std::remainder(turn, 2.0 * kPi) / 2.0);
    }
    void Go(const AcGePoint3d& to) {
        if (isArc) corners.back().bulge = BulgeTo(to);
        corners.push_back({to, 0.0});
    }
    std::unique_ptr<AcDbPolyline> Make(bool isClosed) const {
        auto line = std::make_unique<AcDbPolyline>();
        for (size_t i = 0; i < corners.size(); ++i)
            static_cast<void>(line->addVertexAt(static_cast<unsigned>(i),
                                                AcGePoint2d(corners[i].point.x, corners[i].point.y),
                                                corners[i].bulge));
        line->setClosed(isClosed);
        return line;
    }
    std::vector<Piece> With(const AcGePoint3d& next) const {
        Path path = *this;
        if (!next.isEqualTo(corners.back().point)) path.Go(next);
        std::vector<Piece> pieces;
        AppendOutline(*path.Make(false), pieces);
        return pieces;
    }
};

}  // namespace

CommandEnd DrawLine(AcApDocument* document) {
    const Answer first = AskPoint(L"\nSpecify first point: ");
    if (first.kind != Answer::kGiven) return CommandEnd::kCancelled;
    std::vector<AcGePoint3d> points{first.point};
    std::vector<AcDbObjectId> lines;
    while (true) {
        PointRequest request;
        const AcGePoint3d base = points.back();
        request.base = &base;
        request.keywords = {L"Close", L"Undo"};
        Answer next = AskPoint(points.size() > 2 ? L"\nSpecify next point or [Close/Undo]: "
                                                 : L"\nSpecify next point or [Undo]: ",
                               request);
        const bool isClosing = next.kind == Answer::kKeyword && next.text == L"CLOSE";
        if (next.kind == Answer::kKeyword && !isClosing) {
            if (lines.empty()) {
                Say(L"All segments are undone.");
                continue;
            }
            AcDbObjectPointer<AcDbEntity> line(lines.back(), AcDb::kForWrite);
            if (line.openStatus() == Acad::eOk) static_cast<void>(line->erase());
            lines.pop_back();
            points.pop_back();
            continue;
        }
        if (isClosing && points.size() < 3) {
            Say(L"Two segments are needed before they can be closed.");
            continue;
        }
        if (isClosing) next.point = points.front();
        if (!isClosing && next.kind != Answer::kGiven) break;
        AcDbObjectId id;
        if (AddToDrawing(*document->database(), std::make_unique<AcDbLine>(base, next.point),
                         &id) != Acad::eOk)
            return CommandEnd::kFailed;
        lines.push_back(id);
        points.push_back(next.point);
        acedUpdateDisplay();
        if (isClosing) break;
    }
    return CommandEnd::kEnded;
}

CommandEnd DrawPolyline(AcApDocument* document) {
    const Answer first = AskPoint(L"\nSpecify start point: ");
    if (first.kind != Answer::kGiven) return CommandEnd::kCancelled;
    Path path;
    path.corners.push_back({first.point, 0.0});
    bool isClosed = false;
    while (true) {
        PointRequest request;
        const AcGePoint3d base = path.corners.back().point;
        request.base = &base;
        request.keywords = {L"Arc", L"Line", L"Close", L"Undo"};
        request.drag = [&path](const AcGePoint3d& at) { return path.With(at); };
        const Answer next =
            AskPoint(path.isArc ? L"\nSpecify endpoint of arc or [Line/Close/Undo]: "
                                : L"\nSpecify next point or [Arc/Close/Undo]: ",
                     request);
        if (next.kind == Answer::kGiven) {
            if (!next.point.isEqualTo(base)) path.Go(next.point);
            continue;
        }
        if (next.kind == Answer::kEscape) return CommandEnd::kCancelled;
        if (next.kind != Answer::kKeyword) break;
        if (next.text == L"ARC" || next.text == L"LINE") {
            path.isArc = next.text == L"ARC";
        } else if (next.text == L"UNDO" && path.corners.size() > 1) {
            path.corners.pop_back();
            path.corners.back().bulge = 0.0;
        } else if (next.text == L"CLOSE" && path.corners.size() > 2) {
            if (path.isArc) path.corners.back().bulge = path.BulgeTo(path.corners.front().point);
            isClosed = true;
            break;
        } else {
            Say(L"There is nothing to " + next.text + L" yet.");
        }
    }
    if (path.corners.size() < 2) return CommandEnd::kCancelled;
    const bool isMade = AddToDrawing(*document->database(), path.Make(isClosed)) == Acad::eOk;
    acedUpdateDisplay();
    return isMade ? CommandEnd::kEnded : CommandEnd::kFailed;
}

CommandEnd DrawArc(AcApDocument* document) {
    PointRequest request;
    request.keywords = {L"Center"};
    const Answer first = AskPoint(L"\nSpecify start point of arc or [Center]: ", request);
    if (first.kind == Answer::kKeyword) return ArcAboutCentre(*document);
    if (first.kind != Answer::kGiven) return CommandEnd::kCancelled;
    request.keywords.clear();
    request.base = &first.point;
    const Answer second = AskPoint(L"\nSpecify second point of arc: ", request);
    if (second.kind != Answer::kGiven) return CommandEnd::kCancelled;
    // The order of the three tells which way round.
    const auto arcTo = [&](const AcGePoint3d& end, Circle& circle, double& from, double& to) {
        if (!Through(first.point, second.point, end, circle)) return false;
        from = AngleOf(circle.centre, first.point);
        to = AngleOf(circle.centre, end);
        const double middle = AngleOf(circle.centre, second.point);
        if (SweepTo(from, middle) > SweepTo(from, to)) std::swap(from, to);
        return true;
    };
    request.drag = [&](const AcGePoint3d& at) {
        Circle circle;
        double from = 0.0, to = 0.0;
        if (!arcTo(at, circle, from, to)) return std::vector<Piece>{{first.point, at}};
        return ArcPieces(circle.centre, circle.radius, from, SweepTo(from, to));
    };
    const Answer third = AskPoint(L"\nSpecify end point of arc: ", request);
    if (third.kind != Answer::kGiven) return CommandEnd::kCancelled;
    Circle circle;
    double from = 0.0, to = 0.0;
    if (!arcTo(third.point, circle, from, to)) {
        Say(L"The three points lie on a line.");
        return CommandEnd::kFailed;
    }
    return AddArc(*document, circle, from, to);
}

}  // namespace host
