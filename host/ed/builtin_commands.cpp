#include "host/ed/builtin_commands.h"

#include <algorithm>
#include <memory>

#include "aced.h"
#include "acedads.h"
#include "dbmain.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "dbsymutl.h"
#include "host/base/plain_number.h"
#include "host/base/format.h"
#include "host/ed/command_tools.h"
#include "host/ed/prompts.h"
#include "host/ed/selection_sets.h"
#include "host/ed/session.h"
#include "host/ed/text_compare.h"
#include "host/sys/file_identity.h"
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
    return Session::Get().OpenOnce(path) == nullptr ? CommandEnd::kFailed : CommandEnd::kEnded;
}

CommandEnd New(AcApDocument*) {
    return Session::Get().New() == nullptr ? CommandEnd::kFailed : CommandEnd::kEnded;
}

CommandEnd SaveTo(AcApDocument& document, const std::wstring& path) {
    if (!Session::Get().Save(document, path)) return CommandEnd::kFailed;
    Say(L"Saved " + document.imp().fileName);
    return CommandEnd::kEnded;
}

CommandEnd SaveAs(AcApDocument* document) {
    std::wstring path = AskFile(L"\nSave drawing as: ");
    if (path.empty()) return CommandEnd::kCancelled;
    // A name without an ending is meant as a drawing's; but what is there already, a device, a
    // folder or a file of that very name, is what is meant.
    const FileIdentity there = IdentityOf(Narrow(path));
    const bool hasEnding = path.find(L'.', path.find_last_of(L"/\\") + 1) != std::wstring::npos;
    if (!hasEnding && there.kind == FileIdentity::kMissing) path += L".dxf";
    return SaveTo(*document, path);
}

CommandEnd QuickSave(AcApDocument* document) {
    if (!document->imp().isTitled) return SaveAs(document);
    return SaveTo(*document, L"");
}

CommandEnd Close(AcApDocument* document) {
    if (document == nullptr || !Session::Get().MayClose({document})) return CommandEnd::kCancelled;
    Session::Get().Close(*document);
    return CommandEnd::kEnded;
}

CommandEnd Erase(AcApDocument* document) {
    const SelectionSet entities = SelectForChange(*document);
    if (entities.empty()) return CommandEnd::kCancelled;
    size_t erased = 0;
    for (const AcDbObjectId id : entities) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
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
    AcDbBlockTableRecordPointer space(entity->blockId(), AcDb::kForWrite);
    es = space.openStatus();
    for (int i = 0; i < pieces.length(); ++i) {
        std::unique_ptr<AcDbEntity> piece(static_cast<AcDbEntity*>(pieces[i]));
        if (es == Acad::eOk) es = space->appendAcDbEntity(piece.get());
        if (es != Acad::eOk) continue;  // the piece is still ours
        es = piece.release()->close();
    }
    return es == Acad::eOk ? entity->erase() : es;
}

