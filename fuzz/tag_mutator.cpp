#include "fuzz/tag_mutator.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "fuzz/binary_tags.h"

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t most);

namespace fuzz {
namespace {

const char* const kValues[] = {"0",        "-1",           "1",      "65536",
                               "99999999", "1e300",        "-1e300", "1e-320",
                               "nan",      "inf",          "",       "FFFFFFFFFFFFFFFF",
                               "2",        "*Model_Space", "0.5",    "{",
                               "}",        "1E9999",       "32767"};
const char* const kCodes[] = {"0",  "1",  "2",  "5",   "10",  "20",  "40",  "42",  "62",   "70",
                              "71", "90", "92", "100", "102", "210", "310", "330", "1001", "1070"};

std::vector<Tag> Split(const std::string& text) {
    std::vector<Tag> tags;
    size_t at = 0;
    const auto line = [&] {
        const size_t end = std::min(text.find('\n', at), text.size());
        const std::string found = text.substr(at, end - at);
        at = end + 1;
        return found;
    };
    while (at < text.size()) {
        Tag tag;
        tag.code = line();
        tag.value = at <= text.size() ? line() : "";
        tags.push_back(std::move(tag));
    }
    return tags;
}

std::string Join(const std::vector<Tag>& tags) {
    std::string text;
    for (const Tag& tag : tags) text += tag.code + "\n" + tag.value + "\n";
    return text;
}

class Mutator {
public:
    Mutator(std::vector<Tag>& tags, unsigned seed) : m_tags(tags), m_random(seed) {}

    void Run() {
        for (size_t i = 1 + Below(3); i > 0 && !m_tags.empty(); --i) Once();
    }

private:
    size_t Below(size_t bound) { return bound == 0 ? 0 : m_random() % bound; }

    // The record around a tag: from its group 0 to the next.
    std::pair<size_t, size_t> RecordAt(size_t at) const {
        const auto begins = [this](size_t i) {
            return m_tags[i].code.find_first_not_of(' ') != std::string::npos &&
                   m_tags[i].code.substr(m_tags[i].code.find_first_not_of(' ')) == "0";
        };
        size_t from = at, to = at + 1;
        while (from > 0 && !begins(from)) --from;
        while (to < m_tags.size() && !begins(to)) ++to;
        return {from, to};
    }
    std::vector<Tag> Copy(std::pair<size_t, size_t> range) const {
        return {m_tags.begin() + static_cast<std::ptrdiff_t>(range.first),
                m_tags.begin() + static_cast<std::ptrdiff_t>(range.second)};
    }

    void Once() {
        const size_t at = Below(m_tags.size()), other = Below(m_tags.size());
        const auto place = m_tags.begin() + static_cast<std::ptrdiff_t>(at);
        switch (Below(9)) {
            case 0:
                m_tags.erase(place);
                break;
            case 1:
                m_tags.insert(place, Tag(m_tags[other]));
                break;
            case 2:
                place->value = kValues[Below(std::size(kValues))];
                break;
            case 3:
                place->code = kCodes[Below(std::size(kCodes))];
                break;
            case 4:
                place->value = m_tags[other].value;
                break;
            case 5: {  // a record goes
                const auto [from, to] = RecordAt(at);
                m_tags.erase(m_tags.begin() + static_cast<std::ptrdiff_t>(from),
                             m_tags.begin() + static_cast<std::ptrdiff_t>(to));
                break;
            }
            case 6: {  // a record comes again elsewhere
                const std::vector<Tag> record = Copy(RecordAt(other));
                m_tags.insert(m_tags.begin() + static_cast<std::ptrdiff_t>(RecordAt(at).first),
                              record.begin(), record.end());
                break;
            }
            case 7: {  // a number a little off
                const double value = std::strtod(place->value.c_str(), nullptr);
                place->value = std::to_string(value + static_cast<double>(Below(21)) - 10.0);
                break;
            }
            default: {  // bytes of the value
                std::vector<uint8_t> bytes(place->value.begin(), place->value.end());
                const size_t size = bytes.size();
                bytes.resize(size + 16);
                bytes.resize(LLVMFuzzerMutate(bytes.data(), size, bytes.size()));
                place->value.assign(bytes.begin(), bytes.end());
                break;
            }
        }
    }

    std::vector<Tag>& m_tags;
    std::minstd_rand m_random;
};

}  // namespace

size_t MutateTags(uint8_t* data, size_t size, size_t most, unsigned seed) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const bool isBinary = IsBinaryDrawing(text);
    const bool isText = !isBinary && text.find("SECTION") != std::string::npos;
    if ((!isText && !isBinary) || seed % 8 == 0) return LLVMFuzzerMutate(data, size, most);
    std::vector<Tag> tags = isBinary ? TagsOfBinary(text) : Split(text);
    Mutator(tags, seed).Run();
    const std::string changed = isBinary ? BinaryOfTags(tags, text) : Join(tags);
    if (changed.size() > most) return LLVMFuzzerMutate(data, size, most);
    std::memcpy(data, changed.data(), changed.size());
    return changed.size();
}

}  // namespace fuzz
