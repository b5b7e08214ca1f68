// The solids of the current drawing beside it: which one, how it is looked at, its files.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QToolBar>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "apps/qzhost/solid/SolidBody.h"

namespace app {

class SolidView;

class SolidPanel : public QWidget {
public:
    explicit SolidPanel(QWidget* parent = nullptr);

    // Shows the envelopes of a drawing, null: of none; the one that was shown stays, else the
    // newest comes.
    void ShowDrawing(AcDbDatabase* database);
    // Something else in its place, as long as it is not taken back by null.
    void ShowPreview(std::shared_ptr<const SolidBody> body);
    // The solid of that envelope, when it is one of the drawing's.
    void Choose(AcDbObjectId envelope);

    // Writes the solid shown; the ending says which kind: .sat, .stp, .step, .stl, .png.
    // result  what was written or why nothing was
    QString Save(const QString& path);

    // Null where this display has no OpenGL.
    SolidView* View() const { return m_view; }
    const SolidBody* Shown() const { return m_preview ? m_preview.get() : m_body.get(); }
    size_t Count() const { return m_envelopes.size(); }
    void SetLight(bool isLight);

    std::function<void(AcDbObjectId)> onChosen;
    std::function<void(const QString&)> onSaid;

private:
    void MakeBar();
    void AskSave();
    void MakeChosen();
    void ShowChosen();
    QString FiguresOf(const SolidBody& body) const;

    SolidView* m_view = nullptr;
    QComboBox* m_names;
    QLabel* m_figures;
    QToolBar* m_bar;
    AcDbDatabase* m_database = nullptr;
    std::vector<AcDbObjectId> m_envelopes;
    std::shared_ptr<const SolidBody> m_body;  // of the envelope chosen
    std::shared_ptr<const SolidBody> m_preview;
    bool m_isFilling = false;
};

}  // namespace app
