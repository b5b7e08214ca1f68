#include "host/ed/builtin_commands.h"

#include <memory>

#include "aced.h"
#include "acedads.h"
#include "dbmain.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "dbsymutl.h"
#include "host/ed/entity_query.h"
#include "host/ed/prompts.h"
#include "host/ed/selection_sets.h"
#include "host/ed/session.h"
#include "host/ed/text_compare.h"
#include "rxdict.h"
#include "rxdlinkr.h"

namespace host {
namespace {

// Asks for a file name; empty when cancelled.
std::wstring AskFile(const std::wstring& prompt) {
    const Answer answer = AskText(prompt, true);
    return answer.kind == Answer::kGiven ? answer.text : std::wstring();
}

CommandEnd Open(AcApDocument*) {
    const std::wstring path = AskFile(L"\nEnter name of drawing to open: ");
    if (path.empty()) return CommandEnd::kCancelled;
    return Session::Get().Open(path) == nullptr ? CommandEnd::kFailed : CommandEnd::kEnded;
}

CommandEnd New(AcApDocument*) {
    return Session::Get().New() == nullptr ? CommandEnd::kFailed : CommandEnd::kEnded;
}

CommandEnd SaveAs(AcApDocument* document) {
    const std::wstring path = AskFile(L"\nSave drawing as: ");
    if (path.empty()) return CommandEnd::kCancelled;
    return Session::Get().Save(*document, path) ? CommandEnd::kEnded : CommandEnd::kFailed;
}

CommandEnd QuickSave(AcApDocument* document) {
    if (!document->imp().isTitled) return SaveAs(document);
    return Session::Get().Save(*document, L"") ? CommandEnd::kEnded : CommandEnd::kFailed;
}

CommandEnd Close(AcApDocument* document) {
    if (document == nullptr || !Session::Get().MayClose({document})) return CommandEnd::kCancelled;
    Session::Get().Close(*document);
    return CommandEnd::kEnded;
}

// The set picked beforehand, else what the user selects, without what lies on locked layers.
SelectionSet SelectForChange() {
    ads_name set;
    SelectionSet entities;
    if (acedSSGet(ACRX_T(":L"), nullptr, nullptr, nullptr, set) != RTNORM) return entities;
    entities = *FindSelectionSet(set);
    FreeSelectionSet(set);
    return entities;
}

CommandEnd Erase(AcApDocument*) {
    const SelectionSet entities = SelectForChange();
    if (entities.empty()) return CommandEnd::kCancelled;
    size_t erased = 0;
    for (const AcDbObjectId id : entities) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        if (entity.openStatus() == Acad::eOk && entity->erase() == Acad::eOk) ++erased;
    }
    Session::Get().Print(L"\n" + std::to_wstring(erased) + L" erased.");
    return CommandEnd::kEnded;
}

// Replaces one entity by its pieces, in its own space.
Acad::ErrorStatus ExplodeInPlace(AcDbObjectId id) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    if (entity.openStatus() != Acad::eOk) return entity.openStatus();
    AcDbVoidPtrArray pieces;
    Acad::ErrorStatus es = entity->explode(pieces);
    if (es != Acad::eOk) return es;
    const AcDbBlockTableRecordPointer space(entity->blockId(), AcDb::kForWrite);
    es = space.openStatus();
    for (int i = 0; i < pieces.length(); ++i) {
        std::unique_ptr<AcDbEntity> piece(static_cast<AcDbEntity*>(pieces[i]));
        if (es == Acad::eOk) es = space->appendAcDbEntity(piece.get());
        if (es != Acad::eOk) continue;  // the piece is still ours
        es = piece.release()->close();
    }
    return es == Acad::eOk ? entity->erase() : es;
}

CommandEnd Explode(AcApDocument*) {
    const SelectionSet entities = SelectForChange();
    if (entities.empty()) return CommandEnd::kCancelled;
    size_t exploded = 0;
    for (const AcDbObjectId id : entities)
        if (ExplodeInPlace(id) == Acad::eOk) ++exploded;
    Session::Get().Print(L"\n" + std::to_wstring(exploded) + L" exploded, " +
                         std::to_wstring(entities.size() - exploded) + L" could not be exploded.");
    return CommandEnd::kEnded;
}

