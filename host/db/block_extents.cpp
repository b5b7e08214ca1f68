#include "host/db/block_extents.h"

#include <algorithm>
#include <map>
#include <set>
#include <vector>

#include "host/db/access.h"
#include "host/db/database_imp.h"
#include "host/db/dimension_drawing.h"
#include "host/db/entity_list.h"

namespace host {
namespace {

using Block = AcDbBlockTableRecord;

// The block that an entity shows, and how.
struct Shown {
    const Block* block = nullptr;
    const AcDbDimension* dimension = nullptr;  // else a reference shows it
};

const Block* BlockOf(const AcDbBlockReference& reference) {
    const AcDbObjectId id = reference.blockTableRecord();
    if (id.isNull() || id.isErased()) return nullptr;
    return Block::cast(ObjectOf(*id.stub()));
}

Shown ShownBy(const AcDbEntity& entity) {
    Shown shown;
    if (const auto* reference = AcDbBlockReference::cast(&entity)) {
        shown.block = BlockOf(*reference);
    } else if (const auto* dimension = AcDbDimension::cast(&entity)) {
        shown.dimension = dimension;
        shown.block = DrawingOf(*dimension);
    }
    return shown;
}

std::vector<AcGeMatrix3d> PlacesOf(const AcDbEntity& entity, const Shown& shown) {
    // A turned or scaled copy of a dimension would have no drawing any more.
    if (shown.dimension != nullptr) return {PlaceOfDrawing(*shown.dimension)};
    return Access::Cells(static_cast<const AcDbBlockReference&>(entity));
}

double CountCells(const AcDbEntity& entity) {
    const auto* array = AcDbMInsertBlock::cast(&entity);
    if (array == nullptr) return 1.0;
    return (std::max)(1.0, static_cast<double>(array->rows())) *
           (std::max)(1.0, static_cast<double>(array->columns()));
}

// A part of a block that its references or its dimensions show.
bool IsShown(const AcDbEntity& entity, bool byDimension) {
    if (byDimension) return IsDrawnOfDimension(entity);
    // Attribute definitions are shown as the reference's attributes, constant ones as such.
    const auto* definition = AcDbAttributeDefinition::cast(&entity);
    if (definition != nullptr && !(definition->isConstant() && !definition->isInvisible()))
        return false;
    return entity.visibility() == AcDb::kVisible;
}

const AcDbEntity* EntityOf(Stub& stub) { return static_cast<const AcDbEntity*>(ObjectOf(stub)); }

// Whether an entity is a box of its own, or what it shows is to be looked at. A dimension without a
// drawing is as any other.
bool IsLeaf(const AcDbEntity& entity, const Shown& shown) {
    return shown.block == nullptr && AcDbBlockReference::cast(&entity) == nullptr;
}

void AddAttributes(const AcDbEntity& entity, const AcGeMatrix3d& matrix, AcDbExtents& box) {
    const auto* reference = AcDbBlockReference::cast(&entity);
    if (reference == nullptr) return;
    for (const AcDbEntity* const attribute : Access::Owned(*reference).Live())
        if (attribute->visibility() == AcDb::kVisible) AddMoved(*attribute, matrix, box);
}

// A figure of each block, taken from those of the blocks inside it, each block once; without
// recursion, for files can nest as deep as they have blocks. Figure: Value(), Add(value, entity,
// shown, value of its block or null for a leaf).
template <class Value, class Add>
class BlockFold {
public:
    explicit BlockFold(Add add) : m_add(add) {}

    const Value& Of(const Block& block, bool byDimension) {
        const Key root{&block, byDimension};
        if (!Enter(root)) return m_values.at(root).value;
        while (!m_path.empty()) {
            Step& step = m_path.back();
            if (step.next == step.members.size()) {
                m_values.at(step.key).isDone = true;
                m_path.pop_back();
                continue;
            }
            const AcDbEntity* const entity = EntityOf(*step.members[step.next]);
            if (entity == nullptr || !IsShown(*entity, step.key.second)) {
                ++step.next;
                continue;
            }
            const Shown shown = ShownBy(*entity);
            const Key inner{shown.block, shown.dimension != nullptr};
            // Looked at first; then the same entity comes round again.
            if (shown.block != nullptr && Enter(inner)) continue;
            ++step.next;
            const Value* value = nullptr;
            if (shown.block != nullptr) {
                const Entry& entry = m_values.at(inner);
                if (!entry.isDone) continue;  // a block inside itself
                value = &entry.value;
            }
            if (value != nullptr || IsLeaf(*entity, shown))
                m_add(m_values.at(step.key).value, *entity, shown, value);
        }
        return m_values.at(root).value;
    }

private:
    using Key = std::pair<const Block*, bool>;
    struct Entry {
        Value value{};
        bool isDone = false;
    };
    struct Step {
        Key key;
        std::vector<Stub*> members;
        size_t next = 0;
    };

    // False when the block is known or being looked at.
    bool Enter(const Key& key) {
        if (!m_values.try_emplace(key).second) return false;
        m_path.push_back({key, Access::Entities(*key.first)->Live()});
        return true;
    }

