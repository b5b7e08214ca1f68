#include "product/tool/ToolNaming.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <sstream>

#include "host/ed/text_compare.h"
#include "product/base/Extents.h"
#include "product/base/Text.h"

namespace product {
namespace {

constexpr double kReach = 0.5;  // of a tool's diagonal: how far from it its text may stand

struct Label {
    std::string text;
    Box box;
};

// Texts of model space, attributes among them, that match the pattern.
class Labels {
public:
    Labels(AcDbDatabase& database, const std::string& pattern)
        : m_pattern(FromUtf8(pattern).GetString()) {
        AcDbObjectPointer<AcDbBlockTableRecord> space(acdbSymUtil()->blockModelSpaceId(&database),
                                                      AcDb::kForRead);
        AcDbBlockTableRecordIterator* made = nullptr;
        if (space.openStatus() != Acad::eOk || space->newIterator(made) != Acad::eOk) return;
        const std::unique_ptr<AcDbBlockTableRecordIterator> entities(made);
        for (; !entities->done(); entities->step()) {
            AcDbObjectId id;
            if (entities->getEntityId(id) == Acad::eOk) Read(id);
        }
    }

    std::vector<Label> found;

private:
    void Read(const AcDbObjectId& id) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) return;
        if (const auto* text = AcDbText::cast(entity.object())) {
            Take({PlainText(ToUtf8(text->textStringConst()))}, *text);
        } else if (const auto* lines = AcDbMText::cast(entity.object())) {
            ACHAR* contents = lines->contents();
            if (contents == nullptr) return;
            Take(PlainLines(ToUtf8(contents)), *lines);
            acutDelString(contents);
        } else if (const auto* reference = AcDbBlockReference::cast(entity.object())) {
            const std::unique_ptr<AcDbObjectIterator> attributes(reference->attributeIterator());
            for (; attributes != nullptr && !attributes->done(); attributes->step())
                Read(attributes->objectId());
        }
    }

    bool Matches(const std::string& text) const {
        return !text.empty() && host::MatchesWildcards(FromUtf8(text).GetString(), m_pattern);
    }

    void Take(const std::vector<std::string>& lines, const AcDbEntity& entity) {
        const std::optional<Box> box = ExtentsOf(entity);
        if (!box) return;
        for (const std::string& line : lines) {
            if (Matches(line)) {
                found.push_back({line, *box});
                return;
            }
            std::istringstream words(line);
            for (std::string word; words >> word;)
                if (Matches(word)) {
                    found.push_back({word, *box});
                    return;
                }
        }
    }

    const std::wstring m_pattern;
};

// Between two boxes; 0 when they meet.
double GapBetween(const Box& a, const Box& b) {
    const double x = std::max({0.0, a.low.x - b.high.x, b.low.x - a.high.x});
    const double y = std::max({0.0, a.low.y - b.high.y, b.low.y - a.high.y});
    return std::hypot(x, y);
}

struct Pair {
    double distance;
    size_t tool, label;
};

}  // namespace

std::string NameByFile(const std::string& path, size_t number, size_t count) {
    const std::string stem = std::filesystem::path(path).stem().string();
    return count > 1 ? stem + "-" + std::to_string(number + 1) : stem;
}

std::vector<std::string> NamesBy(const NameRule& rule, AcDbDatabase& database,
                                 const std::string& path, const std::vector<NamedPlace>& tools,
                                 std::vector<size_t>& unnamed) {
    std::vector<std::string> names;
    for (size_t i = 0; i < tools.size(); ++i)
        names.push_back(rule.byFile ? NameByFile(path, i, tools.size()) : tools[i].name);
    if (rule.pattern.empty()) return names;
    const Labels labels(database, rule.pattern);
    std::vector<Pair> pairs;
    for (size_t i = 0; i < tools.size(); ++i)
        for (size_t k = 0; k < labels.found.size(); ++k) {
            if (tools[i].box.IsEmpty()) continue;
            const double distance = GapBetween(tools[i].box, labels.found[k].box);
            if (distance <= kReach * std::hypot(tools[i].box.Width(), tools[i].box.Height()))
                pairs.push_back({distance, i, k});
        }
    std::stable_sort(pairs.begin(), pairs.end(),
                     [](const Pair& a, const Pair& b) { return a.distance < b.distance; });
    std::vector<char> isNamed(tools.size(), 0), isTaken(labels.found.size(), 0);
    for (const Pair& pair : pairs) {
        if (isNamed[pair.tool] != 0 || isTaken[pair.label] != 0) continue;
        isNamed[pair.tool] = isTaken[pair.label] = 1;
        names[pair.tool] = labels.found[pair.label].text;
    }
    for (size_t i = 0; i < tools.size(); ++i)
        if (isNamed[i] == 0) unnamed.push_back(i);
    return names;
}

}  // namespace product
