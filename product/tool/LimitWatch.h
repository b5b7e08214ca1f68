// Ends a run of the engine that comes to more lines than it may.
#pragma once

#include <string>

#include "EncircleWatch.h"

namespace product {

// Installed by a CEncircleWatchScope around the run; asks the watch that was installed before, too.
// What the run comes to is known only inside the engine, where blocks are taken apart and curves
// are chords; it is told before memory is spent.
class LimitWatch : public CEncircleWatch {
public:
    // limit  lines that a run may come to
    explicit LimitWatch(double limit) : m_limit(limit), m_pOuter(Current()) {}

    bool MayBreak(size_t nLines, size_t nMeetings) override;
    bool MayGoOn(const char* pPass, size_t nDone, size_t nAll) override;
    bool MayKeep(size_t nPieces) override;

    // Why the run was stopped, with a remedy; empty when it was not.
    const std::string& Reason() const { return m_reason; }

private:
    bool Refuse(const std::string& what);

    const double m_limit;
    CEncircleWatch* const m_pOuter;
    std::string m_reason;
};

}  // namespace product
