// LAYER, by options on the command line.
#include <memory>

#include "dbobjptr.h"
#include "dbsymtb.h"
#include "dbsymutl.h"
#include "host/ed/command_tools.h"
#include "host/ed/layer_changes.h"
#include "host/ed/session.h"
#include "host/ed/text_compare.h"

namespace host {
namespace {

// Changes every layer whose name matches the patterns; tells how many.
CommandEnd ChangeLayers(AcApDocument& document, const std::wstring& patterns,
                        const LayerChange& change, const std::wstring& what) {
    const AcDbObjectPointer<AcDbLayerTable> table(document.database()->layerTableId(),
                                                  AcDb::kForRead);
    AcDbLayerTableIterator* raw = nullptr;
    if (table.openStatus() != Acad::eOk || table->newIterator(raw) != Acad::eOk)
        return CommandEnd::kFailed;
    const std::unique_ptr<AcDbLayerTableIterator> iterator(raw);
    int count = 0, refused = 0;
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        AcString name;
        if (iterator->getRecordId(id) != Acad::eOk ||
            acdbSymUtil()->getSymbolName(name, id) != Acad::eOk ||
            !MatchesWildcards(name.kACharPtr(), patterns))
            continue;
        AcDbLayerTableRecordPointer layer(id, AcDb::kForWrite);
        if (layer.openStatus() == Acad::eOk && change(*layer.object()) == Acad::eOk)
            ++count;
        else
            ++refused;
    }
    Say(std::to_wstring(count) + L" layer(s) " + what + L".");
    if (refused > 0)
        Say(std::to_wstring(refused) + L" layer(s) could not be; the current layer is not frozen.");
    return count == 0 ? CommandEnd::kFailed : CommandEnd::kEnded;
}

CommandEnd MakeLayer(AcApDocument& document, bool isCurrent) {
    const Answer answer = AskText(L"\nEnter name of new layer: ", true);
    if (answer.kind != Answer::kGiven) return CommandEnd::kCancelled;
    AcDbDatabase& database = *document.database();
    AcDbObjectId id;
    if (acdbSymUtil()->getLayerId(id, answer.text.c_str(), &database) != Acad::eOk) {
        AcDbObjectPointer<AcDbLayerTable> table(database.layerTableId(), AcDb::kForWrite);
        if (table.openStatus() != Acad::eOk) return CommandEnd::kFailed;
        auto layer = std::make_unique<AcDbLayerTableRecord>();
        Acad::ErrorStatus es = layer->setName(answer.text.c_str());
        if (es == Acad::eOk) es = table->add(id, layer.get());
        if (es != Acad::eOk) {
            Say(L"Not a name for a layer: " + answer.text);
            return CommandEnd::kFailed;
        }
        if (layer.release()->close() != Acad::eOk) return CommandEnd::kFailed;
    }
    if (isCurrent && database.setClayer(id) != Acad::eOk) return CommandEnd::kFailed;
    return CommandEnd::kEnded;
}

CommandEnd SetCurrent(AcApDocument& document) {
    const Answer answer = AskText(L"\nEnter name of layer to make current: ", true);
    if (answer.kind != Answer::kGiven) return CommandEnd::kCancelled;
    AcDbObjectId id;
    if (acdbSymUtil()->getLayerId(id, answer.text.c_str(), document.database()) == Acad::eOk &&
        document.database()->setClayer(id) == Acad::eOk)
        return CommandEnd::kEnded;
    Say(L"No layer that can be current: " + answer.text);
    return CommandEnd::kFailed;
}

// A value first, then the layers that get it.
CommandEnd SetValue(AcApDocument& document, const std::wstring& option) {
    const bool isColour = option == L"COLOR", isWeight = option == L"LWEIGHT";
    const Answer value = AskText(isColour   ? L"\nEnter color number [1-255]: "
                                 : isWeight ? L"\nEnter lineweight in mm [0.00-2.11]: "
                                            : L"\nEnter linetype name: ",
                                 !isColour && !isWeight);
    if (value.kind != Answer::kGiven) return CommandEnd::kCancelled;
    std::wstring reason;
    const LayerChange change = MakeLayerChange(*document.database(), option, value.text, reason);
    if (!change) {
        Say(reason);
        return CommandEnd::kFailed;
    }
    const Answer names = AskText(L"\nEnter name list of layer(s): ", true);
    if (names.kind != Answer::kGiven) return CommandEnd::kCancelled;
    return ChangeLayers(document, names.text, change, L"changed");
}

void ListLayers(AcApDocument& document) {
    const AcDbObjectPointer<AcDbLayerTable> table(document.database()->layerTableId(),
                                                  AcDb::kForRead);
    AcDbLayerTableIterator* raw = nullptr;
    if (table.openStatus() != Acad::eOk || table->newIterator(raw) != Acad::eOk) return;
    const std::unique_ptr<AcDbLayerTableIterator> iterator(raw);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        AcString name, linetype;
        if (iterator->getRecordId(id) != Acad::eOk) continue;
        const AcDbLayerTableRecordPointer layer(id, AcDb::kForRead);
        if (layer.openStatus() != Acad::eOk || layer->getName(name) != Acad::eOk ||
            acdbSymUtil()->getSymbolName(linetype, layer->linetypeObjectId()) != Acad::eOk)
            continue;
        std::wstring line = name.kACharPtr();
        if (id == document.database()->clayer()) line += L" (current)";
        line += layer->isOff() ? L"  off" : L"  on";
        if (layer->isFrozen()) line += L" frozen";
        if (layer->isLocked()) line += L" locked";
        Say(line + L"  color " + std::to_wstring(layer->color().colorIndex()) + L"  " +
            linetype.kACharPtr());
    }
}

}  // namespace

// Options until Enter, as on the command line.
CommandEnd Layer(AcApDocument* document) {
    while (true) {
        const Answer option = AskText(
            L"\nEnter an option "
            L"[?/Make/Set/New/ON/OFF/Color/Ltype/LWeight/Freeze/Thaw/LOck/Unlock]: ",
            false);
        if (option.kind == Answer::kEscape) return CommandEnd::kCancelled;
        if (option.kind == Answer::kEnter) return CommandEnd::kEnded;
        const std::wstring word =
            MatchKeyword(option.text, {L"Make", L"Set", L"New", L"ON", L"OFF", L"Color", L"Ltype",
                                       L"LWeight", L"Freeze", L"Thaw", L"LOck", L"Unlock"});
        CommandEnd end = CommandEnd::kEnded;
        if (option.text == L"?") {
            ListLayers(*document);
        } else if (word == L"MAKE" || word == L"NEW") {
            end = MakeLayer(*document, word == L"MAKE");
        } else if (word == L"SET") {
            end = SetCurrent(*document);
        } else if (HasLayerValue(word)) {
            end = SetValue(*document, word);
        } else if (word.empty()) {
            Say(L"Invalid option keyword: " + option.text);
        } else {
            const std::wstring what = LayerChangeText(word);
            const Answer names =
                AskText(L"\nEnter name list of layer(s) to be " + what + L": ", true);
            if (names.kind != Answer::kGiven) return CommandEnd::kCancelled;
            std::wstring reason;
            end = ChangeLayers(*document, names.text,
                               MakeLayerChange(*document->database(), word, {}, reason), what);
        }
        if (end == CommandEnd::kCancelled) return end;
    }
}

}  // namespace host
