#include "host/ed/text_compare.h"

#include <algorithm>
#include <cwctype>
#include <vector>

#include "host/base/letter_case.h"

namespace host {
namespace {

// One element of a pattern. Any run is told by isRun, all others stand for one character.
struct PatternElement {
    bool isRun = false;
    bool isNegated = false;
    wchar_t kind = 0;  // 0 the set, else one of ? # @ .
    std::wstring set;  // upper case; ranges spelled out as first, L'\0', last

    bool Holds(wchar_t c) const {
        switch (kind) {
            case L'?':
                return true;
            case L'#':
                return std::iswdigit(static_cast<wint_t>(c)) != 0;
            case L'@':
                return std::iswalpha(static_cast<wint_t>(c)) != 0;
            case L'.':
                return std::iswalnum(static_cast<wint_t>(c)) == 0;
            default:
                return InSet(UpperCase(c)) != isNegated;
        }
    }

private:
    bool InSet(wchar_t c) const {
        for (size_t i = 0; i < set.size(); ++i) {
            if (i + 2 < set.size() && set[i + 1] == L'\0') {
                if (set[i] <= c && c <= set[i + 2]) return true;
                i += 2;
            } else if (set[i] == c) {
                return true;
            }
        }
        return false;
    }
};

// Reads "[...]" from the bracket on; false when it is not closed.
bool ReadSet(const std::wstring& pattern, size_t& i, PatternElement& element) {
    const size_t close = pattern.find(L']', i + 1);
    if (close == std::wstring::npos) return false;
    size_t at = i + 1;
    if (pattern[at] == L'~') {
        element.isNegated = true;
        ++at;
    }
    for (; at < close; ++at) {
        if (pattern[at] == L'-' && !element.set.empty() && at + 1 < close)
            element.set += L'\0';
        else
            element.set += UpperCase(pattern[at]);
    }
    i = close;
    return true;
}

std::vector<PatternElement> Compile(const std::wstring& pattern, size_t from) {
    std::vector<PatternElement> elements;
    for (size_t i = from; i < pattern.size(); ++i) {
        PatternElement element;
        wchar_t c = pattern[i];
        if (c == L'*') {
            element.isRun = true;
        } else if (c == L'?' || c == L'#' || c == L'@' || c == L'.') {
            element.kind = c;
        } else if (c != L'[' || !ReadSet(pattern, i, element)) {
            if (c == L'`' && i + 1 < pattern.size()) c = pattern[++i];
            element.set = std::wstring(1, UpperCase(c));
        }
        elements.push_back(element);
    }
    return elements;
}

// Greedy with one point to come back to: linear in practice, never exponential.
bool Matches(const std::wstring& text, const std::vector<PatternElement>& pattern) {
    size_t t = 0, p = 0, runAt = std::wstring::npos, resume = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p].isRun) {
            runAt = p++;
            resume = t;
        } else if (p < pattern.size() && pattern[p].Holds(text[t])) {
            ++p;
            ++t;
        } else if (runAt != std::wstring::npos) {
            p = runAt + 1;
            t = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p].isRun) ++p;
    return p == pattern.size();
}

}  // namespace

bool EqualsNoCase(const wchar_t* a, const wchar_t* b) {
    if (a == nullptr || b == nullptr) return a == b;
    for (; *a != 0 && *b != 0; ++a, ++b)
        if (UpperCase(*a) != UpperCase(*b)) return false;
    return *a == *b;
}

std::wstring ToUpper(const std::wstring& text) {
    std::wstring upper = text;
    std::transform(upper.begin(), upper.end(), upper.begin(), UpperCase);
    return upper;
}

bool MatchesWildcards(const std::wstring& text, const std::wstring& patterns) {
    size_t from = 0;
    while (true) {
        size_t comma = from;
        while (comma < patterns.size() && patterns[comma] != L',')
            comma += patterns[comma] == L'`' && comma + 1 < patterns.size() ? 2 : 1;
        const std::wstring pattern = patterns.substr(from, comma - from);
        const bool isNegated = !pattern.empty() && pattern[0] == L'~';
        if (Matches(text, Compile(pattern, isNegated ? 1 : 0)) != isNegated) return true;
        if (comma >= patterns.size()) return false;
        from = comma + 1;
    }
}

}  // namespace host
