#include "apps/qzhost/solid/SolidView.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

namespace app {
namespace {

constexpr double kTwoPi = 6.28318530717958647692;
constexpr int kEdgeChords = 96;     // of the circle of a corner
constexpr double kWheelStep = 1.2;  // zoom a notch
constexpr double kClick = 4.0;      // pixels that a click may wander

// Light from the eye and a little from above; what is seen from inside lies behind the section and
// is painted flat, as the section's face.
const char* const kVertex =
    "attribute highp vec3 place;\n"
    "attribute highp vec3 normal;\n"
    "uniform highp mat4 matrix;\n"
    "uniform highp mat4 turn;\n"
    "varying highp vec3 at;\n"
    "varying highp vec3 seen;\n"
    "void main() {\n"
    "    at = place;\n"
    "    seen = (turn * vec4(normal, 0.0)).xyz;\n"
    "    gl_Position = matrix * vec4(place, 1.0);\n"
    "}\n";
const char* const kFragment =
    "uniform highp vec3 colour;\n"
    "uniform highp vec3 section;\n"
    "uniform highp vec4 plane;\n"
    "uniform highp float cut;\n"
    "uniform highp float lit;\n"
    "varying highp vec3 at;\n"
    "varying highp vec3 seen;\n"
    "void main() {\n"
    "    if (cut > 0.5 && dot(plane.xyz, at) > plane.w) discard;\n"
    "    highp vec3 n = normalize(seen);\n"
    "    highp float light = 0.35 + 0.5 * max(n.z, 0.0)\n"
    "        + 0.25 * max(dot(n, vec3(-0.4, 0.8, 0.45)), 0.0);\n"
    "    highp vec3 shown = lit > 0.5 ? colour * light : colour;\n"
    "    if (lit > 0.5 && cut > 0.5 && !gl_FrontFacing) shown = section;\n"
    "    gl_FragColor = vec4(shown, 1.0);\n"
    "}\n";

void Append(std::vector<float>& out, const QVector3D& v) {
    out.insert(out.end(), {v.x(), v.y(), v.z()});
}

QVector3D Single(const AcGeVector3d& v) {
    return QVector3D(static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z));
}

// The circle that a corner of the profile turns into.
void AppendCircle(const host::solid::Frame& frame, const plane::Point& corner, const Camera& camera,
                  std::vector<float>& out) {
    const AcGeVector3d side = frame.Normal();
    QVector3D before;
    for (int i = 0; i <= kEdgeChords; ++i) {
        const double angle = kTwoPi * i / kEdgeChords;
        const QVector3D at =
            camera.Relative(frame.origin + frame.axis * corner.x +
                            (frame.radial * std::cos(angle) + side * std::sin(angle)) * corner.y);
        if (i > 0) {
            Append(out, before);
            Append(out, at);
        }
        before = at;
    }
}

// Corners at which the profile has a bend; arcs that go on smoothly have none.
bool IsSharp(const host::solid::Piece& piece, const host::solid::Piece& next) {
    constexpr double kBend = 0.02;  // radians
    const plane::Vector a = piece.EndDirection(), b = next.StartDirection();
    return std::fabs(std::atan2(a.x * b.y - a.y * b.x, a.x * b.x + a.y * b.y)) > kBend;
}

}  // namespace

SolidView::SolidView(QWidget* parent)
    : QOpenGLWidget(parent),
      m_faces(QOpenGLBuffer::VertexBuffer),
      m_edges(QOpenGLBuffer::VertexBuffer) {
    setMinimumSize(160, 120);
    setFocusPolicy(Qt::ClickFocus);
    QSurfaceFormat wanted = format();
    wanted.setDepthBufferSize(24);
    wanted.setSamples(4);
    setFormat(wanted);
}

SolidView::~SolidView() {
    if (context() == nullptr) return;
    makeCurrent();
    m_faces.destroy();
    m_edges.destroy();
    m_program.reset();
    doneCurrent();
}

double SolidView::Radius() const {
    const host::solid::Measures& m = m_body->run.measures;
    return 0.5 * std::hypot(m.length, m.largestDiameter);
}