    Add m_add;
    std::map<Key, Entry> m_values;
    std::vector<Step> m_path;
};

void AddPieces(double& sum, const AcDbEntity& entity, const Shown&, const double* inner) {
    sum += inner == nullptr ? 1.0 : 1.0 + CountCells(entity) * *inner;
}

// Corners of the parallelogram that an array's cells fill: no other cell reaches further.
std::vector<AcGeMatrix3d> OuterPlaces(const AcDbEntity& entity, const Shown& shown) {
    const auto* array = AcDbMInsertBlock::cast(&entity);
    if (array == nullptr) return PlacesOf(entity, shown);
    const AcGeMatrix3d axes =
        AcGeMatrix3d::planeToWorld(array->normal()) *
        AcGeMatrix3d::rotation(array->rotation(), AcGeVector3d::kZAxis, AcGePoint3d::kOrigin);
    const AcGeMatrix3d first = array->blockTransform();
    const double right = array->columnSpacing() * (std::max)(0, array->columns() - 1);
    const double up = array->rowSpacing() * (std::max)(0, array->rows() - 1);
    std::vector<AcGeMatrix3d> places;
    for (const AcGeVector3d& step : {AcGeVector3d(), AcGeVector3d(right, 0, 0),
                                     AcGeVector3d(0, up, 0), AcGeVector3d(right, up, 0)})
        places.push_back(AcGeMatrix3d::translation(axes * step) * first);
    return places;
}

void AddBoxes(AcDbExtents& sum, const AcDbEntity& entity, const Shown& shown,
              const AcDbExtents* inner) {
    if (inner == nullptr) {
        AcDbExtents own;
        if (entity.getGeomExtents(own) == Acad::eOk) sum.addExt(own);
        return;
    }
    for (const AcGeMatrix3d& place : OuterPlaces(entity, shown)) {
        AcDbExtents moved = *inner;
        moved.transformBy(place);
        sum.addExt(moved);
    }
    AddAttributes(entity, AcGeMatrix3d::kIdentity, sum);
}

// Every piece by itself.
class ExactWalk {
public:
    explicit ExactWalk(AcDbExtents& box) : m_box(box) {}

    void Run(const AcDbEntity& entity, const AcGeMatrix3d& matrix) {
        Enter(entity, ShownBy(entity), matrix);
        while (!m_path.empty()) {
            Step& step = m_path.back();
            if (step.next == step.members.size()) {
                step.next = 0;
                if (++step.cell < step.places.size()) continue;
                m_inside.erase(step.block);
                m_path.pop_back();
                continue;
            }
            const AcDbEntity* const part = EntityOf(*step.members[step.next++]);
            if (part == nullptr || !IsShown(*part, step.byDimension)) continue;
            const AcGeMatrix3d place = step.places[step.cell];
            const Shown shown = ShownBy(*part);
            if (IsLeaf(*part, shown)) {
                AddMoved(*part, place, m_box);
                continue;
            }
            AddAttributes(*part, place, m_box);
            Enter(*part, shown, place);
        }
    }

private:
    struct Step {
        const Block* block;
        bool byDimension;
        std::vector<AcGeMatrix3d> places;
        std::vector<Stub*> members;
        size_t cell = 0, next = 0;
    };

    void Enter(const AcDbEntity& entity, const Shown& shown, const AcGeMatrix3d& matrix) {
        if (shown.block == nullptr || !m_inside.insert(shown.block).second) return;
        Step step{shown.block, shown.dimension != nullptr, PlacesOf(entity, shown),
                  Access::Entities(*shown.block)->Live()};
        for (AcGeMatrix3d& place : step.places) place = matrix * place;
        m_path.push_back(std::move(step));
    }

    AcDbExtents& m_box;
    std::vector<Step> m_path;
    std::set<const Block*> m_inside;  // blocks of the path: one inside itself is passed over
};

double CountShown(const Block& block, bool byDimension) {
    BlockFold<double, decltype(&AddPieces)> fold(&AddPieces);
    return fold.Of(block, byDimension);
}

}  // namespace

double CountPieces(const AcDbBlockTableRecord& block) { return CountShown(block, false); }

void AddShownBlock(const AcDbEntity& entity, const AcGeMatrix3d& matrix, AcDbExtents& box) {
    const Shown shown = ShownBy(entity);
    if (shown.block == nullptr) return;
    const double pieces = CountCells(entity) * CountShown(*shown.block, shown.dimension != nullptr);
    if (pieces <= kMostExactPieces) {
        ExactWalk(box).Run(entity, matrix);
        return;
    }
    BlockFold<AcDbExtents, decltype(&AddBoxes)> fold(&AddBoxes);
    const AcDbExtents& inner = fold.Of(*shown.block, shown.dimension != nullptr);
    for (const AcGeMatrix3d& place : OuterPlaces(entity, shown)) {
        AcDbExtents moved = inner;
        moved.transformBy(matrix * place);
        box.addExt(moved);
    }
}

void AddMoved(const AcDbEntity& entity, const AcGeMatrix3d& matrix, AcDbExtents& box) {
    AcDbExtents own;
    AcDbEntity* moved = nullptr;
    if (entity.getTransformedCopy(matrix, moved) == Acad::eOk) {
        if (moved->getGeomExtents(own) == Acad::eOk) box.addExt(own);
        delete moved;
    } else if (entity.getGeomExtents(own) == Acad::eOk) {
        // What cannot be mapped exactly (texts under unequal scales, unknown entities) is bounded
        // by the map of its box.
        own.transformBy(matrix);
        box.addExt(own);
    }
}

}  // namespace host
