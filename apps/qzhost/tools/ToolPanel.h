// The tools of the drawing, one a row: picture, name, status, verdict, files.
#pragma once

#include <QTreeWidget>
#include <QWidget>
#include <functional>
#include <vector>

#include "apps/qzhost/tools/ToolTask.h"

namespace app {

class ToolPanel : public QWidget {
public:
    enum Column { kName, kTask, kStatus, kVerdict, kFiles, kColumns };

    explicit ToolPanel(QWidget* parent = nullptr);

    // Lists the tools of a drawing; null: none.
    void Show(AcDbDatabase* database);
    // What came of a run of them.
    void ShowResult(const product::BatchResult& result);

    QTreeWidget& List() { return *m_list; }
    const std::vector<ListedTool>& Tools() const { return m_tools; }

    std::function<void()> onList, onCheck, onPage;
    std::function<void(const ListedTool&)> onChosen;  // a click
    std::function<void(const ListedTool&)> onZoom;    // a double click

private:
    QTreeWidget* m_list;
    std::vector<ListedTool> m_tools;
};

}  // namespace app
