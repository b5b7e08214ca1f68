// What differs between two texts, line by line.
#pragma once

#include <sstream>
#include <string>
#include <vector>

namespace test {

inline std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

// "-gone|+new|..." in order: a longest common subsequence of lines stays. O(n m): for small texts.
inline std::string Diff(const std::string& before, const std::string& after) {
    const std::vector<std::string> a = LinesOf(before), b = LinesOf(after);
    std::vector<std::vector<int>> length(a.size() + 1, std::vector<int>(b.size() + 1, 0));
    for (std::size_t i = a.size(); i-- > 0;)
        for (std::size_t j = b.size(); j-- > 0;)
            length[i][j] = a[i] == b[j] ? length[i + 1][j + 1] + 1
                                        : std::max(length[i + 1][j], length[i][j + 1]);
    std::string diff;
    const auto add = [&](char sign, std::string line) {
        const std::size_t blanks = line.find_first_not_of(' ');
        line.erase(0, blanks == std::string::npos ? line.size() : blanks);
        diff += (diff.empty() ? "" : "|") + std::string(1, sign) + line;
    };
    std::size_t i = 0, j = 0;
    while (i < a.size() || j < b.size()) {
        if (i < a.size() && j < b.size() && a[i] == b[j]) {
            ++i;
            ++j;
        } else if (j == b.size() || (i < a.size() && length[i + 1][j] >= length[i][j + 1])) {
            add('-', a[i++]);
        } else {
            add('+', b[j++]);
        }
    }
    return diff;
}

}  // namespace test
