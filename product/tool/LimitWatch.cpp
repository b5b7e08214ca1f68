#include "product/tool/LimitWatch.h"

#include <string_view>

#include "product/base/Text.h"

namespace product {
namespace {

// Pairs of lines that come near one another, each a fraction of a microsecond's look: so many by
// the limit are refused before all of them are counted.
constexpr double kPairsByLimit = 20;
// Pieces that a side sees by the limit: most of them are joined again at once, and each takes less
// than a line.
constexpr double kPiecesByLimit = 4;

}  // namespace

bool LimitWatch::Refuse(const std::string& what) {
    m_reason = what + ", too many for a limit of " + Figure(m_limit) +
               "; pick less by --window, or raise --limit";
    return false;
}

bool LimitWatch::MayBreak(size_t nLines, size_t nMeetings) {
    // Each meeting cuts two lines in two.
    const double lines = static_cast<double>(nLines) + 2 * static_cast<double>(nMeetings);
    if (lines > m_limit)
        return Refuse("the lines that were picked cross " + std::to_string(nMeetings) +
                      " times, which breaks them into " + Figure(lines) + " lines");
    return m_pOuter == nullptr || m_pOuter->MayBreak(nLines, nMeetings);
}

bool LimitWatch::MayGoOn(const char* pPass, size_t nDone, size_t nAll) {
    if (std::string_view(pPass) == "meetings" &&
        static_cast<double>(nDone) > kPairsByLimit * m_limit)
        return Refuse("the lines that were picked come near one another " + std::to_string(nDone) +
                      " times or more, which may break them into as many");
    return m_pOuter == nullptr || m_pOuter->MayGoOn(pPass, nDone, nAll);
}

bool LimitWatch::MayKeep(size_t nPieces) {
    return static_cast<double>(nPieces) <= kPiecesByLimit * m_limit ||
           Refuse("one side sees the lines that were picked in " + std::to_string(nPieces) +
                  " pieces or more");
}

}  // namespace product
