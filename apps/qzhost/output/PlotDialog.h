// Paper, scale and part of the drawing for a print or a file.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QSpinBox>

#include "apps/qzhost/output/Plot.h"

namespace app {

class PlotDialog : public QDialog {
public:
    // shown, all  the parts of the drawing that can be chosen
    PlotDialog(const PlotSetup& start, const QRectF& shown, const QRectF& all, QWidget* parent);

    PlotSetup Setup() const;

    QComboBox& Area() { return *m_area; }
    QComboBox& Paper() { return *m_paper; }
    QComboBox& Scale() { return *m_scale; }

private:
    void ShowFit();

    PlotSetup m_start;
    QRectF m_shown, m_all;
    QComboBox *m_area, *m_paper, *m_way, *m_scale;
    QCheckBox* m_black;
    QSpinBox* m_dots;
    QLabel* m_fit;
};

// "1:2", "2:1", "0.5"; 0 for "fit" and whatever is no scale.
double ParseScale(const QString& text);

}  // namespace app
