// Any bytes give a status or a drawing, never a crash; what reads also writes, and reads again the
// same.
#include <chrono>
#include <random>

#include "drawing_text.h"

namespace {

using namespace test;

// Small drawings that between them have every kind of record the reader looks into.
std::vector<std::string> Seeds() {
    const std::string tables =
        "0|TABLE|2|LTYPE|5|5|70|1|0|LTYPE|5|14|2|DASH|70|0|3|__|72|65|73|2|40|2.0|49|1.0|74|0|49|-"
        "1.0|"
        "74|0|0|ENDTAB|0|TABLE|2|LAYER|5|2|70|1|0|LAYER|5|10|330|2|100|AcDbSymbolTableRecord|100|"
        "AcDbLayerTableRecord|2|AXIS|70|0|62|-1|6|DASH|0|ENDTAB|0|TABLE|2|STYLE|70|1|0|STYLE|5|11|"
        "2|"
        "STANDARD|70|0|40|0.0|41|1.0|50|0.0|71|0|42|2.5|3|txt|4||0|ENDTAB|0|TABLE|2|VPORT|70|1|0|"
        "VPORT|"
        "5|12|2|*ACTIVE|70|0|10|0.0|20|0.0|11|1.0|21|1.0|12|5.0|22|5.0|40|10.0|41|1.5|0|ENDTAB|0|"
        "TABLE|"
        "2|BLOCK_RECORD|5|1|70|2|0|BLOCK_RECORD|5|1F|2|*Model_Space|340|0|0|BLOCK_RECORD|5|1E|2|"
        "PART|0|"
        "ENDTAB";
    const std::string blocks =
        "0|BLOCK|5|20|8|0|2|*Model_Space|70|0|10|0.0|20|0.0|30|0.0|3|*Model_Space|1||0|ENDBLK|5|21|"
        "0|"
        "BLOCK|5|22|8|0|2|PART|70|2|10|1.0|20|0.0|30|0.0|3|PART|1||0|CIRCLE|5|23|8|AXIS|10|0.0|20|"
        "0.0|"
        "30|0.0|40|3.0|0|ATTDEF|5|24|8|0|10|0.0|20|0.0|40|1.0|1|x|3|tool?|2|TOOL|70|0|0|ENDBLK|5|"
        "25";
    const std::string entities =
        "0|LWPOLYLINE|5|30|8|AXIS|90|3|70|1|43|0.0|10|0.0|20|0.0|42|0.5|10|4.0|20|0.0|10|4.0|20|4."
        "0|"
        "0|SPLINE|5|31|8|0|70|8|71|3|72|8|73|4|74|0|40|0.0|40|0.0|40|0.0|40|0.0|40|1.0|40|1.0|40|1."
        "0|40|"
        "1.0|10|0.0|20|0.0|30|0.0|10|1.0|20|1.0|30|0.0|10|2.0|20|1.0|30|0.0|10|3.0|20|0.0|30|0.0|"
        "0|HATCH|5|32|8|0|10|0.0|20|0.0|30|0.0|210|0.0|220|0.0|230|1.0|2|ANSI31|70|0|71|0|91|2|92|"
        "2|72|"
        "1|73|1|93|2|10|0.0|20|0.0|42|1.0|10|1.0|20|0.0|42|1.0|97|0|92|1|93|3|72|1|10|0.0|20|0.0|"
        "11|1.0|"
        "21|1.0|72|2|10|0.0|20|0.0|40|1.0|50|0.0|51|90.0|73|1|72|4|94|3|73|0|74|0|95|8|96|4|40|0.0|"
        "10|"
        "0.0|20|0.0|97|0|75|0|76|1|52|45.0|41|1.0|77|0|78|1|53|45.0|43|0.0|44|0.0|45|1.0|46|1.0|79|"
        "1|49|"
        "1.0|98|1|10|0.5|20|0.5|"
        "0|POLYLINE|5|33|8|0|66|1|70|8|0|VERTEX|5|34|8|0|10|1.0|20|1.0|30|1.0|70|32|0|SEQEND|5|35|"
        "8|0|"
        "0|POLYLINE|5|36|8|0|66|1|70|64|71|1|72|1|0|VERTEX|5|37|8|0|10|1.0|20|1.0|30|1.0|70|192|0|"
        "VERTEX|5|38|8|0|10|0.0|20|0.0|30|0.0|70|128|71|1|0|SEQEND|5|39|8|0|"
        "0|INSERT|5|3A|8|0|66|1|2|PART|10|1.0|20|2.0|30|0.0|41|2.0|70|2|71|2|44|5.0|45|5.0|0|"
        "ATTRIB|5|3B|"
        "8|0|10|1.0|20|2.0|40|1.0|1|T1|2|TOOL|70|1|0|SEQEND|5|3C|8|0|"
        "0|DIMENSION|5|3D|8|0|2|*D1|10|1.0|20|1.0|30|0.0|11|2.0|21|2.0|31|0.0|70|32|13|0.0|23|0.0|"
        "14|1.0|"
        "24|1.0|50|30.0|0|MTEXT|5|3E|8|0|10|0.0|20|0.0|30|0.0|40|2.5|41|10.0|71|1|3|long "
        "|1|text|50|30.0|"
        "0|ELLIPSE|5|3F|8|0|10|0.0|20|0.0|30|0.0|11|2.0|21|0.0|31|0.0|40|0.5|41|1.0|42|0.5|"
        "0|LEADER|5|40|8|0|3|STANDARD|71|1|72|0|73|3|76|2|10|0.0|20|0.0|10|1.0|20|1.0|"
        "0|WIPEOUT|5|41|8|0|10|0.0|20|0.0|30|0.0|11|1.0|21|0.0|31|0.0|12|0.0|22|1.0|32|0.0|13|1.0|"
        "23|1.0|"
        "71|1|91|2|14|-0.5|24|-0.5|14|0.5|24|0.5|"
        "0|3DSOLID|5|42|8|0|70|1|1|x|3|y|0|VIEWPORT|5|43|8|0|67|1|10|0.0|20|0.0|40|1.0|41|1.0|69|1|"
        "0|LINE|5|44|102|{ACAD_XDICTIONARY|360|50|102|}|8|0|62|300|10|0.0|20|0.0|11|1.0|21|1.0|210|"
        "0.0|"
        "220|0.0|230|-1.0|1001|ACAD|1002|{|1010|1.0|1020|2.0|1030|3.0|1002|}|1004|00FF|1071|5";
    const std::string objects =
        "0|DICTIONARY|5|C|330|0|100|AcDbDictionary|281|1|3|A|350|51|3|ACAD_GROUP|350|52|"
        "0|DICTIONARY|5|50|330|44|100|AcDbDictionary|280|1|0|XRECORD|5|51|330|C|100|AcDbXrecord|"
        "280|1|1|"
        "text|10|1.0|20|2.0|30|3.0|310|00FF|330|44|1000|x|0|DICTIONARY|5|52|330|C|100|"
        "AcDbDictionary|3|G|"
        "350|53|0|GROUP|5|53|330|52|100|AcDbGroup|300|g|70|0|71|1|340|44|340|30|"
        "0|LAYOUT|5|54|330|C|100|AcDbPlotSettings|1||100|AcDbLayout|1|Model|70|1|71|0|330|1F";
    const auto drawing = [&](const std::string& version) {
        return Lines(
            Header(version, "9|$CLAYER|8|AXIS|9|$HANDSEED|5|FF|9|$EXTMIN|10|0.0|20|0.0|30|0.0") +
            Section("CLASSES", "0|CLASS|1|X|2|AcDbX|3|app|90|0|280|0|281|0") +
            Section("TABLES", tables) + Section("BLOCKS", blocks) + Section("ENTITIES", entities) +
            Section("OBJECTS", objects) + "0|EOF");
    };
    return {drawing("AC1009"), drawing("AC1015"), drawing("AC1032"),
            BinaryOf(drawing("AC1009"), false), BinaryOf(drawing("AC1015"), true)};
}

class Mutator {
public:
    explicit Mutator(unsigned seed) : random_(seed) {}

