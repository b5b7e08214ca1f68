#include "host/ed/layer_changes.h"

#include "acdocman.h"
#include "dbobjptr.h"
#include "dbsymutl.h"
#include "host/base/plain_number.h"
#include "host/db/line_weights.h"
#include "host/ed/session.h"

namespace host {
namespace {

constexpr double kMostMillimetres = 2.11;

struct Option {
    const wchar_t* keyword;
    const wchar_t* what;
    Acad::ErrorStatus (*change)(AcDbLayerTableRecord&);  // null: with a value
};
const Option kOptions[] = {
    {L"ON", L"turned on",
     [](AcDbLayerTableRecord& l) {
         l.setIsOff(false);
         return Acad::eOk;
     }},
    {L"OFF", L"turned off",
     [](AcDbLayerTableRecord& l) {
         l.setIsOff(true);
         return Acad::eOk;
     }},
    {L"FREEZE", L"frozen", [](AcDbLayerTableRecord& l) { return l.setIsFrozen(true); }},
    {L"THAW", L"thawed", [](AcDbLayerTableRecord& l) { return l.setIsFrozen(false); }},
    {L"LOCK", L"locked",
     [](AcDbLayerTableRecord& l) {
         l.setIsLocked(true);
         return Acad::eOk;
     }},
    {L"UNLOCK", L"unlocked",
     [](AcDbLayerTableRecord& l) {
         l.setIsLocked(false);
         return Acad::eOk;
     }},
    {L"COLOR", L"changed", nullptr},
    {L"LTYPE", L"changed", nullptr},
    {L"LWEIGHT", L"changed", nullptr},
};

const Option* Find(const std::wstring& option) {
    for (const Option& known : kOptions)
        if (option == known.keyword) return &known;
    return nullptr;
}

}  // namespace

std::wstring LayerChangeText(const std::wstring& option) {
    const Option* const known = Find(option);
    return known == nullptr ? L"" : known->what;
}

bool HasLayerValue(const std::wstring& option) {
    const Option* const known = Find(option);
    return known != nullptr && known->change == nullptr;
}

LayerChange MakeLayerChange(AcDbDatabase& database, const std::wstring& option,
                            const std::wstring& value, std::wstring& reason) {
    const Option* const known = Find(option);
    if (known == nullptr) {
        reason = L"Invalid option keyword: " + option;
        return {};
    }
    if (known->change != nullptr) return known->change;
    if (option == L"LTYPE") {
        AcDbObjectId linetype;
        if (acdbSymUtil()->getLinetypeId(linetype, value.c_str(), &database) == Acad::eOk)
            return [linetype](AcDbLayerTableRecord& l) { return l.setLinetypeObjectId(linetype); };
        reason = L"There is no linetype " + value + L" in the drawing.";
        return {};
    }
    const bool isColour = option == L"COLOR";
    double number = 0.0;
    if (!ReadWholeNumber(value, number) || number < (isColour ? 1.0 : 0.0) ||
        number > (isColour ? 255.0 : kMostMillimetres)) {
        reason = L"Out of range: " + value;
        return {};
    }
    if (!isColour) {
        const auto weight = NearestLineWeight(number);
        return [weight](AcDbLayerTableRecord& l) { return l.setLineWeight(weight); };
    }
    AcCmColor colour;
    static_cast<void>(colour.setColorIndex(static_cast<Adesk::UInt16>(number)));
    return [colour](AcDbLayerTableRecord& l) {
        l.setColor(colour);
        return Acad::eOk;
    };
}

bool ChangeLayer(AcDbDatabase& database, const std::wstring& layer, const std::wstring& option,
                 const std::wstring& value, std::wstring& reason) {
    AcApDocument* const document = Session::Get().Find(&database);
    AcDbObjectId id;
    if (document == nullptr ||
        acdbSymUtil()->getLayerId(id, layer.c_str(), &database) != Acad::eOk) {
        reason = L"There is no layer " + layer + L".";
        return false;
    }
    bool isDone = false;
    Session::Get().InContext(nullptr, [&] {
        if (acDocManager->lockDocument(document, AcAp::kWrite, L"LAYER", L"LAYER") != Acad::eOk) {
            reason = L"The drawing is locked by another task.";
            return;
        }
        Acad::ErrorStatus es = Acad::eOk;
        if (option == L"SET") {
            es = database.setClayer(id);
        } else if (const LayerChange change = MakeLayerChange(database, option, value, reason)) {
            AcDbLayerTableRecordPointer record(id, AcDb::kForWrite);
            es = record.openStatus();
            if (es == Acad::eOk) es = change(*record.object());
        } else {
            es = Acad::eInvalidInput;
        }
        isDone = es == Acad::eOk;
        if (!isDone && reason.empty())
            reason = L"Layer " + layer + L" cannot be " +
                     (option == L"SET" ? L"current" : LayerChangeText(option)) + L".";
        const Acad::ErrorStatus unlocked = acDocManager->unlockDocument(document);
        if (unlocked != Acad::eOk) isDone = false;
    });
    return isDone;
}

}  // namespace host