void SolidView::Show(std::shared_ptr<const SolidBody> body) {
    m_body = std::move(body);
    m_isUploaded = false;
    m_places.clear();
    if (m_body != nullptr && m_body->HasShape()) {
        AcGePoint3d low(1e300, 1e300, 1e300), high(-1e300, -1e300, -1e300);
        for (const AcGePoint3d& p : m_body->mesh.points) {
            low.set((std::min)(low.x, p.x), (std::min)(low.y, p.y), (std::min)(low.z, p.z));
            high.set((std::max)(high.x, p.x), (std::max)(high.y, p.y), (std::max)(high.z, p.z));
        }
        const AcGePoint3d middle = low + (high - low) / 2.0;
        const double radius = Radius();
        const bool isElsewhere = middle.distanceTo(m_camera.origin) > 0.5 * radius ||
                                 radius > 2 * m_camera.reach || radius < 0.5 * m_camera.reach;
        m_camera.origin = middle;
        m_camera.reach = radius;
        if (!m_isFitted || isElsewhere) ShowAll();
    }
    update();
}

void SolidView::SetNote(const QString& note) {
    m_note = note;
    update();
}

void SolidView::SetSection(bool isCut) {
    m_isCut = isCut;
    m_places.clear();
    update();
}

void SolidView::SetLight(bool isLight) {
    m_isLight = isLight;
    update();
}

void SolidView::LookFrom(Side side) {
    const auto about = [](float x, float y, float z, float degrees) {
        return QQuaternion::fromAxisAndAngle(x, y, z, degrees);
    };
    m_camera.turn = side == Side::kFront ? QQuaternion()
                    : side == Side::kEnd ? about(0, 1, 0, -90)
                                         : about(1, 0, 0, 25) * about(0, 1, 0, -35);
    ShowAll();
}

void SolidView::ShowAll() {
    if (m_body == nullptr || !m_body->HasShape()) return;
    m_camera.Fit(Radius());
    m_isFitted = true;
    update();
}

void SolidView::Mark(const QPointF& pixel) {
    if (m_body == nullptr) return;
    const std::optional<SolidPlace> place = PlaceAt(*m_body, m_camera, pixel, m_isCut);
    if (!place || m_places.size() == 2) m_places.clear();
    if (place) m_places.push_back(*place);
    update();
    if (!onMeasured) return;
    if (m_places.empty())
        onMeasured({});
    else if (m_places.size() == 1)
        onMeasured(TextOf(m_places[0]));
    else
        onMeasured(TextBetween(m_places[0], m_places[1]));
}

void SolidView::ForgetPlaces() {
    m_places.clear();
    update();
}

void SolidView::initializeGL() {
    initializeOpenGLFunctions();
    m_program = std::make_unique<QOpenGLShaderProgram>();
    const bool isMade = m_program->addShaderFromSourceCode(QOpenGLShader::Vertex, kVertex) &&
                        m_program->addShaderFromSourceCode(QOpenGLShader::Fragment, kFragment);
    m_program->bindAttributeLocation("place", 0);
    m_program->bindAttributeLocation("normal", 1);
    if (!isMade || !m_program->link()) m_note = m_program->log();
    m_isUploaded = false;
}

void SolidView::resizeGL(int width, int height) {
    const bool isFirst = m_camera.size.width() <= 1;
    m_camera.size = QSize(width, height);
    if (isFirst) ShowAll();
}

void SolidView::Upload() {
    m_isUploaded = true;
    std::vector<float> faces, edges;
    const host::solid::Mesh& mesh = m_body->mesh;
    faces.reserve(mesh.triangles.size() * 18);
    for (const auto& triangle : mesh.triangles)
        for (const int corner : triangle) {
            const auto i = static_cast<size_t>(corner);
            Append(faces, m_camera.Relative(mesh.points[i]));
            Append(faces, Single(mesh.normals[i]));
        }
    for (const host::solid::Chain& chain : m_body->run.profile->chains)
        for (size_t i = 0; i < chain.pieces.size(); ++i) {
            const bool isLast = i + 1 == chain.pieces.size();
            if (isLast && !chain.closed) continue;
            const host::solid::Piece& next = chain.pieces[isLast ? 0 : i + 1];
            if (IsSharp(chain.pieces[i], next) && chain.pieces[i].to.y > 0.0)
                AppendCircle(m_body->run.profile->frame, chain.pieces[i].to, m_camera, edges);
        }
    const auto fill = [](QOpenGLBuffer& buffer, const std::vector<float>& values) {
        if (!buffer.isCreated()) buffer.create();
        buffer.bind();
        buffer.allocate(values.data(), static_cast<int>(values.size() * sizeof(float)));
        buffer.release();
    };
    fill(m_faces, faces);
    fill(m_edges, edges);
    m_faceCount = static_cast<int>(faces.size() / 6);
    m_edgeCount = static_cast<int>(edges.size() / 3);
}

