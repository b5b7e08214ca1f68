#include "host/db/highlight.h"

#include "host/db/stub.h"

namespace host {
namespace {

struct Highlights {
    std::unordered_set<AcDbObjectId> ids;
    unsigned revision = 0;
    std::function<void()> sink;
};

Highlights& All() {
    // Never destroyed: modules may highlight until the process is gone.
    static Highlights* const all = new Highlights();
    return *all;
}

}  // namespace

void SetHighlighted(AcDbObjectId id, bool isHighlighted) {
    Highlights& all = All();
    const bool isChange = isHighlighted ? all.ids.insert(id).second : all.ids.erase(id) > 0;
    if (isHighlighted)
        id.stub()->Set(kStubHighlighted);
    else
        id.stub()->Clear(kStubHighlighted);
    if (!isChange) return;
    ++all.revision;
    if (all.sink) all.sink();
}

const std::unordered_set<AcDbObjectId>& HighlightedEntities() { return All().ids; }
unsigned HighlightRevision() { return All().revision; }
void SetHighlightSink(std::function<void()> sink) { All().sink = std::move(sink); }

}  // namespace host
