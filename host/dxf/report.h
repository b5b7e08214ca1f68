// What the reader and the writer have to tell about a drawing that they could handle all the same.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace host::dxf {

// Messages in the order in which they came up; kinds that come up often are counted.
class Report {
public:
    // One kind of message. The first few are kept with their places, the rest only counted.
    struct Note {
        std::string kind;                 // "entity on an undeclared layer"
        std::vector<std::string> places;  // "line 120: LINE 2F on layer \"AXIS\""
        std::size_t count = 0;            // all of them
    };

    // kind   what is wrong, the same words each time
    // place  where, and about which object; may be empty
    void Add(const std::string& kind, const std::string& place);

    const std::vector<Note>& notes() const { return notes_; }
    bool empty() const { return notes_.empty(); }
    // The places of a kind can cost something to find out: ask first.
    bool WantsPlace(const std::string& kind) const;

    // One line a kept place, one more for the number left out.
    std::vector<std::string> Lines() const;

    static constexpr std::size_t kPlacesKept = 5;  // of each kind

private:
    std::vector<Note> notes_;  // by first coming up
};

}  // namespace host::dxf
