#include "apps/qzhost/panels/PropertyPanel.h"

#include <QHeaderView>
#include <QVBoxLayout>
#include <algorithm>

#include "apps/qzhost/words/Words.h"
#include "dbobjptr.h"
#include "host/ed/entity_properties.h"

namespace app {
namespace {

constexpr size_t kMostRead = 1000;  // entities whose values are compared

using Properties = std::vector<host::EntityProperty>;

// Keeps what the others have too; a value that differs becomes empty and is marked.
void Merge(const Properties& others, Properties& kept, std::vector<bool>& differs) {
    Properties both;
    std::vector<bool> marks;
    for (size_t i = 0; i < kept.size(); ++i) {
        const auto same = std::find_if(others.begin(), others.end(), [&](const auto& other) {
            return std::wstring(other.name) == kept[i].name;
        });
        if (same == others.end()) continue;
        both.push_back(kept[i]);
        marks.push_back(differs[i] || same->value != kept[i].value);
    }
    kept = std::move(both);
    differs = std::move(marks);
}

// "LTScale" as a person reads it.
QString Label(const wchar_t* name) {
    static const struct {
        const wchar_t* name;
        const char* label;
    } kLabels[] = {{L"LAyer", Word("Layer")},
                   {L"Color", Word("Color")},
                   {L"LType", Word("Linetype")},
                   {L"LTScale", Word("Linetype scale")},
                   {L"LWeight", Word("Lineweight")},
                   {L"Start", Word("Start")},
                   {L"End", Word("End")},
                   {L"LENgth", Word("Length")},
                   {L"CEnter", Word("Center")},
                   {L"Radius", Word("Radius")},
                   {L"STARTAngle", Word("Start angle")},
                   {L"ENDAngle", Word("End angle")},
                   {L"Vertices", Word("Vertices")},
                   {L"CLosed", Word("Closed")},
                   {L"AREa", Word("Area")},
                   {L"Text", Word("Text")},
                   {L"Height", Word("Height")},
                   {L"ROtation", Word("Rotation")},
                   {L"POsition", Word("Position")}};
    for (const auto& row : kLabels)
        if (std::wstring(row.name) == name) return Tr(row.label);
    return QString::fromWCharArray(name);
}

}  // namespace

PropertyPanel::PropertyPanel(QWidget* parent)
    : QWidget(parent), m_head(new QLabel(this)), m_table(new QTableWidget(0, 2, this)) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_head->setContentsMargins(6, 3, 6, 3);
    layout->addWidget(m_head);
    layout->addWidget(m_table, 1);
    m_table->setHorizontalHeaderLabels({Tr("Property"), Tr("Value")});
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setStretchLastSection(true);
    connect(m_table, &QTableWidget::cellChanged, this, [this](int row, int column) {
        if (m_isFilling || column != 1 || !onChange) return;
        const QString name = m_table->item(row, 0)->data(Qt::UserRole).toString();
        onChange(name.toStdWString(), m_table->item(row, 1)->text().toStdWString());
    });
    Show({});
}

void PropertyPanel::Show(const std::vector<AcDbObjectId>& ids) {
    Properties shown;
    std::vector<bool> differs;
    QString kind;
    size_t count = 0;
    for (const AcDbObjectId id : ids) {
        if (++count > kMostRead) break;
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) continue;
        const Properties own = host::PropertiesOf(*entity.object());
        const QString name = QString::fromWCharArray(entity->isA()->name()).remove("AcDb");
        if (kind.isEmpty()) {
            shown = own;
            differs.assign(own.size(), false);
            kind = name;
        } else {
            if (name != kind) kind = Tr("Different kinds");
            Merge(own, shown, differs);
        }
    }
    m_isFilling = true;
    m_head->setText(ids.empty() ? Tr("Nothing is picked.")
                                : QString("%1 (%2)").arg(kind).arg(ids.size()));
    m_table->setRowCount(static_cast<int>(shown.size()));
    for (size_t i = 0; i < shown.size(); ++i) {
        auto* const label = new QTableWidgetItem(Label(shown[i].name));
        label->setData(Qt::UserRole, QString::fromWCharArray(shown[i].name));
        label->setFlags(Qt::ItemIsEnabled);
        auto* const value = new QTableWidgetItem(
            differs[i] ? Tr("*varies*") : QString::fromStdWString(shown[i].value));
        if (!shown[i].mayChange) value->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        m_table->setItem(static_cast<int>(i), 0, label);
        m_table->setItem(static_cast<int>(i), 1, value);
    }
    m_table->resizeColumnToContents(0);
    m_isFilling = false;
}

}  // namespace app
