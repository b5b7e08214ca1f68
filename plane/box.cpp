#include "plane/box.h"

#include "plane/box_index.h"

namespace plane {

void ForEachMeetingPair(const std::vector<Box>& boxes, double margin,
                        const std::function<bool(std::size_t, std::size_t)>& use) {
    std::vector<std::size_t> numbers;
    std::vector<Box> sound;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const Box& box = boxes[i];
        if (box.IsEmpty() || !IsFinite(box.low) || !IsFinite(box.high)) continue;
        numbers.push_back(i);
        sound.push_back(box);
    }
    const BoxIndex index(sound);
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < sound.size(); ++i) {
        found.clear();
        index.Visit([&](const Box& box) { return box.Meets(sound[i], margin); },
                    [&](int item) {
                        const auto j = static_cast<std::size_t>(item);
                        if (j > i) found.push_back(j);
                        return false;
                    });
        std::sort(found.begin(), found.end());
        for (const std::size_t j : found)
            if (!use(numbers[i], numbers[j])) return;
    }
}

}  // namespace plane
