#include "host/dxf/chain.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

#include "acutads.h"
#include "acutmem.h"
#include "host/db/rb_chain.h"

namespace host::dxf {

namespace {

// Adds nodes at the end of a chain that it owns until it is released.
class ChainBuilder {
public:
    ~ChainBuilder() { acutRelRb(head_); }
    resbuf* Add(int code) {
        resbuf* node = acutNewRb(code);
        if (node == nullptr) throw std::bad_alloc();
        // Not every tag fills all of it: a point's coordinates come one by one.
        std::memset(&node->resval, 0, sizeof(node->resval));
        (tail_ == nullptr ? head_ : tail_->rbnext) = node;
        return tail_ = node;
    }
    resbuf* Last() const { return tail_; }
    resbuf* Release() {
        resbuf* head = head_;
        head_ = tail_ = nullptr;
        return head;
    }

private:
    resbuf* head_ = nullptr;
    resbuf* tail_ = nullptr;
};

template <class T>
T Clamped(std::int64_t value) {
    return static_cast<T>(std::clamp<std::int64_t>(value, std::numeric_limits<T>::min(),
                                                   std::numeric_limits<T>::max()));
}

void SetText(resbuf& node, const std::wstring& text) {
    if (acutNewString(text.c_str(), node.resval.rstring) != Acad::eOk)
        node.resval.rstring = nullptr;
}

void SetBinary(resbuf& node, const std::string& bytes) {
    const std::size_t length = (std::min)(bytes.size(), std::size_t{0x7FFF});
    if (acutNewBuffer(node.resval.rbinary.buf, length) != Acad::eOk) return;
    std::memcpy(node.resval.rbinary.buf, bytes.data(), length);
    node.resval.rbinary.clen = static_cast<short>(length);
}

// The second and third coordinate follow their point under codes 10 and 20 higher.
bool IsCoordinateOf(const resbuf* last, int code) {
    return last != nullptr && KindOfCode(last->restype) == RbKind::kPoint &&
           (code == last->restype + 10 || code == last->restype + 20);
}

void Fill(const FieldReader& io, const Tag& tag, resbuf& node) {
    switch (KindOfCode(tag.code)) {
        case RbKind::kString:
            SetText(node, io.TextOf(tag));
            break;
        case RbKind::kPoint:
            node.resval.rpoint[0] = io.RealOf(tag);
            break;
        case RbKind::kReal:
            node.resval.rreal = io.RealOf(tag);
            break;
        case RbKind::kInt16:
            node.resval.rint = Clamped<short>(io.IntOf(tag));
            break;
        case RbKind::kInt32:
            node.resval.rlong = Clamped<Adesk::Int32>(io.IntOf(tag));
            break;
        case RbKind::kInt64:
            node.resval.mnInt64 = io.IntOf(tag);
            break;
        case RbKind::kBinary:
            SetBinary(node, io.lookup().source.Chunk(tag));
            break;
        case RbKind::kId:
            node.resval.rlname[0] = io.IdOf(tag).asOldId();
            break;
        case RbKind::kNone:
            break;
    }
}

void WriteNode(FieldWriter& io, const resbuf& node) {
    const int code = node.restype;
    const auto& value = node.resval;
    switch (KindOfCode(code)) {
        case RbKind::kString:
            io.PutText(code, value.rstring == nullptr ? L"" : value.rstring);
            break;
        case RbKind::kPoint:
            io.PutPoint(code, AcGePoint3d(value.rpoint[0], value.rpoint[1], value.rpoint[2]));
            break;
        case RbKind::kReal:
            io.PutReal(code, value.rreal);
            break;
        case RbKind::kInt16:
            io.PutInt(code,
                      KindOf(code) == ValueKind::kBool ? (value.rint & 0xFF) != 0 : value.rint);
            break;
        case RbKind::kInt32:
            io.PutInt(code, value.rlong);
            break;
        case RbKind::kInt64:
            io.PutInt(code, value.mnInt64);
            break;
        case RbKind::kBinary:
            io.out().PutChunk(
                code, std::string_view(
                          value.rbinary.buf == nullptr ? "" : value.rbinary.buf,
                          static_cast<std::size_t>((std::max)(value.rbinary.clen, short(0)))));
            break;
        case RbKind::kId: {
            AcDbObjectId id;
            id.setFromOldId(value.rlname[0]);
            io.PutId(code, id);
            break;
        }
        case RbKind::kNone:
            break;
    }
}

}  // namespace

resbuf* ChainFromTags(const FieldReader& io, const std::vector<Tag>& tags) {
    ChainBuilder chain;
    for (const Tag& tag : tags) {
        if (IsCoordinateOf(chain.Last(), tag.code)) {
            const int index = (tag.code - chain.Last()->restype) / 10;
            chain.Last()->resval.rpoint[index] = io.RealOf(tag);
        } else if (KindOfCode(tag.code) != RbKind::kNone) {
            Fill(io, tag, *chain.Add(tag.code));
        }
    }
    return chain.Release();
}

void WriteChain(FieldWriter& io, const resbuf* chain) {
    for (const resbuf* node = chain; node != nullptr; node = node->rbnext) WriteNode(io, *node);
}

void WriteXData(FieldWriter& io, const resbuf* chain) {
    for (const resbuf* node = chain; node != nullptr; node = node->rbnext) {
        if (node->restype == kXdataApplication && node->resval.rstring != nullptr)
            io.out().EnterScope(io.out().style().codec->Encode(node->resval.rstring), Area::kXdata);
        WriteNode(io, *node);
    }
}

}  // namespace host::dxf
