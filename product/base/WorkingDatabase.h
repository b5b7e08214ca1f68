// The working database while another drawing is worked on.
#pragma once

#include "arxHeaders.h"

namespace product {

// Makes a drawing the working one for its own life, and then the former again, which must still be
// there. What the plug-in's folders do to "the drawing" they do to that one.
class WorkingDatabase {
public:
    explicit WorkingDatabase(AcDbDatabase& database)
        : m_former(acdbHostApplicationServices()->workingDatabase()) {
        acdbHostApplicationServices()->setWorkingDatabase(&database);
    }
    ~WorkingDatabase() { acdbHostApplicationServices()->setWorkingDatabase(m_former); }
    WorkingDatabase(const WorkingDatabase&) = delete;
    WorkingDatabase& operator=(const WorkingDatabase&) = delete;

private:
    AcDbDatabase* m_former;  // null: there was none
};

}  // namespace product
