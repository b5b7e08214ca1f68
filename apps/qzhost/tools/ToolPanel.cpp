#include "apps/qzhost/tools/ToolPanel.h"

#include <QHeaderView>
#include <QToolBar>
#include <QVBoxLayout>

#include "apps/qzhost/words/Words.h"
#include "product/check/Verdict.h"

namespace app {
namespace {

constexpr int kPicture = 56;  // pixels

QString StatusOf(const ListedTool& tool) {
    if (!tool.problem.empty()) return QString::fromStdString(tool.problem);
    return tool.isFailed     ? Tr("failed")
           : tool.isExported ? Tr("exported")
           : tool.isComputed ? Tr("computed")
                             : Tr("not started");
}

QIcon PictureOf(const product::ToolResult& result) {
    const QByteArray bytes =
        QByteArray::fromBase64(QByteArray(result.png.data(), static_cast<int>(result.png.size())));
    QPixmap pixmap;
    return pixmap.loadFromData(bytes, "PNG") ? QIcon(pixmap) : QIcon();
}

QString FilesOf(const product::ToolResult& result) {
    QStringList files;
    for (const std::string& file : result.files)
        files << QString::fromStdString(file).section('/', -1);
    return files.join(", ");
}

}  // namespace

ToolPanel::ToolPanel(QWidget* parent) : QWidget(parent), m_list(new QTreeWidget(this)) {
    auto* const bar = new QToolBar(this);
    const auto add = [&](const QString& text, std::function<void()> ToolPanel::*run) {
        connect(bar->addAction(text), &QAction::triggered, this, [this, run] {
            if (this->*run) (this->*run)();
        });
    };
    add(Tr("List"), &ToolPanel::onList);
    add(Tr("Compute and export..."), &ToolPanel::onCheck);
    add(Tr("Page of findings..."), &ToolPanel::onPage);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(bar);
    layout->addWidget(m_list, 1);
    // A click leaves the keys to the command line.
    m_list->setFocusPolicy(Qt::TabFocus);
    m_list->setColumnCount(kColumns);
    m_list->setHeaderLabels({Tr("Tool"), Tr("Task"), Tr("Status"), Tr("Verdict"), Tr("Files")});
    m_list->setRootIsDecorated(false);
    m_list->setIconSize(QSize(2 * kPicture, kPicture));
    const auto rowOf = [this](QTreeWidgetItem* item) -> const ListedTool* {
        const int row = item == nullptr ? -1 : m_list->indexOfTopLevelItem(item);
        return row < 0 || static_cast<size_t>(row) >= m_tools.size()
                   ? nullptr
                   : &m_tools[static_cast<size_t>(row)];
    };
    connect(m_list, &QTreeWidget::itemClicked, this, [this, rowOf](QTreeWidgetItem* item) {
        if (const ListedTool* const tool = rowOf(item); tool != nullptr && onChosen)
            onChosen(*tool);
    });
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, [this, rowOf](QTreeWidgetItem* item) {
        if (const ListedTool* const tool = rowOf(item); tool != nullptr && onZoom) onZoom(*tool);
    });
}

void ToolPanel::Show(AcDbDatabase* database) {
    m_list->clear();
    m_tools.clear();
    if (database == nullptr) return;
    std::string reason;
    m_tools = ListTools(*database, reason);
    for (const ListedTool& tool : m_tools)
        new QTreeWidgetItem(m_list, {QString::fromStdString(tool.name),
                                     QString::fromStdString(tool.task), StatusOf(tool)});
    if (m_tools.empty()) {
        auto* const item = new QTreeWidgetItem(m_list, {QString::fromStdString(reason)});
        item->setFlags(Qt::ItemIsEnabled);
        item->setFirstColumnSpanned(true);
    }
    for (const int column : {kName, kTask, kStatus}) m_list->resizeColumnToContents(column);
}

void ToolPanel::ShowResult(const product::BatchResult& result) {
    if (result.drawings.empty()) return;
    int row = 0;
    for (const product::ToolResult& tool : result.drawings.front().tools) {
        QTreeWidgetItem* const item = m_list->topLevelItem(row++);
        if (item == nullptr) break;
        item->setIcon(kName, PictureOf(tool));
        item->setText(kStatus, tool.isExported   ? Tr("exported")
                               : tool.isComputed ? Tr("computed")
                                                 : Tr("failed"));
        const QString verdict = tool.isComputed
                                    ? QString::fromStdString(product::VerdictOf(tool.findings))
                                    : QString::fromStdString(tool.reason);
        item->setText(kVerdict, verdict);
        item->setToolTip(kVerdict, verdict);
        item->setText(kFiles, FilesOf(tool));
    }
    for (const int column : {kName, kStatus}) m_list->resizeColumnToContents(column);
}

}  // namespace app
