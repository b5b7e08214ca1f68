#include "host/dxf/report.h"

#include <algorithm>

namespace host::dxf {

void Report::Add(const std::string& kind, const std::string& place) {
    const auto same = [&](const Note& note) { return note.kind == kind; };
    auto found = std::find_if(notes_.begin(), notes_.end(), same);
    if (found == notes_.end()) found = notes_.insert(notes_.end(), Note{kind, {}, 0});
    if (++found->count <= kPlacesKept) found->places.push_back(place);
}

bool Report::WantsPlace(const std::string& kind) const {
    return std::none_of(notes_.begin(), notes_.end(), [&](const Note& note) {
        return note.kind == kind && note.count >= kPlacesKept;
    });
}

std::vector<std::string> Report::Lines() const {
    std::vector<std::string> lines;
    for (const Note& note : notes_) {
        for (const std::string& place : note.places)
            lines.push_back(place.empty() ? note.kind : place + ": " + note.kind);
        if (note.count > note.places.size())
            lines.push_back(note.kind + ": " + std::to_string(note.count - note.places.size()) +
                            " more");
    }
    return lines;
}

}  // namespace host::dxf
