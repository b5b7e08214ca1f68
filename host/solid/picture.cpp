#include "host/solid/picture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "host/base/angles.h"
#include "host/solid/raster.h"

namespace host::solid {

namespace {

constexpr int kSamples = 2;           // painted this many times as wide and high, and halved
constexpr double kMargin = 0.04;      // of the width, around everything
constexpr double kYaw = 0.55;         // the right end comes forward by this angle
constexpr double kPitch = 0.35;       // seen from above by this angle
constexpr int kCircleSteps = 180;     // of an edge circle
constexpr double kSharpCorner = 0.2;  // tangents that differ by more (radians) make an edge
constexpr double kSurelyAway = 0.1;   // facets with such normals do not reach the visible rim
constexpr double kTallest = 1.5;      // height of a panel to its width, at most

const Colour kSteel{0.70, 0.75, 0.82};
const Colour kEdge{0.16, 0.19, 0.24};
const Colour kFill{0.86, 0.90, 0.95};
const Colour kAxis{0.80, 0.15, 0.12};

// Where the viewer stands, in frame coordinates: x along the axis, y up, z towards the viewer
// before the turn.
struct View {
    AcGeVector3d right, up, away;

    View()
        : right(std::cos(kYaw), 0.0, -std::sin(kYaw)),
          up(-std::sin(kPitch) * std::sin(kYaw), std::cos(kPitch),
             -std::sin(kPitch) * std::cos(kYaw)),
          away(-std::cos(kPitch) * std::sin(kYaw), -std::sin(kPitch),
               -std::cos(kPitch) * std::cos(kYaw)) {}
};

AcGeVector3d InFrame(const Frame& frame, const AcGeVector3d& v) {
    return {v.dotProduct(frame.axis), v.dotProduct(frame.radial), v.dotProduct(frame.Normal())};
}

// Light from above left of the viewer, a little from everywhere, and a shine.
Colour Shade(const AcGeVector3d& normal, const View& view, const Colour& paint) {
    const AcGeVector3d light = (view.up * 0.75 - view.right * 0.45 - view.away * 0.65).normal();
    const AcGeVector3d half = (light - view.away).normal();
    const double lit = (std::max)(0.0, normal.dotProduct(light));
    const double facing = (std::max)(0.0, -normal.dotProduct(view.away));
    const double shine = 0.35 * std::pow((std::max)(0.0, normal.dotProduct(half)), 40.0);
    const double base = 0.28 + 0.50 * lit + 0.34 * facing;
    return {paint.r * base + shine, paint.g * base + shine, paint.b * base + shine};
}

Colour ColourOf(int rgb, const Colour& usual) {
    if (rgb < 0) return usual;
    return {((rgb >> 16) & 0xFF) / 255.0, ((rgb >> 8) & 0xFF) / 255.0, (rgb & 0xFF) / 255.0};
}

// Paler, for the profile's plane.
Colour Tinted(const Colour& c) {
    return {1.0 - 0.45 * (1.0 - c.r), 1.0 - 0.45 * (1.0 - c.g), 1.0 - 0.45 * (1.0 - c.b)};
}

// Maps view coordinates to the canvas.
struct Fit {
    double scale = 1.0, left = 0.0, top = 0.0;
    int width = 0, height = 0;

    // Fills the width with what lies between the bounds, unless the height would be too great.
    Fit(double minX, double maxX, double minY, double maxY, int width_) : width(width_) {
        const double margin = kMargin * width;
        const double room = width - 2.0 * margin;
        scale = (std::min)(room / (maxX - minX), kTallest * room / (maxY - minY));
        height = static_cast<int>(std::ceil((maxY - minY) * scale + 2.0 * margin));
        left = 0.5 * width - 0.5 * (minX + maxX) * scale;
        top = margin + maxY * scale;
    }
    ScreenPoint operator()(double x, double y, double depth = 0.0) const {
        return {left + x * scale, top - y * scale, depth};
    }
};

class SolidPainter {
public:
    SolidPainter(const std::vector<PaintedSolid>& solids, int width)
        : solids_(solids),
          frame_(solids.front().profile->frame),
          fit_(FitMeshes(width)),
          canvas_(fit_.width, fit_.height) {}

