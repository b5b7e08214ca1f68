#include "apps/qzhost/review/FindingPanel.h"

#include <QHeaderView>
#include <QVBoxLayout>

#include "apps/qzhost/words/Words.h"

namespace app {

FindingPanel::FindingPanel(QWidget* parent)
    : QWidget(parent), m_head(new QLabel(this)), m_list(new QTreeWidget(this)) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_head->setContentsMargins(6, 3, 6, 3);
    m_head->setWordWrap(true);
    layout->addWidget(m_head);
    layout->addWidget(m_list, 1);
    // A click leaves the keys to the command line.
    m_list->setFocusPolicy(Qt::TabFocus);
    m_list->setHeaderLabels({Tr("Kind"), Tr("What")});
    m_list->setRootIsDecorated(false);
    m_list->setAllColumnsShowFocus(true);
    m_list->header()->setStretchLastSection(true);
    const auto choose = [this](QTreeWidgetItem* item) {
        const int row = item == nullptr ? -1 : m_list->indexOfTopLevelItem(item);
        if (row >= 0 && onChosen) onChosen(m_rows[static_cast<size_t>(row)]);
    };
    connect(m_list, &QTreeWidget::itemClicked, this, choose);
    connect(m_list, &QTreeWidget::itemActivated, this, choose);
    Clear();
}

void FindingPanel::Clear() {
    m_rows.clear();
    m_list->clear();
    m_head->setText(Tr("Nothing computed yet."));
}

void FindingPanel::Show(const EnvelopeReview& review) {
    m_rows = review.rows;
    m_list->clear();
    for (const ReviewRow& row : m_rows) {
        auto* const item = new QTreeWidgetItem(m_list, {row.kind, row.text});
        item->setToolTip(1, row.text);
        if (row.isWarning) item->setForeground(0, QColor(0xE0, 0x80, 0x20));
    }
    m_list->resizeColumnToContents(0);
    if (!review.reason.isEmpty())
        m_head->setText(Tr("No envelope: %1").arg(review.reason));
    else
        m_head->setText(Tr("Length %1, diameter %2, %3 vertices. %4")
                            .arg(review.length, 0, 'g', 8)
                            .arg(review.diameter, 0, 'g', 8)
                            .arg(review.steps.size())
                            .arg(review.difference));
}

}  // namespace app
