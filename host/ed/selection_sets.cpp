// Selection sets: acedSSGet and what is done with its results.
#include "host/ed/selection_sets.h"

#include <algorithm>
#include <array>

#include "acedads.h"
#include "dbmain.h"
#include "dbobjptr.h"
#include "host/ed/entity_query.h"
#include "host/ed/prompts.h"
#include "host/ed/session.h"
#include "host/ed/text_compare.h"

namespace host {
namespace {

// Sets are named by their place and a count of how often the place was used, so that the name of a
// freed set does not mean a later one.
struct Slot {
    std::unique_ptr<SelectionSet> set;
    Adesk::IntPtr generation = 0;
};

std::array<Slot, kMaxSelectionSets>& Slots() {
    static std::array<Slot, kMaxSelectionSets> slots;
    return slots;
}

Slot* FindSlot(const ads_name name) {
    if (name == nullptr || name[0] < 1 || name[0] > kMaxSelectionSets) return nullptr;
    Slot& slot = Slots()[static_cast<size_t>(name[0] - 1)];
    return slot.set != nullptr && slot.generation == name[1] ? &slot : nullptr;
}

// What a mode text asks for.
struct SelectionMode {
    std::wstring method;  // "" the user selects; else A X I P L W C
    bool hasPrompts = false;
    bool isSingle = false;
    bool skipsLocked = false;
    bool keepsDuplicates = false;
    bool isValid = true;
};

SelectionMode ParseMode(const ACHAR* text) {
    SelectionMode mode;
    std::wstring rest = ToUpper(text == nullptr ? L"" : text);
    rest.erase(std::remove(rest.begin(), rest.end(), L'_'), rest.end());
    for (size_t i = 0; i < rest.size(); ++i) {
        if (rest[i] != L':') {
            mode.method += rest[i];
            continue;
        }
        const wchar_t option = i + 1 < rest.size() ? rest[++i] : 0;
        if (option == L'$')
            mode.hasPrompts = true;
        else if (option == L'S')
            mode.isSingle = true;
        else if (option == L'L')
            mode.skipsLocked = true;
        else if (option == L'D')
            mode.keepsDuplicates = true;
        else if (option != L'E')
            mode.isValid = false;
    }
    static const wchar_t* const kMethods[] = {L"", L"A", L"X", L"I", L"P", L"L", L"W", L"C"};
    mode.isValid =
        mode.isValid && std::any_of(std::begin(kMethods), std::end(kMethods),
                                    [&](const wchar_t* method) { return mode.method == method; });
    return mode;
}

AcGePoint3d PointAt(const void* point) {
    const auto* const values = static_cast<const ads_real*>(point);
    return AcGePoint3d(values[0], values[1], values[2]);
}

// RTNORM with what the user selected, displayed entities only; else the code to give back.
int SelectByUser(AcApDocument& document, const std::wstring& prompt, SelectionSet& entities) {
    AcDbDatabase& database = *document.database();
    const SelectionAnswer answer = AskSelection(prompt);
    switch (answer.kind) {
        case SelectionAnswer::kEnter:
            return RTERROR;
        case SelectionAnswer::kAll:
            // As the keyboard option does: on every layer that is thawed and unlocked.
            entities = QueryEntities(database, QueryRules::ModeAll());
            return RTNORM;
        case SelectionAnswer::kWindow:
        case SelectionAnswer::kCrossing:
            entities = QueryRectangle(database, answer.corner1, answer.corner2,
                                      answer.kind == SelectionAnswer::kCrossing);
            return RTNORM;
        case SelectionAnswer::kEntities:
            for (const AcDbObjectId id : answer.entities)
                if (MeetsRules(id, QueryRules::Displayed())) entities.push_back(id);
            return RTNORM;
        default:
            return RTCAN;
    }
}

int Collect(AcApDocument& document, const SelectionMode& mode, const void* pt1, const void* pt2,
            SelectionSet& entities) {
    AcDbDatabase& database = *document.database();
    if (mode.method.empty()) {
        std::wstring prompt = L"\nSelect objects: ";
        if (mode.hasPrompts) {
            const auto* const prompts = static_cast<const ACHAR* const*>(pt1);
            if (prompts == nullptr || prompts[0] == nullptr || prompts[1] == nullptr)
                return RTERROR;
            prompt = prompts[0];
        } else if (pt1 != nullptr) {
            const AcDbObjectId id = PickAt(database, PointAt(pt1), document.imp().PickAperture());
            if (!id.isNull()) entities.push_back(id);
            return RTNORM;
        }
        return SelectByUser(document, prompt, entities);
    }
    if (mode.method == L"A") {
        entities = QueryEntities(database, QueryRules::ModeAll());
    } else if (mode.method == L"X") {
        entities = QueryEntities(database, QueryRules::WholeDrawing());
    } else if (mode.method == L"I") {
        entities = document.imp().pickFirst;
    } else if (mode.method == L"P") {
        entities = document.imp().previousSelection;
    } else if (mode.method == L"L") {
        entities = LastDisplayed(document);
    } else {
        if (pt1 == nullptr || pt2 == nullptr) return RTERROR;
        entities = QueryRectangle(database, PointAt(pt1), PointAt(pt2), mode.method == L"C");
    }
    return RTNORM;
}

void RemoveDuplicates(SelectionSet& entities) {
    SelectionSet unique;
    std::vector<AcDbObjectId> seen(entities);
    std::sort(seen.begin(), seen.end());
    std::vector<bool> isTaken(seen.size(), false);
    for (const AcDbObjectId id : entities) {
        const auto at = std::lower_bound(seen.begin(), seen.end(), id) - seen.begin();
        if (isTaken[static_cast<size_t>(at)]) continue;
        isTaken[static_cast<size_t>(at)] = true;
        unique.push_back(id);
    }
    entities.swap(unique);
}

}  // namespace

bool NewSelectionSet(SelectionSet entities, ads_name name) {
    for (size_t i = 0; i < Slots().size(); ++i) {
        Slot& slot = Slots()[i];
        if (slot.set != nullptr) continue;
        slot.set = std::make_unique<SelectionSet>(std::move(entities));
        ++slot.generation;
        name[0] = static_cast<Adesk::IntPtr>(i + 1);
        name[1] = slot.generation;
        return true;
    }
    return false;
}

SelectionSet* FindSelectionSet(const ads_name name) {
    Slot* const slot = FindSlot(name);
    return slot == nullptr ? nullptr : slot->set.get();
}

bool FreeSelectionSet(const ads_name name) {
    Slot* const slot = FindSlot(name);
    if (slot == nullptr) return false;
    slot->set.reset();
    return true;
}

int SelectionSetCount() {
    return static_cast<int>(std::count_if(Slots().begin(), Slots().end(),
                                          [](const Slot& slot) { return slot.set != nullptr; }));
}

}  // namespace host

