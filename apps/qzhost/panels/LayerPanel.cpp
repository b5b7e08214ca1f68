#include "apps/qzhost/panels/LayerPanel.h"

#include "apps/qzhost/session/DrawingDump.h"

namespace app {

LayerPanel::LayerPanel(QWidget* parent) : QListWidget(parent) {
    connect(this, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (m_isFilling || !onSwitch) return;
        // The box shows what was asked for; what comes of it is to be shown anew.
        m_shown.clear();
        onSwitch(item->data(Qt::UserRole).toString().toStdWString(),
                 item->checkState() == Qt::Checked);
    });
}

void LayerPanel::Show(AcDbDatabase* database) {
    const std::vector<LayerState> layers =
        database == nullptr ? std::vector<LayerState>() : LayersOf(*database);
    QStringList shown;
    for (const LayerState& layer : layers) shown << QString::fromStdWString(Describe(layer));
    if (shown == m_shown && count() == shown.size()) return;
    m_isFilling = true;
    m_shown = shown;
    clear();
    for (const LayerState& layer : layers) {
        const QString name = QString::fromStdWString(layer.name);
        auto* const item = new QListWidgetItem(layer.isCurrent ? name + "  (current)" : name, this);
        item->setData(Qt::UserRole, name);
        item->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled);
        item->setCheckState(layer.isOff ? Qt::Unchecked : Qt::Checked);
        item->setToolTip(shown[row(item)]);
    }
    m_isFilling = false;
}

}  // namespace app
