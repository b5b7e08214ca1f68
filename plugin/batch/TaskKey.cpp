#include "StdAfx.h"
#include "TaskKey.h"

#include <algorithm>

#include "KnifeDiagramFactory.h"

namespace {

template <class Items>
auto FindBySerial(Items& items, Adesk::UInt64 nSerial) {
    const auto found = std::find_if(items.begin(), items.end(),
                                    [nSerial](const auto& item) { return item.serial == nSerial; });
    return found == items.end() ? nullptr : &*found;
}

}  // namespace

BatchTask* FindTask(const STaskKey& key) {
    BatchTaskList* const pList = CKnifeDiagramFactory::GetInstance().FindTaskList(key.m_pDatabase);
    return pList == nullptr ? nullptr : FindBySerial(*pList, key.m_nSerial);
}

BatchTool* FindTool(BatchTask& task, Adesk::UInt64 nSerial) {
    return FindBySerial(task.tools, nSerial);
}

STaskKey GetTaskKey(const BatchTask& task) {
    return {CKnifeDiagramFactory::GetInstance().FindOwner(task.serial), task.serial};
}