using namespace host;

int acedSSGet(const ACHAR* modeText, const void* pt1, const void* pt2, const resbuf* filter,
              ads_name ss) {
    AcApDocument* const document = Session::Get().Current();
    const SelectionMode mode = ParseMode(modeText);
    const std::optional<EntityFilter> conditions = EntityFilter::FromChain(filter);
    if (document == nullptr || ss == nullptr || !mode.isValid || !conditions) return RTERROR;
    SelectionSet entities;
    const int result = Collect(*document, mode, pt1, pt2, entities);
    if (result != RTNORM) return result;
    QueryRules rules;
    rules.skipLocked = mode.skipsLocked;
    entities.erase(std::remove_if(entities.begin(), entities.end(),
                                  [&](AcDbObjectId id) {
                                      return !MeetsRules(id, rules) || !conditions->Passes(id);
                                  }),
                   entities.end());
    if (!mode.keepsDuplicates) RemoveDuplicates(entities);
    if (mode.isSingle && entities.size() > 1) entities.resize(1);
    if (entities.empty()) return RTERROR;
    document->imp().previousSelection = entities;
    return NewSelectionSet(std::move(entities), ss) ? RTNORM : RTERROR;
}

int acedSSLength(const ads_name ss, Adesk::Int32* length) {
    const SelectionSet* const set = FindSelectionSet(ss);
    if (set == nullptr || length == nullptr) return RTERROR;
    *length = static_cast<Adesk::Int32>(set->size());
    return RTNORM;
}

int acedSSName(const ads_name ss, int index, ads_name entity) {
    const SelectionSet* const set = FindSelectionSet(ss);
    if (set == nullptr || entity == nullptr || index < 0 ||
        static_cast<size_t>(index) >= set->size())
        return RTERROR;
    ads_name found;
    if (acdbGetAdsName(found, (*set)[static_cast<size_t>(index)]) != Acad::eOk) return RTERROR;
    ads_name_set(found, entity);
    return RTNORM;
}

int acedSSFree(const ads_name ss) { return FreeSelectionSet(ss) ? RTNORM : RTERROR; }

int acedSSAdd(const ads_name entity, const ads_name ss, ads_name result) {
    AcDbObjectId id;
    if (entity != nullptr && acdbGetObjectId(id, entity) != Acad::eOk) return RTERROR;
    if (SelectionSet* const set = FindSelectionSet(ss)) {
        if (!id.isNull() && std::find(set->begin(), set->end(), id) == set->end())
            set->push_back(id);
        if (result != nullptr) ads_name_set(ss, result);
        return RTNORM;
    }
    if (result == nullptr) return RTERROR;
    SelectionSet fresh;
    if (!id.isNull()) fresh.push_back(id);
    return NewSelectionSet(std::move(fresh), result) ? RTNORM : RTERROR;
}

int acedSSDel(const ads_name entity, const ads_name ss) {
    SelectionSet* const set = FindSelectionSet(ss);
    AcDbObjectId id;
    if (set == nullptr || acdbGetObjectId(id, entity) != Acad::eOk) return RTERROR;
    const auto at = std::find(set->begin(), set->end(), id);
    if (at == set->end()) return RTERROR;
    set->erase(at);
    return RTNORM;
}

int acedSSMemb(const ads_name entity, const ads_name ss) {
    const SelectionSet* const set = FindSelectionSet(ss);
    AcDbObjectId id;
    if (set == nullptr || acdbGetObjectId(id, entity) != Acad::eOk) return RTERROR;
    return std::find(set->begin(), set->end(), id) == set->end() ? RTERROR : RTNORM;
}