    Canvas Paint() {
        for (const PaintedSolid& solid : solids_) PaintFaces(solid);
        for (const PaintedSolid& solid : solids_)
            for (const Chain& chain : solid.profile->chains) PaintEdges(chain);
        return std::move(canvas_);
    }

private:
    void PaintFaces(const PaintedSolid& solid) {
        const Colour paint = ColourOf(solid.rgb, kSteel);
        std::vector<ScreenPoint> corners;
        std::vector<Colour> shades;
        std::vector<char> turnedAway;
        for (const AcGePoint3d& p : solid.mesh.points) corners.push_back(OnScreen(Local(p)));
        for (const AcGeVector3d& n : solid.mesh.normals) {
            const AcGeVector3d normal = InFrame(frame_, n);
            shades.push_back(Shade(normal, view_, paint));
            turnedAway.push_back(normal.dotProduct(view_.away) > kSurelyAway ? 1 : 0);
        }
        for (const std::array<int, 3>& t : solid.mesh.triangles) {
            // The solid is closed: what looks away is hidden by what looks here.
            if (std::all_of(t.begin(), t.end(), [&](int corner) {
                    return turnedAway[static_cast<std::size_t>(corner)] != 0;
                }))
                continue;
            ScreenPoint points[3];
            Colour colours[3];
            for (std::size_t i = 0; i < 3; ++i) {
                points[i] = corners[static_cast<std::size_t>(t[i])];
                colours[i] = shades[static_cast<std::size_t>(t[i])];
            }
            canvas_.FillTriangle(points, colours);
        }
    }

    AcGeVector3d Local(const AcGePoint3d& p) const { return InFrame(frame_, p - frame_.origin); }
    ScreenPoint OnScreen(const AcGeVector3d& p) const {
        return fit_(p.dotProduct(view_.right), p.dotProduct(view_.up), p.dotProduct(view_.away));
    }

    Fit FitMeshes(int width) const {
        double low[2] = {HUGE_VAL, HUGE_VAL}, high[2] = {-HUGE_VAL, -HUGE_VAL};
        for (const PaintedSolid& solid : solids_)
            for (const AcGePoint3d& p : solid.mesh.points) {
                const AcGeVector3d q = Local(p);
                const double xy[2] = {q.dotProduct(view_.right), q.dotProduct(view_.up)};
                for (int i = 0; i < 2; ++i) {
                    low[i] = (std::min)(low[i], xy[i]);
                    high[i] = (std::max)(high[i], xy[i]);
                }
            }
        return Fit(low[0], high[0], low[1], high[1], width);
    }

    void PaintEdges(const Chain& chain) {
        const std::size_t n = chain.pieces.size();
        for (std::size_t i = 0; i < n; ++i) {
            const Piece& piece = chain.pieces[i];
            const bool last = i + 1 == n;
            if (last && !chain.closed) break;
            const Vector in = piece.EndDirection();
            const Vector out = chain.pieces[(i + 1) % n].StartDirection();
            if (std::atan2(std::fabs(Cross(in, out)), Dot(in, out)) > kSharpCorner)
                PaintCircle(piece.to);
        }
    }

    void PaintCircle(const Point& corner) {
        // Edges win over the facets next to them, which stand out before the true circle.
        const double bias = 0.01 * corner.y + 2.0 / fit_.scale;
        ScreenPoint before;
        for (int k = 0; k <= kCircleSteps; ++k) {
            const double a = 2.0 * kPi * k / kCircleSteps;
            const ScreenPoint at =
                OnScreen({corner.x, corner.y * std::cos(a), corner.y * std::sin(a)});
            if (k > 0) canvas_.DrawLine(before, at, 1.3 * kSamples, kEdge, bias);
            before = at;
        }
    }