CommandEnd SetLayers(AcApDocument* document, bool isOff) {
    const Answer answer = AskText(
        L"\nEnter name list of layer(s) to turn " + std::wstring(isOff ? L"off: " : L"on: "), true);
    if (answer.kind != Answer::kGiven) return CommandEnd::kCancelled;
    const AcDbObjectPointer<AcDbLayerTable> table(document->database()->layerTableId(),
                                                  AcDb::kForRead);
    if (table.openStatus() != Acad::eOk) return CommandEnd::kFailed;
    AcDbLayerTableIterator* rawIterator = nullptr;
    if (table->newIterator(rawIterator) != Acad::eOk) return CommandEnd::kFailed;
    const std::unique_ptr<AcDbLayerTableIterator> iterator(rawIterator);
    int count = 0;
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        AcString name;
        if (iterator->getRecordId(id) != Acad::eOk ||
            acdbSymUtil()->getSymbolName(name, id) != Acad::eOk ||
            !MatchesWildcards(name.kACharPtr(), answer.text))
            continue;
        const AcDbLayerTableRecordPointer layer(id, AcDb::kForWrite);
        if (layer.openStatus() != Acad::eOk) continue;
        layer->setIsOff(isOff);
        ++count;
    }
    Session::Get().Print(L"\n" + std::to_wstring(count) + L" layer(s) turned " +
                         (isOff ? L"off." : L"on."));
    return count == 0 ? CommandEnd::kFailed : CommandEnd::kEnded;
}

// Options until Enter, as on the command line.
CommandEnd Layer(AcApDocument* document) {
    while (true) {
        const Answer option = AskText(L"\nEnter an option [ON/OFF]: ", false);
        if (option.kind == Answer::kEscape) return CommandEnd::kCancelled;
        if (option.kind == Answer::kEnter) return CommandEnd::kEnded;
        const std::wstring word = ToUpper(option.text);
        if (word == L"ON" || word == L"OFF") {
            const CommandEnd end = SetLayers(document, word == L"OFF");
            if (end == CommandEnd::kCancelled) return end;
        } else {
            Session::Get().Print(L"\nInvalid option keyword: " + option.text);
        }
    }
}

// Geometric constraints are not part of this host's drawings; the command takes its selection as
// the real one does and says so.
CommandEnd DeleteConstraints(AcApDocument*) {
    ads_name set;
    if (acedSSGet(nullptr, nullptr, nullptr, nullptr, set) == RTNORM) acedSSFree(set);
    Session::Get().Print(L"\n0 constraint(s) removed.");
    return CommandEnd::kEnded;
}

CommandEnd LoadModule(AcApDocument*) {
    const std::wstring path = AskFile(L"\nEnter module file to load: ");
    if (path.empty()) return CommandEnd::kCancelled;
    return acrxDynamicLinker->loadModule(path.c_str(), true) ? CommandEnd::kEnded
                                                             : CommandEnd::kFailed;
}

// Takes back what the last command, or the last press of a button, has done to this drawing.
CommandEnd Undo(AcApDocument* document) {
    std::wstring name;
    int failed = 0;
    if (!document->imp().undo->TakeBack(name, failed)) {
        Session::Get().Print(L"\nNothing to undo.");
        return CommandEnd::kFailed;
    }
    Session::Get().Print(L"\n" + (name.empty() ? L"Last change" : name) + L" undone.");
    if (failed > 0)
        Session::Get().Print(L"\n" + std::to_wstring(failed) +
                             L" change(s) could not be undone: the objects are open.");
    acedUpdateDisplay();
    return failed == 0 ? CommandEnd::kEnded : CommandEnd::kFailed;
}

const BuiltinCommand kCommands[] = {
    {L"ARX", nullptr, true, LoadModule},
    {L"CLOSE", nullptr, true, Close},
    {L"DELCONSTRAINT", L"DELCON", false, DeleteConstraints},
    {L"ERASE", L"E", false, Erase},
    {L"EXPLODE", L"X", false, Explode},
    {L"LAYER", L"LA", false, Layer},
    {L"NEW", nullptr, true, New},
    {L"OPEN", nullptr, true, Open},
    {L"QSAVE", L"SAVE", false, QuickSave},
    {L"SAVEAS", nullptr, false, SaveAs},
    {L"U", L"UNDO", false, Undo},
};

}  // namespace

const BuiltinCommand* FindBuiltin(const std::wstring& name) {
    for (const BuiltinCommand& command : kCommands)
        if (EqualsNoCase(command.name, name.c_str()) || EqualsNoCase(command.alias, name.c_str()))
            return &command;
    return nullptr;
}

}  // namespace host
