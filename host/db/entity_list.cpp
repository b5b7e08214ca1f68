#include "host/db/entity_list.h"

#include <algorithm>

namespace {

using host::Stub;

bool ByOrder(const Stub* a, const Stub* b) { return a->order < b->order; }

// The neighbour of an order in a rising list, or null.
Stub* Neighbour(const std::vector<Stub*>& list, const Stub* from, bool forward) {
    if (from == nullptr) return list.empty() ? nullptr : forward ? list.front() : list.back();
    if (forward) {
        const auto at = std::upper_bound(list.begin(), list.end(), from, ByOrder);
        return at == list.end() ? nullptr : *at;
    }
    const auto at = std::lower_bound(list.begin(), list.end(), from, ByOrder);
    return at == list.begin() ? nullptr : *(at - 1);
}

// Below this many erased members a list is not worth tidying.
constexpr size_t kCompactFrom = 64;

}  // namespace

namespace host {

void EntityList::Append(Stub& stub) {
    stub.order = m_nextOrder++;
    m_live.push_back(&stub);
}

void EntityList::NoteErased(const Stub& stub) {
    m_firstErased = (std::min)(m_firstErased, stub.order);
    if (++m_erased >= kCompactFrom && m_erased * 2 > m_live.size()) Compact();
}

void EntityList::NoteUnerased(Stub& stub) {
    if (!stub.Has(kStubDormant)) {
        --m_erased;
        return;
    }
    stub.Clear(kStubDormant);
    m_dormant.erase(std::lower_bound(m_dormant.begin(), m_dormant.end(), &stub, ByOrder));
    m_live.insert(std::lower_bound(m_live.begin(), m_live.end(), &stub, ByOrder), &stub);
}

void EntityList::Compact() {
    const size_t before = m_dormant.size();
    const auto first =
        std::lower_bound(m_live.begin(), m_live.end(), m_firstErased,
                         [](const Stub* stub, Adesk::UInt32 order) { return stub->order < order; });
    size_t kept = static_cast<size_t>(first - m_live.begin());
    for (size_t i = kept; i < m_live.size(); ++i) {
        Stub* const stub = m_live[i];
        if (stub->Has(kStubErased)) {
            stub->Set(kStubDormant);
            m_dormant.push_back(stub);
        } else {
            m_live[kept++] = stub;
        }
    }
    m_live.resize(kept);
    std::inplace_merge(m_dormant.begin(), m_dormant.begin() + static_cast<std::ptrdiff_t>(before),
                       m_dormant.end(), ByOrder);
    m_erased = 0;
    m_firstErased = kNoOrder;
}

void EntityList::DropPurged() {
    Compact();
    m_dormant.erase(std::remove_if(m_dormant.begin(), m_dormant.end(),
                                   [](const Stub* stub) { return stub->Has(kStubPurged); }),
                    m_dormant.end());
}

Stub* EntityList::Next(const Stub* from, bool forward, bool skipErased, size_t& hint) const {
    if (!skipErased) {
        Stub* const live = Neighbour(m_live, from, forward);
        Stub* const dormant = Neighbour(m_dormant, from, forward);
        if (live == nullptr || dormant == nullptr) return live != nullptr ? live : dormant;
        return ByOrder(live, dormant) == forward ? live : dormant;
    }
    // Signed, so that the step before the first member is a number too.
    std::ptrdiff_t at = forward ? 0 : static_cast<std::ptrdiff_t>(m_live.size()) - 1;
    if (from != nullptr) {
        const bool known = hint < m_live.size() && m_live[hint] == from;
        at = known ? static_cast<std::ptrdiff_t>(hint)
                   : std::lower_bound(m_live.begin(), m_live.end(), from, ByOrder) - m_live.begin();
        const bool here = known || (at < static_cast<std::ptrdiff_t>(m_live.size()) &&
                                    m_live[static_cast<size_t>(at)] == from);
        if (!forward)
            --at;
        else if (here)
            ++at;
    }
    const std::ptrdiff_t step = forward ? 1 : -1;
    for (; at >= 0 && at < static_cast<std::ptrdiff_t>(m_live.size()); at += step) {
        Stub* const stub = m_live[static_cast<size_t>(at)];
        if (stub->Has(kStubErased)) continue;
        hint = static_cast<size_t>(at);
        return stub;
    }
    return nullptr;
}

std::vector<Stub*> EntityList::Live() const {
    std::vector<Stub*> live;
    live.reserve(m_live.size() - m_erased);
    for (Stub* const stub : m_live)
        if (!stub->Has(kStubErased)) live.push_back(stub);
    return live;
}

}  // namespace host
