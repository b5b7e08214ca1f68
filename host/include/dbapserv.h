// Services of the application that hosts the database.
#pragma once

#include "acadstrc.h"
#include "adesk.h"

class AcDbDatabase;

// Knows the working database: the one that calls without a database mean.
class AcDbHostApplicationServices {
public:
    virtual ~AcDbHostApplicationServices() = default;

    // Null when there is no document.
    AcDbDatabase* workingDatabase() const { return m_workingDatabase; }
    // Changes nothing in any drawing. Documents set it as they become current; null leaves calls
    // without a database nothing to work on.
    void setWorkingDatabase(AcDbDatabase* db) { m_workingDatabase = db; }

private:
    AcDbDatabase* m_workingDatabase = nullptr;
};

// The only one; never null.
AcDbHostApplicationServices* acdbHostApplicationServices();