    const std::vector<PaintedSolid>& solids_;
    const Frame& frame_;
    const View view_;
    const Fit fit_;
    Canvas canvas_;
};

plane::Box ProfileBox(const std::vector<PaintedSolid>& solids) {
    plane::Box box;
    for (const PaintedSolid& solid : solids)
        for (const Chain& chain : solid.profile->chains)
            for (const Piece& piece : chain.pieces) box.Add(BoxOf(piece));
    box.low.y = 0.0;
    return box;
}

// Points along a chain, arcs in steps of about 3 degrees.
std::vector<Point> PointsAlong(const Chain& chain) {
    std::vector<Point> points;
    for (const Piece& piece : chain.pieces) {
        points.push_back(piece.from);
        const double h = piece.HalfAngle();
        const Vector direction = piece.StartDirection();
        const double start = FullAngle(direction.y, direction.x);
        const int steps = 1 + static_cast<int>(std::fabs(h) / 0.025);
        for (int k = 1; k < steps; ++k) {
            // By the chord from the start: it turns with half the angle swept.
            const double swept = 2.0 * h * k / steps;
            const double chord = 2.0 * piece.radius * std::sin(0.5 * std::fabs(swept));
            const double to = start + 0.5 * swept;
            points.push_back(
                {piece.from.x + chord * std::cos(to), piece.from.y + chord * std::sin(to)});
        }
    }
    points.push_back(chain.pieces.back().to);
    return points;
}

void PaintAxis(Canvas& canvas, const Fit& fit, const plane::Box& box) {
    const double reach = 0.02 * (box.high.x - box.low.x);
    const double from = fit(box.low.x - reach, 0.0).x, to = fit(box.high.x + reach, 0.0).x;
    const double y = fit(0.0, 0.0).y, unit = 6.0 * kSamples;
    for (double x = from; x < to; x += 6.0 * unit) {
        const ScreenPoint dash[] = {{x, y, 0.0}, {(std::min)(x + 4.0 * unit, to), y, 0.0}};
        canvas.DrawLine(dash[0], dash[1], 1.2 * kSamples, kAxis, 0.0);
        if (x + 5.0 * unit < to)
            canvas.DrawLine({x + 5.0 * unit, y, 0.0}, {x + 5.2 * unit, y, 0.0}, 1.2 * kSamples,
                            kAxis, 0.0);
    }
}

Canvas PaintProfiles(const std::vector<PaintedSolid>& solids, int width) {
    const plane::Box box = ProfileBox(solids);
    const Fit fit(box.low.x, box.high.x, box.low.y, box.high.y, width);
    Canvas canvas(fit.width, fit.height);
    // Even-odd: cavities come out empty, since each is closed by the axis like the outside.
    std::vector<std::vector<ScreenPoint>> lines;
    for (const PaintedSolid& solid : solids) {
        Colour fill = solid.rgb < 0 ? kFill : Tinted(ColourOf(solid.rgb, kFill));
        for (const Chain& chain : solid.profile->chains) {
            std::vector<ScreenPoint> polygon;
            for (const Point& p : PointsAlong(chain)) polygon.push_back(fit(p.x, p.y));
            canvas.FillPolygon(polygon, fill);
            lines.push_back(std::move(polygon));
            fill = Colour{1.0, 1.0, 1.0};
        }
    }
    for (const std::vector<ScreenPoint>& line : lines)
        for (std::size_t i = 0; i + 1 < line.size(); ++i)
            canvas.DrawLine(line[i], line[i + 1], 1.6 * kSamples, kEdge, 0.0);
    PaintAxis(canvas, fit, box);
    return canvas;
}

}  // namespace

Image RenderSolid(const std::vector<PaintedSolid>& solids, int width) {
    return SolidPainter(solids, width * kSamples).Paint().Halved();
}

Image RenderPicture(const std::vector<PaintedSolid>& solids, int width) {
    const Canvas solid = SolidPainter(solids, width * kSamples).Paint();
    const Canvas flat = PaintProfiles(solids, width * kSamples);
    Canvas both(solid.Width(), solid.Height() + flat.Height());
    both.Put(solid, 0, 0);
    both.Put(flat, 0, solid.Height());
    return both.Halved();
}

}  // namespace host::solid
