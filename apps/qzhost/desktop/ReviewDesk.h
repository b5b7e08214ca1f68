// Preview, comparison, findings, solids and tools of the current drawing: what is worked out beside
// it while its user works on.
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

#include "acdocman.h"
#include "apps/qzhost/review/EnvelopeReview.h"
#include "apps/qzhost/review/FindingPanel.h"
#include "apps/qzhost/solid/SolidPanel.h"
#include "apps/qzhost/tools/ToolPanel.h"
#include "apps/qzhost/view/DrawingView.h"

namespace app {

class ReviewDesk : public QObject {
public:
    ReviewDesk(DrawingView& view, QWidget* parent);

    FindingPanel& Findings() { return *m_findings; }
    SolidPanel& Solids() { return *m_solids; }
    ToolPanel& Tools() { return *m_tools; }

    void SetDocument(AcApDocument* document);
    // Something in the drawing has changed, or a dialog's control may have.
    void DrawingChanged();
    void DialogTouched();
    // The tool that is worked on.
    // parameters  none: those of the dialog that is open, or the usual ones
    void SetTool(std::vector<AcDbObjectId> ids, const AcGePoint3d& centre,
                 const std::optional<product::ToolParameters>& parameters = {});
    // While a dialog of the module is open its envelope is shown as the parameters change.
    void SetPreview(bool isOn);
    // Both envelopes of the tool over each other, dialog or not.
    void SetComparing(bool isOn);
    // The tools of the batch: their list, a run of them all, and the page of what it found.
    void ListTools();
    void AskCheck();
    void AskPage();
    // Does what is due, when nothing else runs.
    void Work();
    void SetLight(bool isLight) { m_solids->SetLight(isLight); }
    const std::optional<EnvelopeReview>& Review() const { return m_review; }

    std::function<bool()> mayWork;
    std::function<void(const QString&)> onSaid;

private:
    void ConnectPanels();
    void Due();
    void Compute();
    void ShowReview();
    void ShowRow(const ReviewRow& row);
    void ZoomTo(const std::vector<AcDbObjectId>& ids);
    bool CheckTools(const QString& folder);
    bool IsShowing() const;
    void Say(const QString& text) const {
        if (onSaid) onSaid(text);
    }

    DrawingView& m_view;
    QWidget* m_parent;
    FindingPanel* m_findings;
    SolidPanel* m_solids;
    ToolPanel* m_tools;
    QTimer m_timer;
    AcApDocument* m_document = nullptr;
    std::unique_ptr<DrawingCopy> m_copy;
    std::optional<ToolPick> m_pick;
    std::optional<product::ToolParameters> m_own;         // the tool's, where it has some
    std::optional<product::ToolParameters> m_parameters;  // that the review was made with
    std::optional<EnvelopeReview> m_review;
    std::optional<product::BatchResult> m_result;
    std::vector<Overlay::Spot> m_spots;
    bool m_hasPreview = true;
    bool m_isComparing = false;
    bool m_isStale = true;  // the drawing has changed since the review
    bool m_areSolidsStale = true;
    bool m_isDue = false;
    bool m_isWorking = false;
};

}  // namespace app
