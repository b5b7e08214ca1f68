// Current settings and other header variables of a database, and its file functions.

#include "host/db/database_imp.h"
#include "host/db/line_weights.h"

using host::Stub;

namespace {

host::DrawingFormat* g_format = nullptr;

// Sets one variable under the document's lock, with the reactors told before and after.
template <class Set>
Acad::ErrorStatus ChangeVariable(host::DatabaseImp& imp, host::HeaderVar bit, const ACHAR* name,
                                 Set set) {
    const Acad::ErrorStatus es = imp.MayWrite();
    if (es != Acad::eOk) return es;
    imp.Notify([&](AcDbDatabaseReactor& r) { r.headerSysVarWillChange(imp.db, name); });
    set();
    imp.header.changed |= bit;
    imp.modified = true;
    imp.Notify([&](AcDbDatabaseReactor& r) { r.headerSysVarChanged(imp.db, name, true); });
    return Acad::eOk;
}

// What a record must be to become a current setting.
Acad::ErrorStatus CheckCurrent(const AcDbDatabase& db, AcDbObjectId id, const AcRxClass* type) {
    if (id.isNull()) return Acad::eNullObjectId;
    if (!id.objectClass()->isDerivedFrom(type)) return Acad::eWrongObjectType;
    if (id.database() != &db) return Acad::eWrongDatabase;
    return id.isErased() ? Acad::eWasErased : Acad::eOk;
}

}  // namespace

namespace host {
void SetDrawingFormat(DrawingFormat* format) { g_format = format; }
DrawingFormat* GetDrawingFormat() { return g_format; }
}  // namespace host

AcDbObjectId AcDbDatabase::clayer() const { return m_imp->header.clayer; }

Acad::ErrorStatus AcDbDatabase::setClayer(AcDbObjectId layer) {
    const Acad::ErrorStatus es = CheckCurrent(*this, layer, AcDbLayerTableRecord::desc());
    if (es != Acad::eOk) return es;
    if (static_cast<const AcDbLayerTableRecord&>(*layer.stub()->object).isFrozen())
        return Acad::eInvalidInput;
    return ChangeVariable(*m_imp, host::kVarClayer, ACRX_T("CLAYER"),
                          [&] { m_imp->header.clayer = layer; });
}

AcDbObjectId AcDbDatabase::celtype() const { return m_imp->header.celtype; }

Acad::ErrorStatus AcDbDatabase::setCeltype(AcDbObjectId linetype) {
    const Acad::ErrorStatus es = CheckCurrent(*this, linetype, AcDbLinetypeTableRecord::desc());
    if (es != Acad::eOk) return es;
    return ChangeVariable(*m_imp, host::kVarCeltype, ACRX_T("CELTYPE"),
                          [&] { m_imp->header.celtype = linetype; });
}

AcCmColor AcDbDatabase::cecolor() const { return AcCmColor(m_imp->header.cecolor); }

Acad::ErrorStatus AcDbDatabase::setCecolor(const AcCmColor& color) {
    return ChangeVariable(*m_imp, host::kVarCecolor, ACRX_T("CECOLOR"),
                          [&] { m_imp->header.cecolor = color; });
}

double AcDbDatabase::celtscale() const { return m_imp->header.celtscale; }

Acad::ErrorStatus AcDbDatabase::setCeltscale(double scale) {
    if (!(scale > 0.0)) return Acad::eInvalidInput;
    return ChangeVariable(*m_imp, host::kVarCeltscale, ACRX_T("CELTSCALE"),
                          [&] { m_imp->header.celtscale = scale; });
}

AcDb::LineWeight AcDbDatabase::celweight() const {
    return AcDb::LineWeight(m_imp->header.celweight);
}

Acad::ErrorStatus AcDbDatabase::setCelweight(AcDb::LineWeight weight) {
    if (!host::IsLineWeight(weight)) return Acad::eInvalidInput;
    return ChangeVariable(*m_imp, host::kVarCelweight, ACRX_T("CELWEIGHT"),
                          [&] { m_imp->header.celweight = static_cast<Adesk::Int16>(weight); });
}

AcDbObjectId AcDbDatabase::textstyle() const { return m_imp->header.textstyle; }
AcDbObjectId AcDbDatabase::dimstyle() const { return m_imp->header.dimstyle; }
double AcDbDatabase::ltscale() const { return m_imp->header.ltscale; }
AcDb::UnitsValue AcDbDatabase::insunits() const { return AcDb::UnitsValue(m_imp->header.insunits); }

Acad::ErrorStatus AcDbDatabase::setInsunits(AcDb::UnitsValue units) {
    return ChangeVariable(*m_imp, host::kVarInsunits, ACRX_T("INSUNITS"),
                          [&] { m_imp->header.insunits = static_cast<Adesk::Int16>(units); });
}

AcGePoint3d AcDbDatabase::insbase() const { return m_imp->header.insbase; }
AcGePoint3d AcDbDatabase::extmin() const { return m_imp->header.extmin; }
AcGePoint3d AcDbDatabase::extmax() const { return m_imp->header.extmax; }

Acad::ErrorStatus AcDbDatabase::getFilename(const ACHAR*& name) const {
    if (m_imp->file.empty()) return Acad::eNotApplicable;
    name = m_imp->file.c_str();
    return Acad::eOk;
}

const ACHAR* AcDbDatabase::originalFileName() const { return m_imp->file.c_str(); }
AcDb::AcDbDwgVersion AcDbDatabase::originalFileVersion() const { return m_imp->version; }

Acad::ErrorStatus AcDbDatabase::readDwgFile(const ACHAR* fileName, OpenMode, bool, const wchar_t*) {
    return dxfIn(fileName);
}

Acad::ErrorStatus AcDbDatabase::dxfIn(const ACHAR* dxfName, const ACHAR*) {
    if (dxfName == nullptr || m_imp->handles.Size() != 0) return Acad::eInvalidInput;
    return g_format == nullptr ? Acad::eNotImplementedYet : g_format->Read(*this, dxfName);
}

Acad::ErrorStatus AcDbDatabase::closeInput(bool) {
    Acad::ErrorStatus result = Acad::eOk;
    for (Stub* const stub : host::AllStubs(*this)) {
        if (stub->object != nullptr || stub->Has(host::kStubPurged)) continue;
        const Acad::ErrorStatus es = host::LoadObject(*stub);
        if (es != Acad::eOk && result == Acad::eOk) result = es;
    }
    return result;
}

Acad::ErrorStatus AcDbDatabase::dxfOut(const ACHAR* fileName, const int precision,
                                       AcDb::AcDbDwgVersion version, bool) {
    if (fileName == nullptr || precision < 0 || precision > 16) return Acad::eInvalidInput;
    return g_format == nullptr ? Acad::eNotImplementedYet
                               : g_format->Write(*this, fileName, precision, version);
}

Acad::ErrorStatus AcDbDatabase::saveAs(const ACHAR* fileName, bool, AcDb::AcDbDwgVersion version) {
    constexpr int kFullPrecision = 16;
    const Acad::ErrorStatus es = dxfOut(fileName, kFullPrecision, version);
    if (es == Acad::eOk) m_imp->file = fileName;
    return es;
}

Acad::ErrorStatus AcDbDatabase::save() {
    const std::wstring file = m_imp->file;
    return file.empty() ? Acad::eInvalidInput : saveAs(file.c_str());
}
