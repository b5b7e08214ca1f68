#include "host/db/rb_chain.h"

#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <new>

#include "acutads.h"
#include "acutmem.h"
#include "host/base/angles.h"

namespace {

struct CodeRange {
    int first;
    int last;
    host::RbKind kind;
};

using host::RbKind;
// Ascending; what lies between two ranges has no value.
constexpr CodeRange kCodeRanges[] = {
    {0, 9, RbKind::kString},       {10, 18, RbKind::kPoint},      {38, 59, RbKind::kReal},
    {60, 79, RbKind::kInt16},      {90, 99, RbKind::kInt32},      {100, 104, RbKind::kString},
    {106, 109, RbKind::kString},   {110, 112, RbKind::kPoint},    {140, 149, RbKind::kReal},
    {160, 169, RbKind::kInt64},    {170, 179, RbKind::kInt16},    {210, 210, RbKind::kPoint},
    {270, 289, RbKind::kInt16},    {290, 299, RbKind::kInt16},    {300, 309, RbKind::kString},
    {310, 319, RbKind::kBinary},   {320, 329, RbKind::kString},   {330, 369, RbKind::kId},
    {370, 389, RbKind::kInt16},    {390, 399, RbKind::kId},       {400, 409, RbKind::kInt16},
    {410, 419, RbKind::kString},   {420, 429, RbKind::kInt32},    {430, 439, RbKind::kString},
    {440, 459, RbKind::kInt32},    {460, 469, RbKind::kReal},     {470, 479, RbKind::kString},
    {480, 481, RbKind::kId},       {1000, 1003, RbKind::kString}, {1004, 1004, RbKind::kBinary},
    {1005, 1005, RbKind::kString}, {1010, 1013, RbKind::kPoint},  {1040, 1042, RbKind::kReal},
    {1070, 1070, RbKind::kInt16},  {1071, 1071, RbKind::kInt32}};

// Result types that carry a value on the heap.
constexpr int kTextResult = 5005;    // RTSTR
constexpr int kEntityResult = 5006;  // RTENAME

RbKind KindOfNode(const resbuf& node) {
    if (node.restype == kTextResult || node.restype == RTDXF0) return RbKind::kString;
    if (node.restype == kEntityResult) return RbKind::kId;
    return host::KindOfCode(node.restype);
}

}  // namespace

namespace host {

RbKind KindOfCode(int code) {
    for (const CodeRange& range : kCodeRanges)
        if (code >= range.first && code <= range.last) return range.kind;
    return RbKind::kNone;
}

bool IsXrecordCode(int code) {
    return code >= 1 && code != 5 && code != 105 && code != 100 &&
           KindOfCode(code) != RbKind::kNone;
}

bool IsXDataCode(int code) { return code >= 1000 && KindOfCode(code) != RbKind::kNone; }

resbuf* CopyNode(const resbuf& node) {
    resbuf* const copy = acutNewRb(node.restype);
    if (copy == nullptr) throw std::bad_alloc();
    copy->resval = node.resval;
    if (KindOfNode(node) == RbKind::kString && node.resval.rstring != nullptr) {
        if (acutNewString(node.resval.rstring, copy->resval.rstring) != Acad::eOk)
            throw std::bad_alloc();
    } else if (KindOfNode(node) == RbKind::kBinary && node.resval.rbinary.buf != nullptr) {
        const size_t size = static_cast<size_t>(node.resval.rbinary.clen);
        if (acutNewBuffer(copy->resval.rbinary.buf, size) != Acad::eOk) throw std::bad_alloc();
        std::memcpy(copy->resval.rbinary.buf, node.resval.rbinary.buf, size);
    }
    return copy;
}

resbuf* CopyChain(const resbuf* chain) {
    resbuf* head = nullptr;
    resbuf** tail = &head;
    for (; chain != nullptr; chain = chain->rbnext) {
        *tail = CopyNode(*chain);
        tail = &(*tail)->rbnext;
    }
    return head;
}

resbuf* LastNode(resbuf* chain) {
    while (chain->rbnext != nullptr) chain = chain->rbnext;
    return chain;
}

}  // namespace host

resbuf* acutNewRb(int restype) {
    resbuf* const node = static_cast<resbuf*>(std::calloc(1, sizeof(resbuf)));
    if (node == nullptr) return nullptr;
    node->restype = static_cast<short>(restype);
#ifndef NDEBUG
    // Nobody says that a new node's value is zero, so here it is not.
    std::memset(&node->resval, 0xCD, sizeof(node->resval));
#endif
    return node;
}

int acutRelRb(resbuf* chain) {
    while (chain != nullptr) {
        resbuf* const next = chain->rbnext;
        const RbKind kind = KindOfNode(*chain);
        if (kind == RbKind::kString) acutDelString(chain->resval.rstring);
        if (kind == RbKind::kBinary) acutDelBuffer(chain->resval.rbinary.buf);
        std::free(chain);
        chain = next;
    }
    return RTNORM;
}

ads_real acutDistance(const ads_point p, const ads_point q) {
    const double dx = q[0] - p[0], dy = q[1] - p[1], dz = q[2] - p[2];
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

ads_real acutAngle(const ads_point p, const ads_point q) {
    return host::FullAngle(q[1] - p[1], q[0] - p[0]);
}

Acad::ErrorStatus acutNewString(const ACHAR* source, ACHAR*& copy) {
    if (source == nullptr) return Acad::eInvalidInput;
    const size_t count = std::wcslen(source) + 1;
    ACHAR* const made = static_cast<ACHAR*>(std::malloc(count * sizeof(ACHAR)));
    if (made == nullptr) return Acad::eOutOfMemory;
    std::wmemcpy(made, source, count);
    copy = made;
    return Acad::eOk;
}

Acad::ErrorStatus acutUpdString(const ACHAR* source, ACHAR*& copy) {
    ACHAR* made = nullptr;
    const Acad::ErrorStatus es = acutNewString(source, made);
    if (es != Acad::eOk) return es;
    acutDelString(copy);
    copy = made;
    return Acad::eOk;
}

void acutDelString(ACHAR*& text) {
    std::free(text);
    text = nullptr;
}

Acad::ErrorStatus acutNewBuffer(char*& buffer, size_t size) {
    char* const made = static_cast<char*>(std::calloc(size > 0 ? size : 1, 1));
    if (made == nullptr) return Acad::eOutOfMemory;
    buffer = made;
    return Acad::eOk;
}

void acutDelBuffer(char*& buffer) {
    std::free(buffer);
    buffer = nullptr;
}
