// Changes of a record's bytes, gathered and then made at once.
#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "host/dxf/source.h"

namespace host::dxf {

// Places are those of the unchanged file; none of the changes may overlap another.
class RecordEdits {
public:
    // Forgets all changes; the memory is used again.
    void Clear() {
        edits_.clear();
        texts_.clear();
    }

    // append(text) writes what is to stand in the place of those bytes, behind what text holds.
    template <class Append>
    void Replace(std::size_t begin, std::size_t end, Append append) {
        const std::size_t text = texts_.size();
        append(texts_);  // at its end
        edits_.push_back({begin, end, text, texts_.size()});
    }
    // Adds bytes without taking any away.
    template <class Append>
    void Insert(std::size_t at, Append append) {  // adds bytes without taking any away
        Replace(at, at, append);
    }
    // Takes bytes away.
    void Remove(std::size_t begin, std::size_t end) {
        Replace(begin, end, [](std::string&) {});
    }

    // Appends the bytes from begin to end with the changes. At one place insertions come before the
    // tag that stood there, in the order they were made.
    void Apply(const Source& source, std::size_t begin, std::size_t end, std::string& out) {
        const auto before = [](const Edit& a, const Edit& b) {
            return std::make_pair(a.begin, a.end != a.begin) <
                   std::make_pair(b.begin, b.end != b.begin);
        };
        // Mostly they were made in order.
        if (!std::is_sorted(edits_.begin(), edits_.end(), before))
            std::stable_sort(edits_.begin(), edits_.end(), before);
        for (const Edit& edit : edits_) {
            if (edit.begin > begin) out += source.View(begin, edit.begin);  // what stays as it is
            out.append(texts_, edit.text, edit.textEnd - edit.text);
            begin = (std::max)(begin, edit.end);
        }
        out += source.View(begin, end);  // behind the last change
    }

private:
    struct Edit {
        std::size_t begin, end;     // in the file; equal for an insertion
        std::size_t text, textEnd;  // in texts_
    };
    std::vector<Edit> edits_;  // in the order they were made, until Apply
    std::string texts_;        // all new bytes, one behind another
};

}  // namespace host::dxf
