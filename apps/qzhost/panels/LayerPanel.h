// The layers of the current drawing, with everything about them that can be switched.
#pragma once

#include <QLineEdit>
#include <QTreeWidget>
#include <functional>
#include <string>

#include "apps/qzhost/session/DrawingDump.h"

class AcDbDatabase;

namespace app {

// A click on a box switches; on color, linetype or lineweight it offers others; a double click on
// the name makes the layer current. The line above narrows the list down, by * and ? or by letters
// that the names hold.
class LayerPanel : public QWidget {
public:
    enum Column { kName, kOn, kFrozen, kLocked, kColour, kLinetype, kWeight, kColumns };

    explicit LayerPanel(QWidget* parent = nullptr);

    // Null: none. Cheap when nothing has changed.
    void Show(AcDbDatabase* database);

    QTreeWidget& List() { return *m_list; }
    QLineEdit& Filter() { return *m_filter; }

    // An option of the command LAYER with its value, where it has one: "OFF", "COLOR" and "3".
    std::function<void(const std::wstring& layer, const std::wstring& option,
                       const std::wstring& value)>
        onChange;

private:
    void Fill(QTreeWidgetItem& item, const LayerState& layer);
    void Switched(QTreeWidgetItem* item, int column);
    void Offer(QTreeWidgetItem* item, int column);
    void Ask(const QTreeWidgetItem& item, const wchar_t* option, const QString& value = {});
    void Narrow();

    QLineEdit* m_filter;
    QTreeWidget* m_list;
    bool m_isFilling = false;
    QStringList m_shown;  // what the rows say
    QStringList m_linetypes;
};

}  // namespace app
