#include "apps/qzhost/solid/Camera.h"

#include <algorithm>

namespace app {
namespace {

constexpr double kMargin = 1.1;  // around what is fitted
constexpr double kDegreesAPixel = 0.5;
constexpr double kSmallestScale = 1e-9, kLargestScale = 1e9;

}  // namespace

QVector3D Camera::Relative(const AcGePoint3d& world) const {
    const AcGeVector3d out = world - origin;
    return QVector3D(static_cast<float>(out.x), static_cast<float>(out.y),
                     static_cast<float>(out.z));
}

QPointF Camera::ToPixel(const AcGePoint3d& world) const {
    const QVector3D seen = turn.rotatedVector(Relative(world));
    return QPointF(size.width() / 2.0 + shift.x() + static_cast<double>(seen.x()) * scale,
                   size.height() / 2.0 + shift.y() - static_cast<double>(seen.y()) * scale);
}

void Camera::RayOf(const QPointF& pixel, AcGePoint3d& from, AcGeVector3d& along) const {
    const QPointF out = (pixel - shift - QPointF(size.width() / 2.0, size.height() / 2.0)) / scale;
    const QQuaternion back = turn.conjugated();
    const QVector3D start = back.rotatedVector(QVector3D(
        static_cast<float>(out.x()), static_cast<float>(-out.y()), static_cast<float>(2 * reach)));
    const QVector3D way = back.rotatedVector(QVector3D(0, 0, -1));
    const auto vector = [](const QVector3D& v) {
        return AcGeVector3d(static_cast<double>(v.x()), static_cast<double>(v.y()),
                            static_cast<double>(v.z()));
    };
    from = origin + vector(start);
    along = vector(way);
}

QMatrix4x4 Camera::Matrix() const {
    QMatrix4x4 matrix;
    const double wide = size.width() / 2.0 / scale, high = size.height() / 2.0 / scale;
    const double x = shift.x() / scale, y = -shift.y() / scale;
    const auto f = [](double value) { return static_cast<float>(value); };
    matrix.ortho(f(-wide - x), f(wide - x), f(-high - y), f(high - y), f(-4 * reach), f(4 * reach));
    matrix.rotate(turn);
    return matrix;
}

void Camera::TurnBy(const QPointF& step) {
    const auto degrees = [](double pixels) { return static_cast<float>(pixels * kDegreesAPixel); };
    turn = (QQuaternion::fromAxisAndAngle(0, 1, 0, degrees(step.x())) *
            QQuaternion::fromAxisAndAngle(1, 0, 0, degrees(step.y())) * turn)
               .normalized();
}

void Camera::ZoomAt(const QPointF& pixel, double factor) {
    const double before = scale;
    scale = (std::clamp)(scale * factor, kSmallestScale, kLargestScale);
    const QPointF middle(size.width() / 2.0, size.height() / 2.0);
    shift = pixel - middle - (pixel - middle - shift) * (scale / before);
}

void Camera::Fit(double radius) {
    reach = (std::max)(radius, 1e-9);
    shift = QPointF(0, 0);
    scale = (std::min)(size.width(), size.height()) / (2 * kMargin * reach);
}

}  // namespace app
