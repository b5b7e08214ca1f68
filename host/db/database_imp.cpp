#include "host/db/database_imp.h"

#include <algorithm>
#include <mutex>

namespace {

// Chunks of databases that are gone. Their stubs still answer for identifiers.
struct RetiredChunks {
    std::mutex mutex;
    std::vector<std::unique_ptr<host::Stub[]>> chunks;
};
RetiredChunks& Retired() {
    static RetiredChunks* const retired = new RetiredChunks;
    return *retired;
}

}  // namespace

namespace host {

StubArena::~StubArena() {
    const std::lock_guard<std::mutex> lock(Retired().mutex);
    for (std::unique_ptr<Stub[]>& chunk : m_chunks) Retired().chunks.push_back(std::move(chunk));
}

Stub* StubArena::New() {
    if (m_used == kChunk) {
        m_chunks.push_back(std::make_unique<Stub[]>(kChunk));
        m_used = 0;
    }
    return &m_chunks.back()[m_used++];
}

Stub** HandleTable::PageOf(Adesk::UInt64 handle) const {
    const Adesk::UInt64 key = handle >> kPageBits;
    if (key == m_lastKey) return m_lastPage;
    const auto found = m_pages.find(key);
    if (found == m_pages.end()) return nullptr;
    m_lastKey = key;
    m_lastPage = found->second.get();
    return m_lastPage;
}

Stub* HandleTable::Find(Adesk::UInt64 handle) const {
    Stub** const page = PageOf(handle);
    return page == nullptr ? nullptr : page[handle & (kPageSize - 1)];
}

void HandleTable::Insert(Adesk::UInt64 handle, Stub* stub) {
    Stub** page = PageOf(handle);
    if (page == nullptr) {
        m_pages.emplace(handle >> kPageBits, std::make_unique<Stub*[]>(kPageSize));
        page = PageOf(handle);
    }
    page[handle & (kPageSize - 1)] = stub;
    ++m_size;
}

std::vector<Stub*> HandleTable::All() const {
    std::vector<Adesk::UInt64> keys;
    keys.reserve(m_pages.size());
    for (const auto& page : m_pages) keys.push_back(page.first);
    std::sort(keys.begin(), keys.end());
    std::vector<Stub*> all;
    all.reserve(m_size);
    for (const Adesk::UInt64 key : keys) {
        Stub* const* const page = m_pages.at(key).get();
        for (size_t i = 0; i < kPageSize; ++i)
            if (page[i] != nullptr) all.push_back(page[i]);
    }
    return all;
}

void SnapshotStore::Put(Stub& stub, std::unique_ptr<AcDbObject> before) {
    if (m_list.size() < kListed)
        m_list.emplace_back(&stub, std::move(before));
    else
        m_more[&stub] = std::move(before);
}

std::unique_ptr<AcDbObject> SnapshotStore::Take(Stub& stub) {
    std::unique_ptr<AcDbObject> before;
    for (size_t i = m_list.size(); i-- > 0;) {
        if (m_list[i].first != &stub) continue;
        before = std::move(m_list[i].second);
        m_list[i] = std::move(m_list.back());
        m_list.pop_back();
        return before;
    }
    const auto found = m_more.find(&stub);
    if (found == m_more.end()) return before;
    before = std::move(found->second);
    m_more.erase(found);
    return before;
}

Stub* DatabaseImp::NewStub(AcRxClass* cls, Stub* owner, Adesk::UInt16 flags) {
    Stub* const stub = arena.New();
    stub->database = db;
    stub->owner = owner;
    stub->cls = cls;
    stub->record = kNoRecord;
    stub->flags = flags;
    return stub;
}

Adesk::UInt64 DatabaseImp::TakeHandle() {
    while (handles.Find(header.handseed) != nullptr) ++header.handseed;
    return header.handseed++;
}

bool DatabaseImp::HasReactor(const AcDbDatabaseReactor* reactor) const {
    return std::find(reactors.begin(), reactors.end(), reactor) != reactors.end();
}

}  // namespace host
