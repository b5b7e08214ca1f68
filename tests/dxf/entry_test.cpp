// What a dictionary, a group or a list of reactors names and this program does not understand stays
// when something else in it changes.
#include <functional>

#include "drawing_text.h"
#include "line_diff.h"

namespace {

using namespace test;

void Ok(Acad::ErrorStatus es) { EXPECT_EQ(Acad::eOk, es); }

// LOST names nothing, TASKS stands there twice, SELF is the dictionary itself, a name has no
// object, and one entry owns what it names while the others do not.
std::string Drawing() {
    return Lines(
        Header("AC1015", "9|$HANDSEED|5|200") +
        Section("TABLES",
                "0|TABLE|2|BLOCK_RECORD|5|1|330|0|100|AcDbSymbolTable|70|1|0|BLOCK_RECORD|5|1F|330|"
                "1|100|AcDbSymbolTableRecord|100|AcDbBlockTableRecord|2|*Model_Space|340|0|0|"
                "ENDTAB") +
        Section("ENTITIES",
                "0|LINE|5|30|102|{ACAD_REACTORS|330|F0|330|42|330|43|102|}|330|1F|100|AcDbEntity|8|"
                "0|100|AcDbLine|10|0.0|20|0.0|30|0.0|11|1.0|21|0.0|31|0.0|"
                "0|POINT|5|31|102|{ACAD_REACTORS|330|F0|330|42|102|}|330|1F|100|AcDbEntity|8|0|100|"
                "AcDbPoint|10|0.0|20|0.0|30|0.0") +
        Section("OBJECTS",
                "0|DICTIONARY|5|C|330|0|100|AcDbDictionary|281|1|3|LOST|350|F1|3|TASKS|350|40|3|"
                "OWNED|360|41|3|TASKS|350|41|3|SELF|350|C|3|NAMELESS|3|PAIR|350|42|3|REST|350|F2|"
                "0|XRECORD|5|40|330|C|100|AcDbXrecord|280|1|1|text|"
                "0|XRECORD|5|41|330|C|100|AcDbXrecord|280|1|1|owned|"
                "0|GROUP|5|42|330|C|100|AcDbGroup|300||70|0|71|1|340|F3|340|30|340|F4|340|31|"
                "0|XRECORD|5|43|330|C|100|AcDbXrecord|280|1|1|watches") +
        "0|EOF");
}

template <class T>
void Change(Loaded& drawing, Adesk::UInt64 handle, const std::function<void(T&)>& change) {
    T* object = nullptr;
    ASSERT_EQ(Acad::eOk, acdbOpenObject(object, drawing.Id(handle), AcDb::kForWrite));
    change(*object);
    Ok(object->close());
}

void Add(Loaded& drawing, const wchar_t* name) {
    Change<AcDbDictionary>(drawing, 0xC, [&](auto& root) {
        auto* record = new AcDbXrecord;
        AcDbObjectId id;
        Ok(root.setAt(name, record, id));
        Ok(record->close());
    });
}

struct EntryCase {
    const char* name;
    std::function<void(Loaded&)> change;
    const char* diff;
};

const EntryCase kCases[] = {
    {"one more goes to the end", [](Loaded& d) { Add(d, L"NEW"); },
     "-200|+214|+3|+NEW|+360|+213|+XRECORD|+5|+213|+330|+C|+100|+AcDbXrecord|+280|+1|+0"},
    {"a new object takes the place of the old", [](Loaded& d) { Add(d, L"TASKS"); },
     "-200|+214|-40|+213|-40|-330|-C|-100|-AcDbXrecord|-280|-1|-1|-text|-0|-XRECORD|-5|+XRECORD|+5|"
     "+213|+330|+C|+100|+AcDbXrecord|+280|+1|+0"},
    {"another name",
     [](Loaded& d) {
         Change<AcDbDictionary>(d, 0xC,
                                [](auto& root) { EXPECT_TRUE(root.setName(L"OWNED", L"MINE")); });
     },
     "-OWNED|+MINE"},
    {"one erased", [](Loaded& d) { Change<AcDbObject>(d, 0x41, [](auto& o) { Ok(o.erase()); }); },
     "-OWNED|-360|-41|-3|-XRECORD|-5|-41|-330|-C|-100|-AcDbXrecord|-280|-1|-1|-owned|-0"},
    {"one taken out",
     [](Loaded& d) {
         Change<AcDbDictionary>(d, 0xC, [](auto& root) { Ok(root.remove(L"PAIR")); });
     },
     "-PAIR|-350|-42|-3"},
    {"a member of a group less",
     [](Loaded& d) {
         Change<AcDbGroup>(d, 0x42, [&](auto& group) { Ok(group.remove(d.Id(0x30))); });
     },
     "-30|-340"},
    {"a reactor less",
     [](Loaded& d) {
         Change<AcDbObject>(d, 0x30,
                            [&](auto& line) { Ok(line.removePersistentReactor(d.Id(0x43))); });
     },
     "-330|-43"},
    {"a reactor more",
     [](Loaded& d) {
         Change<AcDbObject>(d, 0x31,
                            [&](auto& point) { Ok(point.addPersistentReactor(d.Id(0x43))); });
     },
     "+330|+43"},
    {"the last reactor that is understood",
     [](Loaded& d) {
         Change<AcDbObject>(d, 0x31,
                            [&](auto& point) { Ok(point.removePersistentReactor(d.Id(0x42))); });
     },
     "-330|-42"}};

TEST(Entry, WhatIsNotUnderstoodStays) {
    const std::string before = Drawing();
    for (const EntryCase& c : kCases) {
        SCOPED_TRACE(c.name);
        for (bool binary : {false, true}) {
            Loaded drawing(binary ? BinaryOf(before, true) : before);
            ASSERT_TRUE(drawing.result.ok()) << drawing.result.message;
            c.change(drawing);
            std::string after = drawing.Written();
            Loaded plain(before);
            c.change(plain);
            if (binary) {
                EXPECT_EQ(BinaryOf(plain.Written(), true), after);
                continue;
            }
            EXPECT_EQ(c.diff, Diff(before, after));
            EXPECT_EQ(after, Loaded(after).Written());
        }
    }
}

}  // namespace
