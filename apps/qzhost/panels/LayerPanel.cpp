#include "apps/qzhost/panels/LayerPanel.h"

#include <QHeaderView>
#include <QInputDialog>
#include <QMenu>
#include <QPainter>
#include <QRegularExpression>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "apps/qzhost/scene/SceneEntity.h"
#include "apps/qzhost/words/Words.h"

namespace app {
namespace {

// What is usual in drawings, hundredths of a millimetre.
constexpr int kWeights[] = {0, 9, 13, 18, 25, 35, 50, 70, 100, 140, 200};
constexpr int kOfferedColours = 9;

QIcon Swatch(int colour) {
    QPixmap pixmap(14, 14);
    pixmap.fill(QColor::fromRgb(ColourOfIndex(colour)));
    QPainter painter(&pixmap);
    painter.setPen(Qt::gray);
    painter.drawRect(0, 0, 13, 13);
    return pixmap;
}

QString WeightText(int weight) {
    return weight < 0 ? Tr("Default") : QString::number(weight / 100.0, 'f', 2);
}

Qt::CheckState Box(bool isOn) { return isOn ? Qt::Checked : Qt::Unchecked; }

}  // namespace

LayerPanel::LayerPanel(QWidget* parent)
    : QWidget(parent), m_filter(new QLineEdit(this)), m_list(new QTreeWidget(this)) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_filter);
    layout->addWidget(m_list, 1);
    m_filter->setPlaceholderText(Tr("Filter by name"));
    m_filter->setClearButtonEnabled(true);
    // A click leaves the keys to the command line.
    m_list->setFocusPolicy(Qt::TabFocus);
    // Boxes are drawn in a shade of this; that of a dark window would not be seen on a dark list.
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0x90, 0x98, 0xA4));
    m_list->setPalette(palette);
    m_list->setColumnCount(kColumns);
    m_list->setHeaderLabels({Tr("Name"), Tr("On"), Tr("Frozen"), Tr("Locked"), Tr("Color"),
                             Tr("Linetype"), Tr("Lineweight")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_list->header()->setMinimumSectionSize(24);
    connect(m_filter, &QLineEdit::textChanged, this, [this] { Narrow(); });
    connect(m_list, &QTreeWidget::itemChanged, this,
            [this](QTreeWidgetItem* item, int column) { Switched(item, column); });
    connect(m_list, &QTreeWidget::itemClicked, this,
            [this](QTreeWidgetItem* item, int column) { Offer(item, column); });
    connect(m_list, &QTreeWidget::itemDoubleClicked, this,
            [this](QTreeWidgetItem* item, int column) {
                if (column == kName) Ask(*item, L"SET");
            });
}

void LayerPanel::Ask(const QTreeWidgetItem& item, const wchar_t* option, const QString& value) {
    // The row shows what was asked for; what comes of it is to be shown anew.
    m_shown.clear();
    if (onChange)
        onChange(item.data(kName, Qt::UserRole).toString().toStdWString(), option,
                 value.toStdWString());
}

void LayerPanel::Switched(QTreeWidgetItem* item, int column) {
    if (m_isFilling) return;
    const bool isChecked = item->checkState(column) == Qt::Checked;
    if (column == kOn)
        Ask(*item, isChecked ? L"ON" : L"OFF");
    else if (column == kFrozen)
        Ask(*item, isChecked ? L"FREEZE" : L"THAW");
    else if (column == kLocked)
        Ask(*item, isChecked ? L"LOCK" : L"UNLOCK");
}

void LayerPanel::Offer(QTreeWidgetItem* item, int column) {
    if (column != kColour && column != kLinetype && column != kWeight) return;
    QMenu menu(this);
    if (column == kColour) {
        for (int i = 1; i <= kOfferedColours; ++i)
            menu.addAction(Swatch(i), QString::number(i))->setData(QString::number(i));
        menu.addAction(Tr("Other..."))->setData("?");
    } else if (column == kLinetype) {
        for (const QString& name : m_linetypes) menu.addAction(name)->setData(name);
    } else {
        for (const int weight : kWeights)
            menu.addAction(WeightText(weight))->setData(WeightText(weight));
    }
    const QAction* const chosen = menu.exec(QCursor::pos());
    if (chosen == nullptr) return;
    QString value = chosen->data().toString();
    if (value == "?") {
        bool isGood = false;
        value = QString::number(
            QInputDialog::getInt(this, Tr("Color"), Tr("Color number"), 7, 1, 255, 1, &isGood));
        if (!isGood) return;
    }
    Ask(*item, column == kColour ? L"COLOR" : column == kLinetype ? L"LTYPE" : L"LWEIGHT", value);
}

void LayerPanel::Narrow() {
    const QString text = m_filter->text();
    const bool hasWildcards = text.contains('*') || text.contains('?');
    const QRegularExpression pattern(hasWildcards
                                         ? QRegularExpression::wildcardToRegularExpression(text)
                                         : QRegularExpression::escape(text),
                                     QRegularExpression::CaseInsensitiveOption);
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* const item = m_list->topLevelItem(i);
        item->setHidden(!pattern.match(item->data(kName, Qt::UserRole).toString()).hasMatch());
    }
}

void LayerPanel::Fill(QTreeWidgetItem& item, const LayerState& layer) {
    const QString name = QString::fromStdWString(layer.name);
    item.setData(kName, Qt::UserRole, name);
    item.setText(kName, layer.isCurrent ? name + "  " + Tr("(current)") : name);
    QFont font = m_list->font();
    font.setBold(layer.isCurrent);
    item.setFont(kName, font);
    item.setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item.setCheckState(kOn, Box(!layer.isOff));
    item.setCheckState(kFrozen, Box(layer.isFrozen));
    item.setCheckState(kLocked, Box(layer.isLocked));
    item.setIcon(kColour, Swatch(layer.colour));
    item.setText(kColour, QString::number(layer.colour));
    item.setText(kLinetype, QString::fromStdWString(layer.linetype));
    item.setText(kWeight, WeightText(layer.weight));
    item.setToolTip(kName, QString::fromStdWString(Describe(layer)));
}

void LayerPanel::Show(AcDbDatabase* database) {
    const std::vector<LayerState> layers =
        database == nullptr ? std::vector<LayerState>() : LayersOf(*database);
    QStringList shown;
    for (const LayerState& layer : layers)
        shown << QString("%1 %2 %3")
                     .arg(QString::fromStdWString(Describe(layer)))
                     .arg(layer.colour)
                     .arg(layer.weight);
    if (shown == m_shown && m_list->topLevelItemCount() == shown.size()) return;
    m_isFilling = true;
    m_shown = shown;
    m_linetypes.clear();
    if (database != nullptr)
        for (const std::wstring& name : LinetypesOf(*database))
            m_linetypes << QString::fromStdWString(name);
    // Rows stay where they are: one of them may be telling of a click.
    while (m_list->topLevelItemCount() > static_cast<int>(layers.size()))
        delete m_list->takeTopLevelItem(m_list->topLevelItemCount() - 1);
    while (m_list->topLevelItemCount() < static_cast<int>(layers.size()))
        new QTreeWidgetItem(m_list);
    for (size_t i = 0; i < layers.size(); ++i)
        Fill(*m_list->topLevelItem(static_cast<int>(i)), layers[i]);
    m_isFilling = false;
    Narrow();
}

}  // namespace app
