// Entities keep their order through erasing, un-erasing and tidying up.

#include <algorithm>

#include "db_test.h"
#include "host/db/build.h"

namespace test {
namespace {

class EntityOrder : public DbTest {
protected:
    void SetErased(AcDbObjectId id, bool erasing) {
        AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite, true);
        ASSERT_OK(line.openStatus());
        EXPECT_OK(line->erase(erasing));
    }
};

// Against a plain list, over many random steps; erased entities come and go from the tidied list.
TEST_F(EntityOrder, LikeAPlainList) {
    for (unsigned seed = 0; seed < 8; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        std::vector<std::pair<AcDbObjectId, bool>> model;  // and whether it lives
        for (const AcDbObjectId id : Entities()) model.push_back({id, true});
        for (int step = 0; step < 1500; ++step) {
            const int kind = random.Int(0, 9);
            if (kind < 3 || model.empty()) {
                model.push_back({Add(new AcDbLine), true});
            } else {
                auto& entry =
                    model[static_cast<size_t>(random.Int(0, static_cast<int>(model.size()) - 1))];
                const bool erasing = kind < 9;
                if (entry.second == erasing) {
                    SetErased(entry.first, erasing);
                    entry.second = !erasing;
                }
            }
        }
        std::vector<AcDbObjectId> live, all;
        for (const auto& entry : model) {
            all.push_back(entry.first);
            if (entry.second) live.push_back(entry.first);
        }
        EXPECT_EQ(live, Entities(true));
        EXPECT_EQ(all, Entities(false));
        host::PurgeErased(db);
        EXPECT_EQ(live, Entities(false));
    }
}

TEST_F(EntityOrder, BackwardsIsTheReverse) {
    std::vector<AcDbObjectId> ids;
    for (int i = 0; i < 300; ++i) ids.push_back(Add(new AcDbLine));
    for (size_t i = 0; i < ids.size(); i += 3) SetErased(ids[i], true);
    AcDbBlockTableRecordPointer space(ModelSpace(), AcDb::kForRead);
    for (const bool skip : {true, false}) {
        AcDbBlockTableRecordIterator* made = nullptr;
        ASSERT_OK(space->newIterator(made, false, skip));
        const std::unique_ptr<AcDbBlockTableRecordIterator> it(made);
        std::vector<AcDbObjectId> backwards;
        for (; !it->done(); it->step(false, skip)) {
            AcDbObjectId id;
            EXPECT_OK(it->getEntityId(id));
            backwards.push_back(id);
        }
        std::reverse(backwards.begin(), backwards.end());
        EXPECT_EQ(Entities(skip), backwards);
    }
}

// A pass that erases what it visits and appends pieces, as breaking lines does.
TEST_F(EntityOrder, ChangingWhileIterating) {
    for (int i = 0; i < 500; ++i) Add(new AcDbLine);
    const std::vector<AcDbObjectId> before = Entities();
    AcDbBlockTableRecord* space = nullptr;
    ASSERT_OK(acdbOpenObject(space, ModelSpace(), AcDb::kForWrite));
    AcDbBlockTableRecordIterator* made = nullptr;
    ASSERT_OK(space->newIterator(made));
    std::unique_ptr<AcDbBlockTableRecordIterator> it(made);
    size_t visited = 0, appended = 0;
    for (; !it->done(); it->step()) {
        AcDbEntity* entity = nullptr;
        ASSERT_OK(it->getEntity(entity, AcDb::kForWrite));
        if (visited < before.size()) {
            EXPECT_EQ(before[visited], entity->objectId());
            if (visited % 5 == 0) {
                auto* piece = new AcDbLine;
                ASSERT_OK(space->appendAcDbEntity(piece));
                EXPECT_OK(piece->close());
                ++appended;
            }
            EXPECT_OK(entity->erase());
        }
        ++visited;
        EXPECT_OK(entity->close());
    }
    EXPECT_OK(space->close());
    EXPECT_EQ(before.size() + appended, visited);
    EXPECT_EQ(appended, Entities().size());
}

}  // namespace
}  // namespace test