    std::string operator()(const std::vector<std::string>& seeds) {
        std::string bytes = seeds[Below(seeds.size())];
        for (std::size_t i = 1 + Below(4); i > 0; --i) Mutate(bytes, seeds);
        return bytes;
    }
    std::size_t Below(std::size_t bound) { return bound == 0 ? 0 : random_() % bound; }

private:
    void Mutate(std::string& bytes, const std::vector<std::string>& seeds) {
        static const char* const kTokens[] = {"0\n",        "-1\n",
                                              "99999999\n", "1e300\n",
                                              "ENDSEC\n",   "SECTION\n",
                                              "EOF\n",      "{\n",
                                              "102\n",      "}\n",
                                              "1001\n",     "100\n",
                                              "\\U+D800\n", "FFFFFFFFFFFFFFFF\n",
                                              "330\n",      "350\n",
                                              "5\n",        "70\n",
                                              "VERTEX\n",   "POLYLINE\n",
                                              "SEQEND\n",   "DICTIONARY\n",
                                              "BLOCK\n",    "\r",
                                              "^",          "\xff",
                                              "\xe4\xb8",   " ",
                                              "LAYER\n",    "2\n"};
        const std::size_t at = Below(bytes.size());
        switch (Below(7)) {
            case 0:
                bytes.resize(at);
                break;
            case 1:
                if (!bytes.empty()) bytes[at] = static_cast<char>(random_());
                break;
            case 2:
                bytes.insert(at, kTokens[Below(std::size(kTokens))]);
                break;
            case 3:
                bytes.erase(at, Below(60));
                break;
            case 4: {  // a run of the same or another drawing
                const std::string& other = seeds[Below(seeds.size())];
                const std::size_t from = Below(other.size());
                bytes.insert(at, other.substr(from, Below(400)));
                break;
            }
            case 5: {  // two lines change places
                const std::size_t a = bytes.find('\n', at),
                                  b = bytes.find('\n', Below(bytes.size()));
                if (a != std::string::npos && b != std::string::npos) std::swap(bytes[a], bytes[b]);
                break;
            }
            default: {  // a whole line becomes another
                const std::size_t end = bytes.find('\n', at);
                if (end == std::string::npos) break;
                const std::size_t begin = bytes.rfind('\n', at) + 1;
                bytes.replace(begin, end + 1 - begin, kTokens[Below(std::size(kTokens))]);
                break;
            }
        }
    }
    std::mt19937 random_;
};

// Does to a drawing what programs do: opens everything, measures, changes some of it.
void Use(Loaded& drawing, Mutator& random) {
    for (AcDbObjectId id : drawing.ModelSpace()) {
        AcDbEntity* entity = nullptr;
        if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) continue;
        AcDbExtents box;
        static_cast<void>(entity->getGeomExtents(box));
        AcDbVoidPtrArray pieces;
        static_cast<void>(entity->explode(pieces));
        for (int i = 0; i < pieces.length(); ++i) delete static_cast<AcDbEntity*>(pieces[i]);
        resbuf* data = entity->xData();
        if (data != nullptr) acutRelRb(data);
        if (random.Below(8) == 0) static_cast<void>(entity->setColorIndex(3));
        if (random.Below(8) == 0)
            static_cast<void>(
                entity->transformBy(AcGeMatrix3d::translation(AcGeVector3d(1, 2, 0))));
        if (random.Below(8) == 0) static_cast<void>(entity->erase());
        EXPECT_EQ(Acad::eOk, entity->close());
    }
}

