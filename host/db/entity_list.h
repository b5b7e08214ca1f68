// The entities of a block record.
#pragma once

#include <vector>

#include "host/db/stub.h"

namespace host {

// Entities in the order they were appended. Erased ones move out of the way once they are the
// majority, so that iterating costs what lives; an un-erased one returns to its place.
class EntityList {
public:
    // Appends; gives the stub its place. O(1).
    void Append(Stub& stub);
    // A member's stub was marked as erased. O(1) amortised.
    void NoteErased(const Stub& stub);
    // A member's stub is no longer erased. O(n) when it had moved out.
    void NoteUnerased(Stub& stub);
    // Forgets members whose memory was freed. O(n) in what was appended behind the first of them.
    void DropPurged();

    // The neighbour of a member, or the first or last one for null; null at the end.
    // hint  in and out: index of the member in the list of the living, any number at first
    Stub* Next(const Stub* from, bool forward, bool skipErased, size_t& hint) const;

    // All members that are not erased, in order.
    std::vector<Stub*> Live() const;

private:
    void Compact();

    std::vector<Stub*> m_live;     // rising by Stub::order; may hold erased ones
    std::vector<Stub*> m_dormant;  // erased ones, rising by Stub::order
    size_t m_erased = 0;           // how many of m_live are erased
    Adesk::UInt32 m_nextOrder = 0;
    Adesk::UInt32 m_firstErased = kNoOrder;  // no erased one of m_live lies before
    static constexpr Adesk::UInt32 kNoOrder = 0xFFFFFFFF;
};

}  // namespace host
