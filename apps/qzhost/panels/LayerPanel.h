// The layers of the current drawing, with a box each to switch it on and off.
#pragma once

#include <QListWidget>
#include <functional>
#include <string>

class AcDbDatabase;

namespace app {

class LayerPanel : public QListWidget {
public:
    explicit LayerPanel(QWidget* parent = nullptr);

    // Null: none. Cheap when nothing has changed.
    void Show(AcDbDatabase* database);

    std::function<void(const std::wstring& layer, bool on)> onSwitch;

private:
    bool m_isFilling = false;
    QStringList m_shown;  // what the rows say
};

}  // namespace app
