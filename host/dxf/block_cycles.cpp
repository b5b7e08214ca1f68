#include "host/dxf/block_cycles.h"

namespace host::dxf {

namespace {

// Depth first without recursion: broken files can nest as deep as they have blocks.
class CycleFinder {
public:
    explicit CycleFinder(const LoadedDrawing& drawing)
        : drawing_(drawing), source_(drawing.source()), states_(drawing.blocks.size(), kUnseen) {}

    std::vector<std::size_t> Run() {
        for (std::size_t i = 0; i < states_.size(); ++i)
            if (states_[i] == kUnseen) Visit(i);
        return std::move(found_);
    }

private:
    enum State { kUnseen, kOpen, kDone };
    struct Step {
        std::size_t block, next;  // next: record to look at
    };

    void Visit(std::size_t start) {
        std::vector<Step> path;
        const auto enter = [&](std::size_t block) {
            states_[block] = kOpen;
            path.push_back({block, drawing_.blocks[block].span.begin + 1});
        };
        enter(start);
        while (!path.empty()) {
            Step& step = path.back();
            if (step.next >= drawing_.blocks[step.block].span.end) {
                states_[step.block] = kDone;
                path.pop_back();
                continue;
            }
            const std::size_t record = step.next++;
            const std::size_t target = BlockOf(record);
            if (target == kNoIndex) continue;
            if (states_[target] == kOpen) found_.push_back(record);
            if (states_[target] == kUnseen) enter(target);
        }
    }

    std::size_t BlockOf(std::size_t record) const {
        if (!source_.Is(record, kInsert) && !source_.Is(record, kDimension)) return kNoIndex;
        const Stub* block =
            drawing_.names.Find(Root::kBlockTable, source_.Name(record), *source_.codec);
        if (block == nullptr) return kNoIndex;
        const auto found = drawing_.blockOfRecord.find(block->record);
        return found == drawing_.blockOfRecord.end() ? kNoIndex : found->second;
    }

    const LoadedDrawing& drawing_;
    const Source& source_;
    std::vector<State> states_;
    std::vector<std::size_t> found_;
};

}  // namespace

std::vector<std::size_t> ReferencesThatCloseCycles(const LoadedDrawing& drawing) {
    return CycleFinder(drawing).Run();
}

}  // namespace host::dxf
