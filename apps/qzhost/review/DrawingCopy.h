// A copy of a drawing in memory that computations may change at will.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "dbmain.h"

namespace app {

// The same handles name the same entities in both.
class DrawingCopy {
public:
    // cost   writing and reading the drawing once; entities that nobody opens stay unread
    // fails  IsGood() is false, with a reason
    explicit DrawingCopy(const AcDbDatabase& drawing);

    bool IsGood() const { return m_reason.empty(); }
    const std::string& Reason() const { return m_reason; }
    AcDbDatabase& Database() { return *m_database; }
    // Those that are still there.
    AcArray<AcDbObjectId> Counterparts(const std::vector<AcDbObjectId>& ids) const;

private:
    std::string m_bytes, m_reason;
    std::unique_ptr<AcDbDatabase> m_database;
};

}  // namespace app