CommandEnd Explode(AcApDocument* document) {
    const SelectionSet entities = SelectForChange(*document);
    if (entities.empty()) return CommandEnd::kCancelled;
    size_t exploded = 0;
    for (const AcDbObjectId id : entities)
        if (ExplodeInPlace(id) == Acad::eOk) ++exploded;
    Session::Get().Print(L"\n" + std::to_wstring(exploded) + L" exploded, " +
                         std::to_wstring(entities.size() - exploded) + L" could not be exploded.");
    return CommandEnd::kEnded;
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

CommandEnd TellUndone(bool isDone, const std::wstring& name, int failed, const wchar_t* what) {
    if (!isDone) {
        Say(std::wstring(L"Nothing to ") + what + L".");
        return CommandEnd::kFailed;
    }
    Say((name.empty() ? L"Last change" : name) + L" " + what + L"ne.");
    if (failed > 0)
        Say(std::to_wstring(failed) + L" change(s) could not be " + what +
            L"ne: the objects are open.");
    acedUpdateDisplay();
    return failed == 0 ? CommandEnd::kEnded : CommandEnd::kFailed;
}

// Takes back what the last command, or the last press of a button, has done to this drawing.
CommandEnd Undo(AcApDocument* document) {
    std::wstring name;
    int failed = 0;
    const bool isDone = document->imp().undo->TakeBack(name, failed);
    return TellUndone(isDone, name, failed, L"undo");
}

// Does it again.
CommandEnd Redo(AcApDocument* document) {
    std::wstring name;
    int failed = 0;
    const bool isDone = document->imp().undo->DoAgain(name, failed);
    return TellUndone(isDone, name, failed, L"redo");
}

// Several at once; a number is asked.
CommandEnd UndoMany(AcApDocument* document) {
    const Answer answer = AskText(L"\nEnter the number of operations to undo <1>: ", false);
    if (answer.kind == Answer::kEscape) return CommandEnd::kCancelled;
    double count = 1.0;
    if (answer.kind == Answer::kGiven &&
        (!ReadWholeNumber(answer.text, count) || count < 1.0 || count > UndoLog::kMaxGroups)) {
        Say(L"Not a number of operations: " + answer.text);
        return CommandEnd::kFailed;
    }
    for (int i = 0; i < static_cast<int>(count); ++i)
        if (Undo(document) != CommandEnd::kEnded)
            return i == 0 ? CommandEnd::kFailed : CommandEnd::kEnded;
    return CommandEnd::kEnded;
}

CommandEnd Help(AcApDocument*);

const BuiltinCommand kCommands[] = {
    {L"ARC", L"A", false, DrawArc, L"an arc by three points, or by center, start and end"},
    {L"ARX", nullptr, true, LoadModule, L"loads a module"},
    {L"CLOSE", nullptr, true, Close, L"closes the drawing"},
    {L"DELCONSTRAINT", L"DELCON", false, DeleteConstraints, L"removes constraints"},
    {L"DIST", L"DI", false, MeasureDistance, L"distance and angle between two points"},
    {L"ERASE", L"E", false, Erase, L"erases entities"},
    {L"EXPLODE", L"X", false, Explode, L"replaces blocks and polylines by their parts"},
    {L"GRIP", nullptr, false, StretchByGrip, L"stretches what is picked by one of its grips"},
    {L"HELP", L"?", true, Help, L"this list"},
    {L"ID", nullptr, false, TellPoint, L"coordinates of a point"},
    {L"LAYER", L"LA", false, Layer, L"layers: new, current, on, off, color and more"},
    {L"LINE", L"L", false, DrawLine, L"straight lines from point to point"},
    {L"LIST", L"LI", false, ListEntities, L"what entities are made of"},
    {L"MIRROR", L"MI", false, MirrorEntities, L"mirrors entities about a line"},
    {L"MOVE", L"M", false, MoveEntities, L"moves entities"},
    {L"NEW", nullptr, true, New, L"a new drawing"},
    {L"OPEN", nullptr, true, Open, L"opens a drawing"},
    {L"PAN", L"P", false, Pan, L"moves the view"},
    {L"PLINE", L"PL", false, DrawPolyline, L"a polyline of lines and arcs"},
    {L"PROPERTIES", L"PR", false, ChangeProperties, L"changes properties of entities by name"},
    {L"QSAVE", L"SAVE", false, QuickSave, L"saves the drawing"},
    {L"REDO", nullptr, false, Redo, L"does again what was undone"},
    {L"REGEN", L"RE", false, Regenerate, L"draws everything anew"},
    {L"ROTATE", L"RO", false, RotateEntities, L"turns entities about a point"},
    {L"SAVEAS", nullptr, false, SaveAs, L"saves the drawing under another name"},
    {L"SCALE", L"SC", false, ScaleEntities, L"makes entities larger or smaller"},
    {L"U", nullptr, false, Undo, L"takes back the last command"},
    {L"UNDO", nullptr, false, UndoMany, L"takes back several commands"},
    {L"ZOOM", L"Z", false, Zoom, L"shows more or less of the drawing"},
};

CommandEnd Help(AcApDocument*) {
    for (const BuiltinCommand& command : kCommands) {
        std::wstring name = command.name;
        if (command.alias != nullptr) name += std::wstring(L" (") + command.alias + L")";
        name.resize((std::max)(name.size(), size_t{24}), L' ');
        Say(name + command.help);
    }
    return CommandEnd::kEnded;
}

}  // namespace

const BuiltinCommand* FindBuiltin(const std::wstring& name) {
    for (const BuiltinCommand& command : kCommands)
        if (EqualsNoCase(command.name, name.c_str()) || EqualsNoCase(command.alias, name.c_str()))
            return &command;
    return nullptr;
}

std::vector<std::wstring> BuiltinNames() {
    std::vector<std::wstring> names;
    for (const BuiltinCommand& command : kCommands) names.push_back(command.name);
    return names;
}

}  // namespace host
