#include "apps/qzhost/words/HostWords.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <vector>

#include "apps/qzhost/words/Words.h"

namespace app {
namespace {

constexpr const char* HostWord(const char* english) { return english; }

const std::vector<const char*>& Forms() {
    static const std::vector<const char*> kForms = {
        HostWord("%1 changed."),
        HostWord("%1 constraint(s) removed."),
        HostWord("%1 could not be changed."),
        HostWord("%1 could not be mirrored."),
        HostWord("%1 erased."),
        HostWord("%1 exploded, %2 could not be exploded."),
        HostWord("%1 found"),
        HostWord("%1 found (%2 duplicate)"),
        HostWord("%1 found (%2 duplicate), %3 total"),
        HostWord("%1 found, %2 removed, %3 total"),
        HostWord("%1 found, %2 total"),
        HostWord("%1 found."),
        HostWord("%1 is open already."),
        HostWord("%1 layer(s) changed."),
        HostWord("%1 layer(s) could not be; the current layer is not frozen."),
        HostWord("%1 layer(s) frozen."),
        HostWord("%1 layer(s) locked."),
        HostWord("%1 layer(s) thawed."),
        HostWord("%1 layer(s) turned off."),
        HostWord("%1 layer(s) turned on."),
        HostWord("%1 layer(s) unlocked."),
        HostWord("%1 left out: locked or gone."),
        HostWord("%1 not changed: %2"),
        HostWord("%1 redone."),
        HostWord("%1 undone."),
        HostWord("A scale factor must be greater than zero."),
        HostWord("Delta X = %1,  Delta Y = %2,  Delta Z = %3"),
        HostWord("Distance = %1,  Angle in XY Plane = %2"),
        HostWord("Enter a scale factor (n or nX): "),
        HostWord("Enter an option %1: "),
        HostWord("Enter color number [1-255]: "),
        HostWord("Enter height of the view: "),
        HostWord("Enter linetype name: "),
        HostWord("Enter lineweight in mm [0.00-2.11]: "),
        HostWord("Enter module file to load: "),
        HostWord("Enter name list of layer(s) to be %1: "),
        HostWord("Enter name list of layer(s): "),
        HostWord("Enter name of drawing to open: "),
        HostWord("Enter name of layer to make current: "),
        HostWord("Enter name of new layer: "),
        HostWord("Enter new value: "),
        HostWord("Enter property to change %1: "),
        HostWord("Enter the number of operations to undo <1>: "),
        HostWord("Erase source objects? [Yes/No] <No>: "),
        HostWord("Invalid option keyword: %1"),
        HostWord("Invalid point: %1"),
        HostWord("No layer that can be current: %1"),
        HostWord("Not a name for a layer: %1"),
        HostWord("Not a number of operations: %1"),
        HostWord("Not a point: %1; type x,y or @x,y or distance<angle, or click."),
        HostWord("Not a property: %1"),
        HostWord("Not a way to select: %1; pick, or type ALL, Previous, Last, Remove, Add or a "
                 "point x,y."),
        HostWord("Nothing to redo."),
        HostWord("Nothing to undo."),
        HostWord("Out of range: %1"),
        HostWord("Remove objects:"),
        HostWord("Save drawing as: "),
        HostWord("Saved %1"),
        HostWord("Select objects:"),
        HostWord("Select objects: "),
        HostWord("Specify base point or displacement: "),
        HostWord("Specify base point: "),
        HostWord("Specify center point of arc: "),
        HostWord("Specify center point: "),
        HostWord("Specify corner of window, enter a scale factor (nX), or %1: "),
        HostWord("Specify end point of arc: "),
        HostWord("Specify endpoint of arc or [Line/Close/Undo]: "),
        HostWord("Specify first corner: "),
        HostWord("Specify first point of mirror line: "),
        HostWord("Specify first point: "),
        HostWord("Specify grip: "),
        HostWord("Specify next point or [Arc/Close/Undo]: "),
        HostWord("Specify next point or [Close/Undo]: "),
        HostWord("Specify next point or [Undo]: "),
        HostWord("Specify opposite corner: "),
        HostWord("Specify point: "),
        HostWord("Specify rotation angle in degrees: "),
        HostWord("Specify scale factor: "),
        HostWord("Specify second point of arc: "),
        HostWord("Specify second point of mirror line: "),
        HostWord("Specify second point or <use first point as displacement>: "),
        HostWord("Specify second point: "),
        HostWord("Specify start point of arc or [Center]: "),
        HostWord("Specify start point of arc: "),
        HostWord("Specify start point: "),
        HostWord("Specify stretch point: "),
        HostWord("The drawing is locked by another task; %1 was not run."),
        HostWord("The start lies on the center."),
        HostWord("The two points of the mirror line are one."),
        HostWord("There is no grip."),
        HostWord("There is no linetype %1 in the drawing."),
        HostWord("Unknown command \"%1\". Press F1 or type HELP for a list."),
    };
    return kForms;
}

struct Form {
    QRegularExpression pattern;
    const char* english;
};

// As patterns in which a value is anything.
const std::vector<Form>& Patterns() {
    static const std::vector<Form> kPatterns = [] {
        std::vector<Form> patterns;
        static const QRegularExpression kValue("%\\d");
        for (const char* const english : Forms()) {
            QStringList parts;
            for (const QString& part : QString(english).trimmed().split(kValue))
                parts << QRegularExpression::escape(part);
            patterns.push_back(
                {QRegularExpression(QRegularExpression::anchoredPattern(parts.join("(.+?)")),
                                    QRegularExpression::DotMatchesEverythingOption),
                 english});
        }
        return patterns;
    }();
    return kPatterns;
}

QString Translated(const QString& line) {
    for (const Form& form : Patterns()) {
        const QRegularExpressionMatch match = form.pattern.match(line);
        if (!match.hasMatch()) continue;
        QString text = QCoreApplication::translate("host", form.english).trimmed();
        for (int i = 1; i <= match.lastCapturedIndex(); ++i)
            text.replace(QString("%%1").arg(i), match.captured(i));
        return text;
    }
    return line;
}

}  // namespace

QString InLanguage(const QString& said) {
    const QString line = said.trimmed();
    if (Language() == "en" || line.isEmpty()) return said;
    const qsizetype from = said.indexOf(line);
    return said.left(from) + Translated(line) + said.mid(from + line.size());
}

}  // namespace app
