#include "product/tool/Selection.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <unordered_set>
#include <vector>

#include "BlockSum.h"
#include "DrawnWalk.h"
#include "EncircleLayers.h"
#include "EntityBox.h"
#include "EraseEntity.h"
#include "host/ed/entity_query.h"
#include "host/ed/text_compare.h"
#include "product/base/Extents.h"
#include "product/base/Failure.h"
#include "product/base/Text.h"
#include "product/tool/PartDrawing.h"

namespace product {
namespace {

// What an earlier run has drawn: envelopes by their layer, parts of them by their mark, for
// contours by others lie on the same layers.
bool IsEarlier(const CString& layer, const AcDbEntity& entity) {
    if (layer.CompareNoCase(kEnvelopeLayer) == 0) return true;
    return (layer.CompareNoCase(kCutLayer) == 0 || layer.CompareNoCase(kRestLayer) == 0) &&
           IsOwnPart(entity);
}

// What is hidden is looked at, too; references are not taken apart.
SDrawnOptions EntityByEntity() {
    SDrawnOptions options;
    options.m_bIntoBlocks = false;
    options.m_bWithHidden = true;
    options.m_nMost = std::numeric_limits<size_t>::max();
    return options;
}

std::wstring Joined(const std::vector<std::string>& patterns) {
    std::wstring joined;
    for (const std::string& pattern : patterns)
        joined += (joined.empty() ? L"" : L",") + std::wstring(FromUtf8(pattern).GetString());
    return joined;
}

// Attributes are handed on behind their references, which stand for them here.
bool IsAttribute(const SDrawnItem& item) { return item.m_id != item.m_pickedId; }

// Chords that a curve is cut into.
double CountChords(const AcDbEntity* entity, double precision) {
    const auto* curve = AcDbCurve::cast(entity);
    double end = 0, length = 0;
    if (curve == nullptr || AcDbLine::cast(curve) != nullptr) return 0;
    if (const auto* polyline = AcDbPolyline::cast(curve); polyline && !polyline->hasBulges())
        return polyline->numVerts();
    if (curve->getEndParam(end) != Acad::eOk || curve->getDistAtParam(end, length) != Acad::eOk)
        return 0;
    return length / precision;
}

double ScaleChords(const AcDbBlockReference* reference, double chords) {
    const AcGeScale3d scale = reference->scaleFactors();
    return std::max(std::abs(scale.sx), std::abs(scale.sy)) * CountCells(reference) * chords;
}

// What is no number counts as the most.
PieceEstimate SumOf(const AcArray<AcDbObjectId>& ids, CBlockSum figures) {
    PieceEstimate estimate;
    double most = 0;
    for (int i = 0; i < ids.length(); ++i) {
        const double count = figures.Of(ids[i]);
        estimate.count += count;
        if (count <= most || std::isnan(most)) continue;
        most = count;
        estimate.largest = ids[i];
    }
    return estimate;
}

}  // namespace

detect::ItemFilter PickRule::Filter() const {
    if (!HasFilters()) return {};
    return [only = Joined(layers), without = Joined(withoutLayers),
            withoutType = Joined(withoutTypes)](const CString& layer, const AcRxClass* type) {
        const std::wstring name = layer.GetString();
        return (only.empty() || host::MatchesWildcards(name, only)) &&
               (without.empty() || !host::MatchesWildcards(name, without)) &&
               (withoutType.empty() ||
                !host::MatchesWildcards(FromUtf8(TypeName(type)).GetString(), withoutType));
    };
}

Selection SelectionOf(const AcArray<AcDbObjectId>& picked) {
    Selection selection;
    if (picked.isEmpty()) return selection;
    std::unordered_set<AcDbObjectId> envelopes;
    CDrawnWalk walk(picked[0].database(), EntityByEntity());
    walk.Walk(picked, [&](const SDrawnItem& item) {
        if (IsEarlier(walk.LayerName(item.m_layerId), item.m_entity)) envelopes.insert(item.m_id);
    });
    for (int i = 0; i < picked.length(); ++i)
        (envelopes.count(picked[i]) != 0 ? selection.envelopes : selection.ids).append(picked[i]);
    selection.box = BoxOf(GetEntitiesBox(selection.ids));
    return selection;
}

int EraseEnvelopes(const AcArray<AcDbObjectId>& envelopes) {
    int erased = 0;
    for (int i = 0; i < envelopes.length(); ++i)
        erased += !envelopes[i].isErased() && EraseById(envelopes[i]) ? 1 : 0;
    return erased;
}

PickList::PickList(AcDbDatabase& database) {
    const AcDbObjectId modelSpace = acdbSymUtil()->blockModelSpaceId(&database);
    CDrawnWalk walk(&database, EntityByEntity());
    walk.WalkSpace(modelSpace, [&](const SDrawnItem& item) {
        if (IsAttribute(item)) return;
        Entry entry;
        entry.id = item.m_id;
        entry.box = ExtentsOf(item.m_entity);
        entry.isDisplayed = item.IsShown();
        entry.isEnvelope = IsEarlier(walk.LayerName(item.m_layerId), item.m_entity);
        if (entry.box) m_byLeft.push_back(m_entries.size());
        m_entries.push_back(std::move(entry));
    });
    for (const SDrawnFault& fault : walk.Faults())
        if (fault.m_id == modelSpace)
            throw Failure(Fault::NothingThere, "the drawing has no model space that can be read");
    std::stable_sort(m_byLeft.begin(), m_byLeft.end(), [this](size_t a, size_t b) {
        return m_entries[a].box->low.x < m_entries[b].box->low.x;
    });
}

Selection PickList::Pick(const std::optional<Box>& window) const {
    std::vector<size_t> inside;
    if (window) {
        auto at = std::lower_bound(
            m_byLeft.begin(), m_byLeft.end(), window->low.x,
            [this](size_t i, double left) { return m_entries[i].box->low.x < left; });
        for (; at != m_byLeft.end() && m_entries[*at].box->low.x <= window->high.x; ++at)
            if (window->Contains(*m_entries[*at].box)) inside.push_back(*at);
        std::sort(inside.begin(), inside.end());
    } else {
        inside.resize(m_entries.size());
        std::iota(inside.begin(), inside.end(), size_t{0});
    }
    Selection selection;
    for (const size_t i : inside) {
        const Entry& entry = m_entries[i];
        if (window && !entry.isDisplayed) {
            ++selection.notDisplayed;
        } else if (entry.isEnvelope) {
            selection.envelopes.append(entry.id);
        } else {
            selection.ids.append(entry.id);
            if (entry.box) selection.box.Add(*entry.box);
        }
    }
    return selection;
}

void PickList::CountCut(const Box& window, Selection& selection) const {
    for (const Entry& entry : m_entries) {
        if (!entry.box || !entry.isDisplayed || entry.isEnvelope) continue;
        if (!window.Meets(*entry.box, 0.0) || window.Contains(*entry.box)) continue;
        // Where it leaves the window, as far as its box tells.
        const Box& box = *entry.box;
        const double x = box.low.x < window.low.x     ? window.low.x
                         : box.high.x > window.high.x ? window.high.x
                                                      : (box.low.x + box.high.x) / 2;
        const double y = box.low.y < window.low.y     ? window.low.y
                         : box.high.y > window.high.y ? window.high.y
                                                      : (box.low.y + box.high.y) / 2;
        if (selection.cut++ == 0)
            selection.cutAt = {std::clamp(x, window.low.x, window.high.x),
                               std::clamp(y, window.low.y, window.high.y)};
    }
}

namespace {

// What becomes of each picked entity under a filter. A block counts by what it holds; its own layer
// and type can only keep it out.
class FilteredPick {
public:
    FilteredPick(AcDbDatabase& database, const PickRule& rule)
        : m_walk(&database), m_takes(rule.Filter()), m_rule(rule) {}