void SolidView::DrawBody() {
    if (!m_isUploaded) Upload();
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    QMatrix4x4 turn;
    turn.rotate(m_camera.turn);
    const host::solid::Frame& frame = m_body->run.profile->frame;
    const QVector3D normal = Single(frame.Normal());
    const QVector3D on = m_camera.Relative(frame.origin);
    const QColor& colour = m_body->colour;
    m_program->bind();
    m_program->setUniformValue("matrix", m_camera.Matrix());
    m_program->setUniformValue("turn", turn);
    m_program->setUniformValue("plane", QVector4D(normal, QVector3D::dotProduct(normal, on)));
    m_program->setUniformValue("cut", m_isCut ? 1.0F : 0.0F);
    m_program->setUniformValue("section", QVector3D(0.86F, 0.47F, 0.25F));
    m_program->setUniformValue("colour", QVector3D(colour.redF(), colour.greenF(), colour.blueF()));
    m_program->setUniformValue("lit", 1.0F);
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(1.0F, 1.0F);
    constexpr int kStride = 6 * sizeof(float);
    m_faces.bind();
    m_program->enableAttributeArray(0);
    m_program->enableAttributeArray(1);
    m_program->setAttributeBuffer(0, GL_FLOAT, 0, 3, kStride);
    m_program->setAttributeBuffer(1, GL_FLOAT, 3 * sizeof(float), 3, kStride);
    glDrawArrays(GL_TRIANGLES, 0, m_faceCount);
    m_faces.release();
    glDisable(GL_POLYGON_OFFSET_FILL);
    m_program->disableAttributeArray(1);
    m_program->setUniformValue("colour", QVector3D(0.1F, 0.12F, 0.15F));
    m_program->setUniformValue("lit", 0.0F);
    m_edges.bind();
    m_program->setAttributeBuffer(0, GL_FLOAT, 0, 3, 3 * sizeof(float));
    glDrawArrays(GL_LINES, 0, m_edgeCount);
    m_edges.release();
    m_program->disableAttributeArray(0);
    m_program->release();
    glDisable(GL_DEPTH_TEST);
}

void SolidView::paintGL() {
    const float paper = m_isLight ? 0.95F : 0.16F;
    glClearColor(paper, paper, paper + 0.03F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (m_body != nullptr && m_body->HasShape() && m_program->isLinked()) DrawBody();
    PaintPlaces();
}

void SolidView::PaintPlaces() {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ink = m_isLight ? QColor(0x20, 0x20, 0x20) : QColor(0xE0, 0xE0, 0xE0);
    painter.setPen(ink);
    painter.drawText(rect().adjusted(8, 8, -8, -8),
                     Qt::AlignLeft | Qt::AlignBottom | Qt::TextWordWrap, m_note);
    painter.setPen(QPen(QColor(0xFF, 0xD0, 0x30), 2));
    painter.setBrush(Qt::NoBrush);
    const auto pixel = [this](const SolidPlace& place) {
        return m_camera.ToPixel(place.at) / devicePixelRatioF();
    };
    for (const SolidPlace& place : m_places) {
        if (place.isCorner)
            painter.drawRect(QRectF(pixel(place) - QPointF(5, 5), QSizeF(10, 10)));
        else
            painter.drawEllipse(pixel(place), 5, 5);
    }
    if (m_places.size() == 2) painter.drawLine(pixel(m_places[0]), pixel(m_places[1]));
}

void SolidView::mousePressEvent(QMouseEvent* event) {
    m_pressed = m_last = event->position();
    m_hasMoved = false;
}

void SolidView::mouseMoveEvent(QMouseEvent* event) {
    if (!m_last) return;
    if ((event->position() - *m_pressed).manhattanLength() > kClick) m_hasMoved = true;
    if (!m_hasMoved) return;
    const QPointF step = event->position() - *m_last;
    m_last = event->position();
    if (event->buttons() & Qt::LeftButton)
        m_camera.TurnBy(step);
    else
        m_camera.shift += step * devicePixelRatioF();
    update();
}

void SolidView::mouseReleaseEvent(QMouseEvent* event) {
    if (m_pressed && !m_hasMoved && event->button() == Qt::LeftButton)
        Mark(event->position() * devicePixelRatioF());
    m_pressed.reset();
    m_last.reset();
}

void SolidView::mouseDoubleClickEvent(QMouseEvent*) { ShowAll(); }

void SolidView::wheelEvent(QWheelEvent* event) {
    m_camera.ZoomAt(event->position() * devicePixelRatioF(),
                    std::pow(kWheelStep, event->angleDelta().y() / 120.0));
    update();
}

}  // namespace app
