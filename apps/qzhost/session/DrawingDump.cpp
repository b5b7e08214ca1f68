#include "apps/qzhost/session/DrawingDump.h"

#include <algorithm>
#include <memory>

#include "arxHeaders.h"
#include "host/db/build.h"
#include "host/db/highlight.h"
#include "host/db/stub.h"
#include "host/ed/selection_sets.h"
#include "host/ed/session.h"
#include "host/base/format.h"
#include "host/mfc/dialog_probe.h"

namespace app {
namespace {

std::wstring NameOf(const AcDbObjectId& id) {
    AcString name;
    return acdbSymUtil()->getSymbolName(name, id) == Acad::eOk ? name.kACharPtr() : L"?";
}

std::wstring HandleOf(const AcDbObjectId& id) {
    if (id.isNull()) return L"0";
    ACHAR text[AcDbHandle::kStrSiz] = {};
    return id.handle().getIntoAsciiBuffer(text) ? text : L"?";
}

// Six decimals without closing zeros; no minus on a zero.
std::wstring Number(double value) {
    wchar_t text[64];
    std::swprintf(text, 64, L"%.6f", value);
    std::wstring out(text);
    out.erase(out.find_last_not_of(L'0') + 1);
    if (out.back() == L'.') out.pop_back();
    return out == L"-0" ? L"0" : out;
}

std::wstring Corner(const AcGePoint3d& p) { return Number(p.x) + L"," + Number(p.y); }

std::wstring Particulars(const AcDbEntity& entity) {
    std::wstring text;
    if (const auto* polyline = AcDbPolyline::cast(&entity))
        text += std::wstring(polyline->isClosed() ? L" closed " : L" open ") +
                std::to_wstring(polyline->numVerts()) + L" vertices";
    if (const auto* reference = AcDbBlockReference::cast(&entity))
        text += L" of " + NameOf(reference->blockTableRecord());
    if (entity.visibility() == AcDb::kInvisible) text += L" invisible";
    if (entity.objectId().stub()->Has(host::kStubHighlighted)) text += L" highlighted";
    AcDbExtents box;
    if (entity.getGeomExtents(box) == Acad::eOk)
        text += L" " + Corner(box.minPoint()) + L" " + Corner(box.maxPoint());
    return text;
}

}  // namespace

std::vector<LayerState> LayersOf(AcDbDatabase& database) {
    std::vector<LayerState> layers;
    const AcDbObjectPointer<AcDbLayerTable> table(database.layerTableId(), AcDb::kForRead);
    AcDbLayerTableIterator* made = nullptr;
    if (table.openStatus() != Acad::eOk || table->newIterator(made) != Acad::eOk) return layers;
    const std::unique_ptr<AcDbLayerTableIterator> iterator(made);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getRecordId(id) != Acad::eOk) continue;
        const AcDbLayerTableRecordPointer layer(id, AcDb::kForRead);
        if (layer.openStatus() != Acad::eOk) continue;
        layers.push_back({NameOf(id), NameOf(layer->linetypeObjectId()), layer->isOff(),
                          layer->isFrozen(), layer->isLocked(), id == database.clayer(),
                          layer->color().colorIndex(), layer->lineWeight()});
    }
    return layers;
}

std::vector<std::wstring> LinetypesOf(AcDbDatabase& database) {
    std::vector<std::wstring> names;
    const AcDbObjectPointer<AcDbLinetypeTable> table(database.linetypeTableId(), AcDb::kForRead);
    AcDbLinetypeTableIterator* made = nullptr;
    if (table.openStatus() != Acad::eOk || table->newIterator(made) != Acad::eOk) return names;
    const std::unique_ptr<AcDbLinetypeTableIterator> iterator(made);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getRecordId(id) == Acad::eOk && id != database.byLayerLinetype() &&
            id != database.byBlockLinetype())
            names.push_back(NameOf(id));
    }
    return names;
}

std::wstring Describe(const LayerState& layer) {
    return layer.name + (layer.isOff ? L" off" : L" on") +
           (layer.isFrozen ? L" frozen" : L" thawed") +
           (layer.isLocked ? L" locked " : L" unlocked ") + layer.linetype +
           (layer.isCurrent ? L" current" : L"");
}

Lines DumpLayers(AcDbDatabase& database) {
    Lines lines;
    for (const LayerState& layer : LayersOf(database)) lines.push_back(Describe(layer));
    return lines;
}

namespace {

void AddEntity(const AcDbObjectId& id, Lines& lines) {
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk) return;
    lines.push_back(HandleOf(id) + L" " + entity->isA()->name() + L" on " +
                    NameOf(entity->layerId()) + Particulars(*entity.object()));
}

}  // namespace

Lines DumpEntities(AcDbDatabase& database) {
    Lines lines;
    const AcDbBlockTableRecordPointer space(acdbSymUtil()->blockModelSpaceId(&database),
                                            AcDb::kForRead);
    AcDbBlockTableRecordIterator* made = nullptr;
    if (space.openStatus() != Acad::eOk || space->newIterator(made) != Acad::eOk) return lines;
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(made);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getEntityId(id) != Acad::eOk) continue;
        AddEntity(id, lines);
    }
    return lines;
}

Lines DumpHighlighted() {
    const auto& all = host::HighlightedEntities();
    std::vector<AcDbObjectId> ids(all.begin(), all.end());
    std::sort(ids.begin(), ids.end());
    Lines lines;
    for (const AcDbObjectId& id : ids) AddEntity(id, lines);
    if (lines.empty()) lines.push_back(L"none");
    return lines;
}

Lines DumpDocuments() {
    Lines lines;
    const host::Session& session = host::Session::Get();
    for (const auto& document : session.Documents())
        lines.push_back(std::to_wstring(lines.size() + 1) +
                        (document.get() == session.Current() ? L"* " : L"  ") +
                        document->docTitle() +
                        (host::IsModified(*document->database()) ? L" changed" : L""));
    if (lines.empty()) lines.push_back(L"none");
    return lines;
}

Lines DumpLeftovers() {
    const host::Leftovers left = host::Session::Get().FindLeftovers();
    Lines lines;
    for (const std::wstring& object : left.openObjects) lines.push_back(L"open " + object);
    for (const std::wstring& lock : left.locks) lines.push_back(L"lock " + lock);
    if (const int sets = host::SelectionSetCount(); sets > 0)
        lines.push_back(std::to_wstring(sets) + L" selection set(s)");
    if (lines.empty()) lines.push_back(L"none");
    return lines;
}

Lines DumpDialogs() {
    Lines lines;
    for (const host::LiveDialog& dialog : host::LiveDialogs())
        lines.push_back(
            std::to_wstring(dialog.id) + L" " + dialog.title + (dialog.isShown ? L"" : L" hidden") +
            (dialog.isEnabled ? L"" : L" disabled") + (dialog.isModal ? L" modal" : L""));
    if (lines.empty()) lines.push_back(L"none");
    return lines;
}

}  // namespace app
