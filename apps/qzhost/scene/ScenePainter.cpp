#include "apps/qzhost/scene/ScenePainter.h"

#include <algorithm>
#include <cmath>

#include "apps/qzhost/scene/Dashes.h"
#include "apps/qzhost/scene/SceneText.h"

namespace app {
namespace {

constexpr double kSmallestLabel = 3.0;  // pixels; smaller letters are not drawn
constexpr double kDot = 1.0;            // pixels; what is smaller is a dot
constexpr double kChordError = 0.2;     // pixels that a chord may leave its arc
constexpr int kMostChords = 4096;
constexpr qsizetype kBatch = 4096;  // lines drawn with one call

// Lines of one pen, drawn together.
class Batch {
public:
    explicit Batch(QPainter& painter) : m_painter(painter) {}
    ~Batch() { Flush(); }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    void SetPen(QRgb colour, double width) {
        if (m_isSet && colour == m_colour && width == m_width) return;
        Flush();
        m_isSet = true;
        m_colour = colour;
        m_width = width;
        // Hairs without smoothing have a fast way of their own.
        const bool isSmooth = m_painter.testRenderHint(QPainter::Antialiasing);
        QPen pen(QColor::fromRgb(colour), !isSmooth && width < 1.5 ? 0.0 : width);
        pen.setCapStyle(width > 2.0 ? Qt::RoundCap : Qt::FlatCap);
        m_painter.setPen(pen);
        m_painter.setBrush(Qt::NoBrush);
    }
    void Add(const QPointF& from, const QPointF& to) {
        m_lines.append(QLineF(from, to));
        if (m_lines.size() >= kBatch) Flush();
    }
    void Flush() {
        if (!m_lines.isEmpty()) m_painter.drawLines(m_lines);
        m_lines.clear();
    }
    // Something else has used the painter.
    void Forget() { m_isSet = false; }

private:
    QPainter& m_painter;
    QVector<QLineF> m_lines;
    QRgb m_colour = 0;
    double m_width = 0.0;
    bool m_isSet = false;
};

class ItemPainter {
public:
    ItemPainter(QPainter& painter, const DashPatterns& patterns, const SceneView& view,
                const SceneLook& look)
        : m_painter(painter),
          m_batch(painter),
          m_patterns(patterns),
          m_view(view),
          m_look(look),
          m_frame(QRectF(QPointF(0, 0), QSizeF(view.size)).adjusted(-4, -4, 4, 4)) {}

    void Paint(const SceneChunk& chunk, const SceneItem& item) {
        for (unsigned i = 0; i < item.parts; ++i) Paint(chunk, chunk.parts[item.firstPart + i]);
        for (unsigned i = 0; i < item.labels; ++i) Paint(chunk.labels[item.firstLabel + i]);
    }
    void Dot(const QPointF& world, QRgb colour) {
        const QPointF at = m_view.ToPixel(world);
        // The same dot again would change nothing.
        const QPoint pixel(static_cast<int>(std::floor(at.x())),
                           static_cast<int>(std::floor(at.y())));
        if (pixel == m_lastDot && colour == m_lastDotColour) return;
        m_lastDot = pixel;
        m_lastDotColour = colour;
        m_batch.SetPen(Shown(colour), m_look.hair + m_look.widen);
        m_batch.Add(QPointF(pixel) + QPointF(0.3, 0.5), QPointF(pixel) + QPointF(0.7, 0.5));
    }
    void Finish() { m_batch.Flush(); }

private:
    QRgb Shown(QRgb colour) const {
        if (m_look.override != 0) return m_look.override;
        return colour == kForeground ? m_look.ink : colour;
    }

    void Paint(const SceneChunk& chunk, const ScenePart& part) {
        const QPointF* const points = chunk.points.data() + part.first;
        m_path.clear();
        if (part.kind == ScenePart::kArc)
            Tessellate(points);
        else
            for (unsigned i = 0; i < part.count; ++i) AddToPath(m_view.ToPixel(points[i]));
        if (part.kind == ScenePart::kFill) return Fill(part);
        const double weight = part.weight * m_look.pixelsPerMillimetre / 10.0;
        // Up to a quarter of a millimetre everything is a hair.
        const double width = part.weight > 2 ? (std::max)(weight, m_look.hair) : m_look.hair;
        m_batch.SetPen(Shown(part.colour), width + m_look.widen);
        const std::vector<double>& dashes = m_patterns[static_cast<size_t>(part.pattern)];
        const double scale = static_cast<double>(part.patternScale) * m_view.scale;
        if (!dashes.empty() &&
            WalkDashes(m_path, dashes, scale, m_frame,
                       [this](const QPointF& from, const QPointF& to) { m_batch.Add(from, to); }))
            return;
        for (size_t i = 1; i < m_path.size(); ++i) {
            QPointF from = m_path[i - 1], to = m_path[i];
            if (ClipToFrame(from, to, m_frame)) m_batch.Add(from, to);
        }
    }

