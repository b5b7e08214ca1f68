// PROPERTIES and GRIP: changes to what is picked.
#include <memory>

#include "aced.h"
#include "dbobjptr.h"
#include "host/ed/command_tools.h"
#include "host/ed/entity_grips.h"
#include "host/ed/entity_properties.h"
#include "host/ed/session.h"

namespace host {
namespace {

std::wstring Join(const std::vector<std::wstring>& words) {
    std::wstring text;
    for (const std::wstring& word : words) text += (text.empty() ? L"" : L"/") + word;
    return text;
}

// Sets the property of all that have it; tells how many, and why others do not have it.
void Change(const SelectionSet& entities, const std::wstring& name, const std::wstring& value) {
    size_t changed = 0;
    Acad::ErrorStatus refusal = Acad::eOk;
    for (const AcDbObjectId id : entities) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        const Acad::ErrorStatus es = entity.openStatus() != Acad::eOk
                                         ? entity.openStatus()
                                         : SetProperty(*entity.object(), name, value);
        if (es == Acad::eOk)
            ++changed;
        else if (refusal == Acad::eOk)
            refusal = es;
    }
    Say(std::to_wstring(changed) + L" changed.");
    if (changed < entities.size())
        Say(std::to_wstring(entities.size() - changed) + L" not changed: " +
            (refusal == Acad::eNotApplicable ? L"no such property"
             : refusal == Acad::eKeyNotFound ? L"the drawing has none of that name"
                                             : L"not a value for it") +
            L".");
}

struct Hold {
    AcDbObjectId id;
    Grip grip;
};

// All grips at a place, which may be of several entities.
std::vector<Hold> GripsAt(const SelectionSet& entities, const AcGePoint3d& at, double within) {
    std::vector<Hold> found;
    for (const AcDbObjectId id : entities) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) continue;
        for (const Grip& grip : GripsOf(*entity.object()))
            if (std::hypot(grip.at.x - at.x, grip.at.y - at.y) <= within)
                found.push_back({id, grip});
    }
    return found;
}

// How the entities would look.
std::vector<Piece> Dragged(const std::vector<Hold>& holds, const AcGePoint3d& to) {
    std::vector<Piece> pieces;
    for (const Hold& hold : holds) {
        const AcDbObjectPointer<AcDbEntity> entity(hold.id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) continue;
        const std::unique_ptr<AcDbEntity> copy(AcDbEntity::cast(entity->clone()));
        if (copy != nullptr && MoveGrip(*copy, hold.grip, to) == Acad::eOk)
            AppendOutline(*copy, pieces);
    }
    return pieces;
}

}  // namespace

// Properties by name until Enter.
CommandEnd ChangeProperties(AcApDocument* document) {
    const SelectionSet picked = document->imp().pickFirst;
    const SelectionSet entities = SelectForChange(*document);
    if (entities.empty()) return CommandEnd::kCancelled;
    const std::vector<std::wstring> names = PropertyKeywords();
    const std::wstring prompt = L"\nEnter property to change [" + Join(names) + L"]: ";
    while (true) {
        const Answer name = AskText(prompt, false);
        if (name.kind == Answer::kEscape) return CommandEnd::kCancelled;
        if (name.kind == Answer::kEnter) break;
        const std::wstring word = MatchKeyword(name.text, names);
        if (word.empty()) {
            Say(L"Not a property: " + name.text);
            continue;
        }
        const Answer value = AskText(L"\nEnter new value: ", true);
        if (value.kind == Answer::kEscape) return CommandEnd::kCancelled;
        if (value.kind == Answer::kGiven) Change(entities, word, value.text);
    }
    // What was picked beforehand is looked at again.
    document->imp().pickFirst = picked;
    acedUpdateDisplay();
    return CommandEnd::kEnded;
}

// Stretches what is picked by one of its grips.
CommandEnd StretchByGrip(AcApDocument* document) {
    const SelectionSet picked = document->imp().pickFirst;
    const SelectionSet entities = SelectForChange(*document);
    if (entities.empty()) return CommandEnd::kCancelled;
    const Answer at = AskPoint(L"\nSpecify grip: ");
    if (at.kind != Answer::kGiven) return CommandEnd::kCancelled;
    const std::vector<Hold> holds = GripsAt(entities, at.point, document->imp().PickAperture());
    if (holds.empty()) {
        Say(L"There is no grip.");
        return CommandEnd::kFailed;
    }
    const AcGePoint3d base = holds.front().grip.at;
    PointRequest request;
    request.base = &base;
    request.drag = [&](const AcGePoint3d& to) { return Dragged(holds, to); };
    const Answer to = AskPoint(L"\nSpecify stretch point: ", request);
    document->imp().pickFirst = picked;
    if (to.kind != Answer::kGiven) return CommandEnd::kCancelled;
    size_t refused = 0;
    for (const Hold& hold : holds) {
        AcDbObjectPointer<AcDbEntity> entity(hold.id, AcDb::kForWrite);
        // Only grips of the very place are meant, not all within the box.
        if (!hold.grip.at.isEqualTo(base)) continue;
        if (entity.openStatus() != Acad::eOk ||
            MoveGrip(*entity.object(), hold.grip, to.point) != Acad::eOk)
            ++refused;
    }
    if (refused > 0) Say(std::to_wstring(refused) + L" could not be changed.");
    acedUpdateDisplay();
    return refused == 0 ? CommandEnd::kEnded : CommandEnd::kFailed;
}

}  // namespace host
