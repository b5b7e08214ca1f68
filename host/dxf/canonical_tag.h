// A tag of a file as this program would write it, so that other ways of writing the same value are
// no change: 2. and 2.0, 450 and 450.00, lower case handles.
#pragma once

#include <memory>

#include "host/dxf/tag_buffer.h"

namespace host::dxf {

class CanonicalTag {
public:
    explicit CanonicalTag(const Source& source) : source_(source) {}
    void SetStyle(const WriteStyle& style);  // how this program writes into that file

    // Whether the file's tag is what that one, of the same code, would be written as.
    bool IsLike(const Tag& there, const TagBuffer& buffer, const OutTag& tag);
    // A buffer of this one tag, valid until the next call.
    const TagBuffer& Of(const Tag& there);

private:
    const Source& source_;  // whose tags are asked about
    const WriteStyle* style_ = nullptr;
    std::unique_ptr<TagBuffer> buffer_;  // of one tag, used again
};

}  // namespace host::dxf
