#include "apps/qzhost/scene/SceneText.h"

#include <QFontMetricsF>
#include <cmath>

#include "arxHeaders.h"
#include "product/base/Text.h"

namespace app {
namespace {

constexpr double kFontSize = 100.0;       // pixels
constexpr double kCapitalsOfFont = 0.72;  // height of capitals by height of the font
constexpr double kWidthOfLetter = 0.9;    // by the height of capitals, on average

QTransform Flat(const AcGeMatrix3d& m) {
    return QTransform(m(0, 0), m(1, 0), m(0, 1), m(1, 1), m(0, 3), m(1, 3));
}

SceneLabel LabelOf(const AcDbText& text) {
    const AcDb::TextHorzMode across = text.horizontalMode();
    const bool isStretched = across == AcDb::kTextFit || across == AcDb::kTextAlign;
    const AcGePoint3d at =
        text.isDefaultAlignment() || isStretched ? text.position() : text.alignmentPoint();
    SceneLabel label;
    label.text =
        QString::fromStdString(product::PlainText(product::ToUtf8(text.textStringConst())));
    label.height = text.height();
    label.anchor = across == AcDb::kTextRight                                ? 2
                   : across == AcDb::kTextMid || across == AcDb::kTextCenter ? 1
                                                                             : 0;
    double down = 0.0;
    if (text.verticalMode() == AcDb::kTextTop) down = label.height;
    if (text.verticalMode() == AcDb::kTextVertMid || across == AcDb::kTextMid)
        down = label.height / 2;
    label.place =
        Flat(AcGeMatrix3d::translation(at.asVector()) * AcGeMatrix3d::planeToWorld(text.normal()) *
             AcGeMatrix3d::rotation(text.rotation(), AcGeVector3d::kZAxis) *
             AcGeMatrix3d::translation(AcGeVector3d(0, -down, 0)));
    return label;
}

// Breaks lines at blanks where they grow wider than a paragraph; a word alone may.
// width  drawing units; 0: lines are as long as they are
std::vector<QString> Wrapped(const std::vector<std::string>& lines, double height, double width) {
    const QFontMetricsF font(LabelFont());
    const double most = width / height / UnitsOfLabelFont();
    std::vector<QString> wrapped;
    for (const std::string& line : lines) {
        QString row;
        for (const QString& word : QString::fromStdString(line).split(' ')) {
            const QString longer = row.isEmpty() ? word : row + ' ' + word;
            if (width > 0.0 && !row.isEmpty() && font.horizontalAdvance(longer) > most) {
                wrapped.push_back(row);
                row = word;
            } else {
                row = longer;
            }
        }
        wrapped.push_back(row);
    }
    return wrapped;
}

void AddLines(const AcDbMText& text, std::vector<SceneLabel>& labels) {
    ACHAR* contents = text.contents();
    const double height = text.textHeight();
    const std::vector<QString> lines =
        Wrapped(product::PlainLines(product::ToUtf8(contents)), height, text.width());
    acutDelString(contents);
    const double step = height * 5 / 3 * text.lineSpacingFactor();
    const double block = height + step * (static_cast<double>(lines.size()) - 1);
    const int row = (text.attachment() - 1) / 3;
    const double top = block * row / 2;
    const AcGeMatrix3d axes = AcGeMatrix3d::translation(text.location().asVector()) *
                              AcGeMatrix3d::planeToWorld(text.normal()) *
                              AcGeMatrix3d::rotation(text.rotation(), AcGeVector3d::kZAxis);
    for (size_t i = 0; i < lines.size(); ++i) {
        const AcGeVector3d down(0, top - height - step * static_cast<double>(i), 0);
        labels.push_back({lines[i], height, (text.attachment() - 1) % 3, 0,
                          Flat(axes * AcGeMatrix3d::translation(down))});
    }
}

}  // namespace

bool AppendLabels(const AcDbEntity& entity, std::vector<SceneLabel>& labels) {
    if (const auto* const text = AcDbText::cast(&entity)) {
        labels.push_back(LabelOf(*text));
    } else if (const auto* const lines = AcDbMText::cast(&entity)) {
        AddLines(*lines, labels);
    } else {
        return false;
    }
    return true;
}

QFont LabelFont() {
    QFont font;
    font.setPixelSize(static_cast<int>(kFontSize));
    return font;
}

double UnitsOfLabelFont() { return 1.0 / (kFontSize * kCapitalsOfFont); }

QRectF BoxOf(const SceneLabel& label) {
    const double wide = kWidthOfLetter * label.height * static_cast<double>(label.text.size());
    return label.place.mapRect(
        QRectF(-wide * label.anchor / 2.0, -0.2 * label.height, wide, 1.2 * label.height));
}

}  // namespace app
