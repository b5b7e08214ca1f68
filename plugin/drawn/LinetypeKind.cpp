#include "StdAfx.h"

#include "LinetypeKind.h"

#include <vector>

namespace {

std::vector<double> PatternOf(const AcDbLinetypeTableRecord& record) {
    std::vector<double> pattern;
    for (int i = 0; i < record.numDashes(); ++i) pattern.push_back(record.dashLengthAt(i));
    return pattern;
}

}  // namespace

const SLinetype& CLinetypes::Look(const AcDbObjectId& linetypeId) {
    const auto [at, bNew] = m_known.try_emplace(linetypeId);
    SLinetype& linetype = at->second;
    if (!bNew) return linetype;
    AcDbObjectPointer<AcDbLinetypeTableRecord> record(linetypeId, AcDb::kForRead);
    AcString name;
    if (record.openStatus() != Acad::eOk || record->getName(name) != Acad::eOk) return linetype;
    linetype.m_strName = name.kACharPtr();
    const std::vector<double> pattern = PatternOf(*record.object());
    linetype.m_bHasGaps = plane::KindOfLinetypePattern(pattern) != ELinetypeKind::Continuous;
    linetype.m_kind = plane::KindOfLinetype(linetype.m_strName.GetString(), pattern);
    return linetype;
}
