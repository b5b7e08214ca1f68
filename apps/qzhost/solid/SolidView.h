// A window onto a solid, drawn by OpenGL; the software renderer of Mesa does as well as a card.
#pragma once

// Before OpenGL's headers, which look whether Windows' names are there already.
#include "apps/qzhost/solid/SolidMeasure.h"

#include <QOpenGLBuffer>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>
#include <QOpenGLWidget>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace app {

// The left button turns, the middle or right one moves, the wheel zooms about the pointer, a double
// click shows all. A click on the solid marks a place, a second one measures from it.
class SolidView : public QOpenGLWidget, protected QOpenGLFunctions {
public:
    explicit SolidView(QWidget* parent = nullptr);
    ~SolidView() override;

    // Null: nothing to show. Another solid keeps the way it is looked at; the first one, or one
    // that lies elsewhere, is fitted.
    void Show(std::shared_ptr<const SolidBody> body);
    // A few words instead of a solid, or under it.
    void SetNote(const QString& note);
    void SetSection(bool isCut);
    void SetLight(bool isLight);

    // As the drawing shows the tool; from the right; from above the right end.
    enum class Side { kFront, kEnd, kCorner };
    void LookFrom(Side side);
    void ShowAll();

    const std::vector<SolidPlace>& Places() const { return m_places; }
    // Marks a place as a click does; the third one begins anew.
    void Mark(const QPointF& pixel);
    void ForgetPlaces();

    // What was measured, or just the place.
    std::function<void(const QString&)> onMeasured;

protected:
    void initializeGL() override;
    void resizeGL(int width, int height) override;
    void paintGL() override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void Upload();
    void DrawBody();
    void PaintPlaces();
    double Radius() const;

    std::shared_ptr<const SolidBody> m_body;
    QString m_note;
    Camera m_camera;
    bool m_isFitted = false;
    bool m_isCut = false;
    bool m_isLight = false;
    bool m_isUploaded = false;
    std::vector<SolidPlace> m_places;
    std::optional<QPointF> m_pressed, m_last;
    bool m_hasMoved = false;

    std::unique_ptr<QOpenGLShaderProgram> m_program;
    QOpenGLBuffer m_faces, m_edges;
    int m_faceCount = 0, m_edgeCount = 0;  // corners
};

}  // namespace app
