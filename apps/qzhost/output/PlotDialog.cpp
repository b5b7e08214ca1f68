#include "apps/qzhost/output/PlotDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "apps/qzhost/words/Words.h"

namespace app {
namespace {

constexpr double kMargin = 10.0;  // millimetres that printers leave free
const QPageSize::PageSizeId kPapers[] = {QPageSize::A4,     QPageSize::A3,     QPageSize::A2,
                                         QPageSize::A1,     QPageSize::A0,     QPageSize::A5,
                                         QPageSize::Letter, QPageSize::Tabloid};

}  // namespace

double ParseScale(const QString& text) {
    const QStringList parts = text.trimmed().split(':');
    bool isFirst = false, isSecond = true;
    const double first = parts.value(0).toDouble(&isFirst);
    const double second = parts.size() == 2 ? parts[1].toDouble(&isSecond) : 1.0;
    const bool isGood = isFirst && isSecond && parts.size() <= 2 && first > 0.0 && second > 0.0;
    return isGood ? first / second : 0.0;
}

PlotDialog::PlotDialog(const PlotSetup& start, const QRectF& shown, const QRectF& all,
                       QWidget* parent)
    : QDialog(parent),
      m_start(start),
      m_shown(shown),
      m_all(all),
      m_area(new QComboBox(this)),
      m_paper(new QComboBox(this)),
      m_way(new QComboBox(this)),
      m_scale(new QComboBox(this)),
      m_black(new QCheckBox(Tr("Black and white"), this)),
      m_dots(new QSpinBox(this)),
      m_fit(new QLabel(this)) {
    setWindowTitle(Tr("Print or export"));
    m_area->addItems({Tr("Everything"), Tr("What the window shows")});
    for (const QPageSize::PageSizeId id : kPapers) m_paper->addItem(QPageSize(id).name());
    m_way->addItems({Tr("Landscape"), Tr("Portrait")});
    m_scale->setEditable(true);
    m_scale->addItems({Tr("Fit"), "1:1", "1:2", "1:5", "1:10", "2:1", "5:1", "10:1"});
    m_dots->setRange(50, 2400);
    m_dots->setValue(start.dotsPerInch);
    m_dots->setSuffix(Tr(" dots an inch"));
    auto* const form = new QFormLayout();
    form->addRow(Tr("Part"), m_area);
    form->addRow(Tr("Paper"), m_paper);
    form->addRow(QString(), m_way);
    form->addRow(Tr("Scale"), m_scale);
    form->addRow(Tr("Pictures"), m_dots);
    form->addRow(QString(), m_black);
    form->addRow(QString(), m_fit);
    auto* const buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    for (QComboBox* const box : {m_area, m_paper, m_way})
        connect(box, &QComboBox::currentIndexChanged, this, [this] { ShowFit(); });
    connect(m_scale, &QComboBox::currentTextChanged, this, [this] { ShowFit(); });
    ShowFit();
}

PlotSetup PlotDialog::Setup() const {
    PlotSetup setup = m_start;
    setup.area = m_area->currentIndex() == 0 ? m_all : m_shown;
    setup.scale = ParseScale(m_scale->currentText());
    setup.isMonochrome = m_black->isChecked();
    setup.dotsPerInch = m_dots->value();
    const auto paper = kPapers[(std::max)(m_paper->currentIndex(), 0)];
    setup.page =
        QPageLayout(QPageSize(paper),
                    m_way->currentIndex() == 0 ? QPageLayout::Landscape : QPageLayout::Portrait,
                    QMarginsF(kMargin, kMargin, kMargin, kMargin), QPageLayout::Millimeter);
    return setup;
}

void PlotDialog::ShowFit() {
    const PlotSetup setup = Setup();
    m_fit->setText(
        setup.scale > 0.0 && !Fits(setup)
            ? Tr("At this scale not all of it is on the paper.")
            : Tr("Scale %1:1")
                  .arg(setup.scale > 0.0 ? setup.scale : FittingScale(setup), 0, 'g', 4));
}

}  // namespace app
