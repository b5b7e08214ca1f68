// The list of gaps, open ends and what was left out; a click shows the place.
#pragma once

#include <QLabel>
#include <QTreeWidget>
#include <QWidget>
#include <functional>

#include "apps/qzhost/review/EnvelopeReview.h"

namespace app {

class FindingPanel : public QWidget {
public:
    explicit FindingPanel(QWidget* parent = nullptr);

    void Show(const EnvelopeReview& review);
    void Clear();
    QTreeWidget& List() { return *m_list; }

    std::function<void(const ReviewRow&)> onChosen;

private:
    QLabel* m_head;
    QTreeWidget* m_list;
    std::vector<ReviewRow> m_rows;
};

}  // namespace app