    // Steps below half a pixel are left out, but for the last.
    void AddToPath(const QPointF& at) {
        if (m_path.size() > 1) {
            const QPointF step = at - m_path[m_path.size() - 2];
            const QPointF last = at - m_path.back();
            if (step.manhattanLength() < 0.5 && last.manhattanLength() < 0.5) {
                m_path.back() = at;
                return;
            }
        }
        m_path.push_back(at);
    }

    void Tessellate(const QPointF* points) {
        const double sweep = points[3].y();
        const double radius = m_view.scale * (std::max)(std::hypot(points[1].x(), points[1].y()),
                                                        std::hypot(points[2].x(), points[2].y()));
        const double step =
            radius > kChordError ? 2.0 * std::acos(1.0 - kChordError / radius) : 2.0;
        const int chords =
            (std::clamp)(static_cast<int>(std::ceil(std::fabs(sweep) / step)), 2, kMostChords);
        for (int i = 0; i <= chords; ++i) {
            const double t = points[3].x() + sweep * i / chords;
            m_path.push_back(
                m_view.ToPixel(points[0] + points[1] * std::cos(t) + points[2] * std::sin(t)));
        }
    }

    void Fill(const ScenePart& part) {
        m_batch.Flush();
        m_batch.Forget();
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(QColor::fromRgb(Shown(part.colour)));
        m_painter.drawPolygon(m_path.data(), static_cast<int>(m_path.size()));
    }

    void Paint(const SceneLabel& label) {
        const double across = std::hypot(label.place.m11(), label.place.m12());
        if (label.height * across * m_view.scale < kSmallestLabel) return;
        m_batch.Flush();
        m_batch.Forget();
        m_painter.save();
        // Letters are set at a fixed size and scaled, with y upwards again.
        const QFont font = LabelFont();
        const double factor = label.height * UnitsOfLabelFont();
        const QPointF origin = m_view.ToPixel(QPointF(0, 0));
        m_painter.setTransform(
            QTransform(m_view.scale, 0, 0, -m_view.scale, origin.x(), origin.y()), true);
        m_painter.setTransform(label.place, true);
        m_painter.scale(factor, -factor);
        m_painter.setFont(font);
        m_painter.setPen(QColor::fromRgb(Shown(label.colour)));
        const double wide = QFontMetricsF(font).horizontalAdvance(label.text);
        m_painter.drawText(QPointF(-wide * label.anchor / 2.0, 0.0), label.text);
        m_painter.restore();
    }

    QPainter& m_painter;
    Batch m_batch;
    const DashPatterns& m_patterns;
    const SceneView& m_view;
    const SceneLook& m_look;
    QRectF m_frame;
    std::vector<QPointF> m_path;  // pixels
    QPoint m_lastDot;
    QRgb m_lastDotColour = 0;
};

QRgb ColourOf(const SceneChunk& chunk, const SceneItem& item) {
    return item.parts > 0 ? chunk.parts[item.firstPart].colour : kForeground;
}

}  // namespace

bool PaintScene(QPainter& painter, const ScenePicture& picture,
                const std::function<bool()>& isWanted) {
    painter.setRenderHint(QPainter::Antialiasing, picture.look.isSmooth);
    ItemPainter items(painter, *picture.patterns, picture.view, picture.look);
    const QRectF area = picture.view.Area();
    const double scale = picture.view.scale;
    for (const auto& chunk : picture.chunks) {
        if (isWanted && !isWanted()) return false;
        if (chunk->items.empty() || !Touches(chunk->box, area)) continue;
        for (const SceneItem& item : chunk->items) {
            if (item.parts + item.labels == 0 || !Touches(item.box, area)) continue;
            if ((std::max)(item.box.width(), item.box.height()) * scale < kDot)
                items.Dot(item.box.center(), ColourOf(*chunk, item));
            else
                items.Paint(*chunk, item);
        }
    }
    items.Finish();
    return true;
}

void PaintSceneItem(QPainter& painter, const SceneChunk& chunk, const SceneItem& item,
                    const DashPatterns& patterns, const SceneView& view, const SceneLook& look) {
    painter.setRenderHint(QPainter::Antialiasing, look.isSmooth);
    ItemPainter items(painter, patterns, view, look);
    items.Paint(chunk, item);
}

}  // namespace app