    void Take(const AcDbObjectId& id, Selection& kept) {
        if (KeepsOut(id)) {
            ++kept.filtered;
            return;
        }
        size_t all = 0, taken = 0;
        AcArray<AcDbObjectId> one;
        one.append(id);
        m_walk.Walk(one, [&](const SDrawnItem& item) {
            ++all;
            taken += m_takes(m_walk.LayerName(item.m_layerId), item.m_entity.isA());
        });
        if (all > 0 && taken == 0) {
            ++kept.filtered;
            return;
        }
        kept.partial += taken < all;
        kept.ids.append(id);
    }

private:
    // A block on a layer that is excluded, or blocks altogether.
    bool KeepsOut(const AcDbObjectId& id) {
        const AcDbObjectPointer<AcDbBlockReference> block(id, AcDb::kForRead);
        if (block.openStatus() != Acad::eOk) return false;
        PickRule without = m_rule;
        without.layers.clear();
        const detect::ItemFilter takes = without.Filter();
        return takes && !takes(m_walk.LayerName(block->layerId()), block->isA());
    }

    CDrawnWalk m_walk;
    detect::ItemFilter m_takes;
    const PickRule& m_rule;
};

AcArray<AcDbObjectId> CrossedBy(AcDbDatabase& database, const Box& window) {
    AcArray<AcDbObjectId> ids;
    for (const AcDbObjectId& id :
         host::QueryRectangle(database, AcGePoint3d(window.low.x, window.low.y, 0.0),
                              AcGePoint3d(window.high.x, window.high.y, 0.0), true))
        ids.append(id);
    return ids;
}

}  // namespace

Selection PickBy(AcDbDatabase& database, const PickRule& rule) {
    Selection selection;
    if (rule.window && rule.isCrossing) {
        selection = SelectionOf(CrossedBy(database, *rule.window));
    } else {
        const PickList list(database);
        selection = list.Pick(rule.window);
        if (rule.window) list.CountCut(*rule.window, selection);
    }
    if (!rule.HasFilters()) return selection;
    Selection kept = selection;
    kept.ids.removeAll();
    FilteredPick filter(database, rule);
    for (int i = 0; i < selection.ids.length(); ++i) filter.Take(selection.ids[i], kept);
    kept.box = BoxOf(GetEntitiesBox(kept.ids));
    return kept;
}

PieceEstimate EstimateSegments(const AcArray<AcDbObjectId>& ids, double arcPrecision) {
    return SumOf(
        ids, CBlockSum([arcPrecision](const AcDbEntity* e) { return CountChords(e, arcPrecision); },
                       ScaleChords));
}

PieceEstimate EstimatePieces(const AcArray<AcDbObjectId>& ids) {
    return SumOf(ids, MakePieceCount());
}

}  // namespace product
