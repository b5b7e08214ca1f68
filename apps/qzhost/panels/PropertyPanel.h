// What is picked, property by property; a value that is typed anew changes all of it.
#pragma once

#include <QLabel>
#include <QTableWidget>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "dbid.h"

namespace app {

class PropertyPanel : public QWidget {
public:
    explicit PropertyPanel(QWidget* parent = nullptr);

    // Properties that all of them have; values that differ are said to.
    void Show(const std::vector<AcDbObjectId>& ids);
    QTableWidget& Table() { return *m_table; }

    std::function<void(const std::wstring& name, const std::wstring& value)> onChange;

private:
    QLabel* m_head;
    QTableWidget* m_table;
    bool m_isFilling = false;
};

}  // namespace app
