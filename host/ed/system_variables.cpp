// acedGetVar and acedSetVar, one row a variable.
#include "acedads.h"
#include "acutads.h"
#include "acutmem.h"
#include "dbmain.h"
#include "dbsymutl.h"
#include "host/db/build.h"
#include "host/ed/drawing_io.h"
#include "host/ed/session.h"
#include "host/ed/text_compare.h"

using namespace host;

namespace {

int GiveText(const std::wstring& text, resbuf& result) {
    result.restype = RTSTR;
    return acutNewString(text.c_str(), result.resval.rstring) == Acad::eOk ? RTNORM : RTERROR;
}

int GiveNumber(int number, resbuf& result) {
    result.restype = RTSHORT;
    result.resval.rint = static_cast<short>(number);
    return RTNORM;
}

std::wstring ActiveCommands(const DocumentImp& imp) {
    std::wstring names;
    for (const std::wstring& name : imp.activeCommands)
        names += (names.empty() ? L"" : L"'") + name;
    return names;
}

int GetLayer(const AcApDocument& document, resbuf& result) {
    AcString name;
    const AcDbObjectId id = document.database()->clayer();
    return acdbSymUtil()->getSymbolName(name, id) == Acad::eOk ? GiveText(name.kACharPtr(), result)
                                                               : RTERROR;
}

int SetLayer(AcApDocument& document, const resbuf& value) {
    AcDbObjectId id;
    AcDbDatabase* const database = document.database();
    if (value.restype != RTSTR || value.resval.rstring == nullptr) return RTERROR;
    return acdbSymUtil()->getLayerId(id, value.resval.rstring, database) == Acad::eOk &&
                   database->setClayer(id) == Acad::eOk
               ? RTNORM
               : RTERROR;
}

int SetUnits(AcApDocument& document, const resbuf& value) {
    constexpr short kHighestUnit = 24;
    if (value.restype != RTSHORT || value.resval.rint < 0 || value.resval.rint > kHighestUnit)
        return RTERROR;
    const auto units = static_cast<AcDb::UnitsValue>(value.resval.rint);
    return document.database()->setInsunits(units) == Acad::eOk ? RTNORM : RTERROR;
}

struct Variable {
    const ACHAR* name;
    int (*get)(const AcApDocument&, resbuf&);
    int (*set)(AcApDocument&, const resbuf&);  // null: read-only
};

const Variable kVariables[] = {
    {ACRX_T("CLAYER"), GetLayer, SetLayer},
    {ACRX_T("INSUNITS"),
     [](const AcApDocument& d, resbuf& r) { return GiveNumber(d.database()->insunits(), r); },
     SetUnits},
    {ACRX_T("DWGNAME"), [](const AcApDocument& d, resbuf& r) { return GiveText(d.imp().title, r); },
     nullptr},
    {ACRX_T("DWGPREFIX"),
     [](const AcApDocument& d, resbuf& r) {
         return GiveText(d.imp().isTitled ? FolderOf(d.imp().fileName) : AbsolutePath(L""), r);
     },
     nullptr},
    {ACRX_T("DWGTITLED"),
     [](const AcApDocument& d, resbuf& r) { return GiveNumber(d.imp().isTitled ? 1 : 0, r); },
     nullptr},
    {ACRX_T("DBMOD"),
     [](const AcApDocument& d, resbuf& r) {
         return GiveNumber(IsModified(*d.database()) ? 1 : 0, r);
     },
     nullptr},
    {ACRX_T("CMDNAMES"),
     [](const AcApDocument& d, resbuf& r) { return GiveText(ActiveCommands(d.imp()), r); },
     nullptr},
    {ACRX_T("CMDACTIVE"),
     [](const AcApDocument& d, resbuf& r) { return GiveNumber(d.isQuiescent() ? 0 : 1, r); },
     nullptr},
};

const Variable* FindVariable(const ACHAR* name) {
    for (const Variable& variable : kVariables)
        if (EqualsNoCase(variable.name, name)) return &variable;
    return nullptr;
}

}  // namespace

int acedGetVar(const ACHAR* name, resbuf* result) {
    const AcApDocument* const document = Session::Get().Current();
    const Variable* const variable = FindVariable(name);
    if (document == nullptr || variable == nullptr || result == nullptr) return RTERROR;
    return variable->get(*document, *result);
}

int acedSetVar(const ACHAR* name, const resbuf* value) {
    AcApDocument* const document = Session::Get().Current();
    const Variable* const variable = FindVariable(name);
    if (document == nullptr || variable == nullptr || value == nullptr) return RTERROR;
    if (variable->set == nullptr) return RTERROR;
    Session& session = Session::Get();
    session.NotifyEditor([name](AcEditorReactor& reactor) { reactor.sysVarWillChange(name); });
    const int result = variable->set(*document, *value);
    const bool isDone = result == RTNORM;
    session.NotifyEditor(
        [name, isDone](AcEditorReactor& reactor) { reactor.sysVarChanged(name, isDone); });
    return result;
}
