// What applications store: dictionaries, Xrecords, extended data, extension dictionaries, groups,
// handles.

#include "db_test.h"
#include "host/db/build.h"

namespace test {
namespace {

// A chain in a line of text: "1=abc 10=1,2,3 40=0.5 90=-7 290=1 1000=". Owns its nodes.
class Chain {
public:
    explicit Chain(const std::string& text) {
        std::istringstream in(text);
        std::string word;
        while (in >> word) Append(word);
    }
    ~Chain() { acutRelRb(m_head); }
    Chain(const Chain&) = delete;
    Chain& operator=(const Chain&) = delete;
    const resbuf* Head() const { return m_head; }

private:
    void Append(const std::string& word) {
        const size_t equals = word.find('=');
        const int code = std::atoi(word.c_str());
        const std::string value = word.substr(equals + 1);
        resbuf* const node = acutNewRb(code);
        if (code <= 9 || code >= 1000)
            EXPECT_OK(acutNewString(std::wstring(value.begin(), value.end()).c_str(),
                                    node->resval.rstring));
        else if (code < 40)
            std::sscanf(value.c_str(), "%lf,%lf,%lf", &node->resval.rpoint[0],
                        &node->resval.rpoint[1], &node->resval.rpoint[2]);
        else if (code < 60)
            node->resval.rreal = std::atof(value.c_str());
        else if (code < 100)
            node->resval.rlong = std::atoi(value.c_str());
        else
            node->resval.rint = static_cast<short>(std::atoi(value.c_str()));
        *m_tail = node;
        m_tail = &node->rbnext;
    }
    resbuf* m_head = nullptr;
    resbuf** m_tail = &m_head;
};

std::string Show(const resbuf* node) {
    std::ostringstream out;
    out.precision(17);
    for (; node != nullptr; node = node->rbnext) {
        const int code = node->restype;
        out << (out.tellp() > 0 ? " " : "") << code << "=";
        if (code <= 9 || code >= 1000)
            for (const ACHAR* at = node->resval.rstring; *at != 0; ++at) out << char(*at);
        else if (code < 40)
            out << node->resval.rpoint[0] << "," << node->resval.rpoint[1] << ","
                << node->resval.rpoint[2];
        else if (code < 60)
            out << node->resval.rreal;
        else if (code < 100)
            out << node->resval.rlong;
        else
            out << node->resval.rint;
    }
    return out.str();
}

class Storage : public DbTest {
protected:
    AcDbObjectId Put(AcDbObjectId dictionaryId, const ACHAR* key, AcDbObject* object) {
        AcDbDictionaryPointer dictionary(dictionaryId, AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_OK(dictionary->setAt(key, object, id));
        EXPECT_OK(object->close());
        return id;
    }
};

TEST_F(Storage, XrecordsReturnWhatWasSet) {
    AcDbXrecord record;
    resbuf* out = nullptr;
    EXPECT_OK(record.rbChain(&out));
    EXPECT_EQ(nullptr, out);
    for (const char* text :
         {"1=abc", "1=", "90=3 91=-1 92=2147483647 1=task 10=1,2,3 40=0.10000000000000001 290=1",
          "1000=handle 1000= 1=x 1000=7F", "40=1.7976931348623157e+308 290=0"}) {
        SCOPED_TRACE(text);
        const Chain chain(text);
        ASSERT_OK(record.setFromRbChain(*chain.Head()));
        ASSERT_OK(record.rbChain(&out));
        EXPECT_EQ(text, Show(out));
        acutRelRb(out);
    }
    for (const int code : {0, 5, 105, 100, 30, 482, 900, 1072}) {
        resbuf* const bad = acutNewRb(code);
        bad->resval = {};
        EXPECT_EQ(Acad::eInvalidResBuf, record.setFromRbChain(*bad)) << code;
        acutRelRb(bad);
    }
    ASSERT_OK(record.rbChain(&out));
    EXPECT_EQ("40=1.7976931348623157e+308 290=0", Show(out));
    acutRelRb(out);
}

// Whoever counts on a zero is found out where assertions are on.
TEST_F(Storage, ANewNodeHasNoValueYet) {
    for (const int code : {40, 90, 290}) {
        resbuf* const node = acutNewRb(code);
        EXPECT_EQ(nullptr, node->rbnext);
        EXPECT_EQ(code, node->restype);
#ifndef NDEBUG
        EXPECT_NE(0, node->resval.rlong);
        EXPECT_NE(0, node->resval.mnInt64);
#endif
        acutRelRb(node);
    }
}

TEST_F(Storage, DictionaryEntries) {
    const AcDbObjectId root = db.namedObjectsDictionaryId();
    const AcDbObjectId mine = Put(root, L"QZ_Tasks", new AcDbDictionary);
    const AcDbObjectId first = Put(mine, L"Task", new AcDbXrecord);
    AcDbObject* object = nullptr;
    AcDbDictionaryPointer dictionary(mine, AcDb::kForRead);
    EXPECT_OK(dictionary->getAt(L"TASK", object, AcDb::kForRead));
    EXPECT_OK(object->close());
    EXPECT_EQ(Acad::eKeyNotFound, dictionary->getAt(L"none", object, AcDb::kForRead));
    AcString name;
    EXPECT_OK(dictionary->nameAt(first, name));
    EXPECT_STREQ(L"Task", name.kACharPtr());
    AcDbXrecord spare;
    AcDbObjectId id;
    EXPECT_EQ(Acad::eNotOpenForWrite, dictionary->setAt(L"b", &spare, id));
    EXPECT_EQ(Acad::eNotOpenForWrite, dictionary->setAt(L"task", &spare, id));
    EXPECT_FALSE(first.isErased());
    ASSERT_OK(dictionary.close());
    // A second object under the name replaces the first one, which is erased.
    const AcDbObjectId second = Put(mine, L"tASK", new AcDbXrecord);
    EXPECT_TRUE(first.isErased());
    const AcDbObjectId third = Put(mine, L"Other", new AcDbXrecord);
    ASSERT_OK(dictionary.open(mine, AcDb::kForRead));
    EXPECT_EQ(2u, dictionary->numEntries());
    const std::unique_ptr<AcDbDictionaryIterator> it(dictionary->newIterator());
    std::wstring names;
    for (; !it->done(); it->next()) names += it->name() + std::wstring(L" ");
    EXPECT_EQ(L"tASK Other ", names);
    ASSERT_OK(dictionary.close());
    Erase(third);
    ASSERT_OK(dictionary.open(mine, AcDb::kForWrite));
    EXPECT_FALSE(dictionary->has(L"Other"));
    EXPECT_EQ(1u, dictionary->numEntries());
    EXPECT_OK(dictionary->remove(L"task", id));
    EXPECT_EQ(second, id);
    EXPECT_FALSE(second.isErased());
    ASSERT_OK(dictionary.close());
    const AcDbObjectId fourth = Put(mine, L"Task", new AcDbXrecord);
    Erase(mine);
    EXPECT_TRUE(fourth.isErased());
}

TEST_F(Storage, ExtendedData) {
    const AcDbObjectId id = Add(new AcDbLine);
    ASSERT_TRUE(acdbRegApp(L"QZ_APP"));
    ASSERT_TRUE(acdbRegApp(L"OTHER"));
    AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
    EXPECT_EQ(nullptr, line->xData());
    EXPECT_EQ(Acad::eKeyNotFound, line->setXData(Chain("1001=UNKNOWN 1000=x").Head()));
    EXPECT_EQ(Acad::eInvalidResBuf, line->setXData(Chain("1000=x").Head()));
    EXPECT_EQ(Acad::eInvalidResBuf, line->setXData(Chain("1001=QZ_APP 1=x").Head()));
    EXPECT_OK(line->setXData(Chain("1001=QZ_APP 1000=0008 1001=OTHER 1000=y").Head()));
    EXPECT_OK(line->setXData(Chain("1001=qz_app 1000=0009").Head()));
    const struct {
        const ACHAR* app;
        const char* text;
    } kReads[] = {{L"QZ_APP", "1001=qz_app 1000=0009"},
                  {L"other", "1001=OTHER 1000=y"},
                  {L"NONE", ""},
                  {nullptr, "1001=OTHER 1000=y 1001=qz_app 1000=0009"}};
    for (const auto& c : kReads) {
        resbuf* const chain = line->xData(c.app);
        EXPECT_EQ(c.text, Show(chain));
        acutRelRb(chain);
    }
    EXPECT_OK(line->setXData(Chain("1001=OTHER").Head()));
    resbuf* const left = line->xData();
    EXPECT_EQ("1001=qz_app 1000=0009", Show(left));
    acutRelRb(left);
    std::string big = "1001=QZ_APP";
    for (int i = 0; i < 100; ++i) big += " 1000=" + std::string(200, 'x');
    EXPECT_EQ(Acad::eInvalidInput, line->setXData(Chain(big).Head()));
}

TEST_F(Storage, ExtensionDictionaries) {
    const AcDbObjectId id = Add(new AcDbLine);
    AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
    EXPECT_TRUE(line->extensionDictionary().isNull());
    EXPECT_EQ(Acad::eKeyNotFound, line->releaseExtensionDictionary());
    ASSERT_OK(line->createExtensionDictionary());
    EXPECT_EQ(Acad::eAlreadyInDb, line->createExtensionDictionary());
    const AcDbObjectId dictionary = line->extensionDictionary();
    const AcDbObjectId entry = Put(dictionary, L"KEY", new AcDbXrecord);
    EXPECT_EQ(Acad::eContainerNotEmpty, line->releaseExtensionDictionary());
    EXPECT_OK(line->erase());
    EXPECT_TRUE(dictionary.isErased());
    EXPECT_TRUE(entry.isErased());
    EXPECT_OK(line->erase(false));
    EXPECT_FALSE(entry.isErased());
    Erase(entry);
    EXPECT_OK(line->releaseExtensionDictionary());
    EXPECT_TRUE(line->extensionDictionary().isNull());
}

// What was erased before its owner does not come back with it.
TEST_F(Storage, OwnedObjectsFollowTheirOwner) {
    AcGePoint3dArray vertices;
    for (int i = 0; i < 4; ++i) vertices.append(AcGePoint3d(i, i * i, 0));
    const AcDbObjectId id = Add(new AcDb3dPolyline(AcDb::k3dSimplePoly, vertices));
    AcDbObjectPointer<AcDb3dPolyline> polyline(id, AcDb::kForWrite);
    std::vector<AcDbObjectId> ids;
    for (std::unique_ptr<AcDbObjectIterator> it(polyline->vertexIterator()); !it->done();
         it->step())
        ids.push_back(it->objectId());
    ASSERT_EQ(4u, ids.size());
    Erase(ids[1]);
    EXPECT_EQ("L 0,0 2,4 | L 2,4 3,9", test::Show(Pieces(*polyline)));
    EXPECT_OK(polyline->erase());
    for (const AcDbObjectId vertex : ids) EXPECT_TRUE(vertex.isErased());
    EXPECT_OK(polyline->erase(false));
    EXPECT_EQ("L 0,0 2,4 | L 2,4 3,9", test::Show(Pieces(*polyline)));
    EXPECT_TRUE(ids[1].isErased());
}

TEST_F(Storage, Groups) {
    const AcDbObjectId a = Add(new AcDbLine), b = Add(new AcDbLine), c = Add(new AcDbLine);
    auto* group = new AcDbGroup(L"tool");
    const AcDbObjectId id = Put(db.groupDictionaryId(), L"T1", group);
    ASSERT_OK(acdbOpenObject(group, id, AcDb::kForWrite));
    EXPECT_OK(group->append(a));
    EXPECT_OK(group->append(b));
    EXPECT_EQ(Acad::eDuplicateKey, group->append(a));
    AcString name;
    EXPECT_OK(group->getName(name));
    EXPECT_STREQ(L"T1", name.kACharPtr());
    Erase(a);
    EXPECT_OK(group->append(c));
    AcDbObjectIdArray ids;
    EXPECT_EQ(2u, group->allEntityIds(ids));
    EXPECT_EQ(b, ids[0]);
    const std::unique_ptr<AcDbGroupIterator> it(group->newIterator());
    EXPECT_EQ(b, it->objectId());
    EXPECT_TRUE(it->next());
    EXPECT_FALSE(it->next());
    EXPECT_OK(group->close());
    AcDbObjectPointer<AcDbLine> member(b, AcDb::kForRead);
    EXPECT_TRUE(member->hasPersistentReactor(id));
}

TEST_F(Storage, Handles) {
    const struct {
        const ACHAR* text;
        Adesk::UInt64 value;
        const ACHAR* shown;
    } kTexts[] = {{L"0", 0, L"0"},
                  {L"1f", 0x1F, L"1F"},
                  {L"00A", 0xA, L"A"},
                  {L"FFFFFFFFFFFFFFFF", ~Adesk::UInt64(0), L"FFFFFFFFFFFFFFFF"},
                  {L"12345678901234567", 0, L"0"},
                  {L"", 0, L"0"},
                  {L"xyz", 0, L"0"}};
    for (const auto& c : kTexts) {
        const AcDbHandle handle(c.text);
        EXPECT_EQ(c.value, Adesk::UInt64(handle));
        ACHAR text[AcDbHandle::kStrSiz];
        EXPECT_TRUE(handle.getIntoAsciiBuffer(text));
        EXPECT_STREQ(c.shown, text);
    }
    ACHAR small[2];
    EXPECT_FALSE(AcDbHandle(L"1F").getIntoAsciiBuffer(small, 2));
    AcDbObjectId id;
    EXPECT_EQ(Acad::eNullHandle, db.getAcDbObjectId(id, false, AcDbHandle()));
    EXPECT_EQ(Acad::eUnknownHandle, db.getAcDbObjectId(id, false, AcDbHandle(L"FFFF")));
    // Never used twice, whatever is erased and purged in between.
    Adesk::UInt64 last = 0;
    for (int i = 0; i < 2000; ++i) {
        const AcDbObjectId line = Add(new AcDbLine);
        EXPECT_GT(Adesk::UInt64(line.handle()), last);
        last = line.handle();
        if (i % 2 == 0) Erase(line);
        if (i % 100 == 0) host::PurgeErased(db);
    }
    EXPECT_GT(Adesk::UInt64(db.handseed()), last);
    ads_name name;
    const AcDbObjectId line = Add(new AcDbLine);
    EXPECT_OK(acdbGetAdsName(name, line));
    EXPECT_OK(acdbGetObjectId(id, name));
    EXPECT_EQ(line, id);
}

}  // namespace
}  // namespace test