// The objects that are no entities of model space, by their handles.
void UseOthers(Loaded& drawing, Mutator& random) {
    constexpr Adesk::UInt64 kHandles = 0x60;  // of the seeds
    for (Adesk::UInt64 handle = 1; handle < kHandles; ++handle) {
        AcDbObjectId id;
        AcDbObject* object = nullptr;
        if (drawing.db.getAcDbObjectId(id, false, AcDbHandle(handle)) != Acad::eOk) continue;
        if (acdbOpenObject(object, id, AcDb::kForWrite) != Acad::eOk) continue;
        if (random.Below(8) == 0) static_cast<void>(object->createExtensionDictionary());
        if (random.Below(8) == 0) static_cast<void>(object->erase());
        EXPECT_EQ(Acad::eOk, object->close());
    }
}

// True when the bytes were read.
bool Try(const std::string& bytes, Mutator& random) {
    Loaded drawing(bytes);
    if (!drawing.result.ok()) {
        EXPECT_NE("", drawing.result.message);
        return false;
    }
    EXPECT_EQ(bytes, drawing.Written());
    Use(drawing, random);
    UseOthers(drawing, random);
    std::string changed;
    host::dxf::Report notes;
    // A broken drawing may hold what cannot be computed with; then the reason is said.
    const auto written = host::dxf::WriteToString(drawing.db, changed, notes);
    if (!written.ok()) {
        EXPECT_NE("", written.message);
        return true;
    }
    Loaded again(changed);
    EXPECT_TRUE(again.result.ok()) << again.result.message;
    EXPECT_EQ(changed, again.Written());
    return true;
}

TEST(Fuzz, SeedsAreDrawings) {
    Mutator random(1);
    for (const std::string& seed : Seeds()) EXPECT_TRUE(Try(seed, random));
}

TEST(Fuzz, MutatedDrawings) {
    const char* named = std::getenv("QZ_FUZZ_SEED");
    const char* longer = std::getenv("QZ_FUZZ_SECONDS");
    const unsigned first = named != nullptr ? static_cast<unsigned>(std::atoi(named)) : 1;
    const int seconds = longer != nullptr ? std::atoi(longer) : 8;
    const std::vector<std::string> seeds = Seeds();
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    unsigned seed = first;
    std::size_t read = 0;
    constexpr unsigned kRounds = 6000;
    for (; (longer != nullptr || seed < first + kRounds) && std::chrono::steady_clock::now() < end;
         ++seed) {
        SCOPED_TRACE("QZ_FUZZ_SEED=" + std::to_string(seed));
        RecordProperty("seed", static_cast<int>(seed));
        Mutator mutate(seed);
        if (Try(mutate(seeds), mutate)) ++read;
        if (HasFailure()) break;
    }
    // Some of the mutants must get past the checks, or the test shows little.
    EXPECT_GT(read, 10u) << "of " << seed - first;
    std::printf("fuzz: %u drawings from seed %u, %zu of them read\n", seed - first, first, read);
}

}  // namespace
