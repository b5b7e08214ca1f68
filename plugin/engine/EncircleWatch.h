// Watching a long run: how large it will become, how far it is, and whether it is to go on.
#pragma once

#include <cstddef>

#include "StdAfx.h"

// What a run throws when its watch stops it. It does not leave the pipeline.
struct SEncircleStop {};

// A dialog that wants Esc to work, or a program with a limit, derives from this and installs it by
// a CEncircleWatchScope. Without one nothing is asked and nothing is counted.
//
// A run that is stopped has no envelope, and leaves the drawing as it was: scratch entities are
// gone, the current layer is restored, and layers that were off are off again (a run that ends
// switches them on).
class AFX_EXT_CLASS CEncircleWatch {
public:
    virtual ~CEncircleWatch() = default;

    // Called before lines are broken: so many there are, and at so many points they meet. Memory
    // and time follow: every meeting makes two pieces more. False stops the run.
    virtual bool MayBreak(size_t nLines, size_t nMeetings) = 0;
    // Called at the start of each longer pass and every few thousand records of it. The calls are
    // a few milliseconds apart. False stops the run.
    virtual bool MayGoOn(const char* pPass, size_t nDone, size_t nAll) = 0;
    // Called when a side sees so many pieces by now, each some fifty bytes, later a record: every
    // few thousand more of them. False stops the run.
    virtual bool MayKeep(size_t nPieces) {
        static_cast<void>(nPieces);
        return true;
    }

    // The installed watch; null when nobody looks.
    static CEncircleWatch* Current() { return s_pCurrent; }

    // For the passes: asks the watch now and then. Throws SEncircleStop when it stops the run, so
    // nothing may be open where this is called but what closes itself.
    static void Step(const char* pPass, size_t nDone, size_t nAll) {
        if (s_pCurrent != nullptr && nDone % kSteps == 0) {
            Ask(pPass, nDone, nAll);
        }
    }
    // For the passes: tells the watch how many pieces there are by now; like Step().
    static void Keep(size_t nPieces) {
        if (s_pCurrent != nullptr && !s_pCurrent->MayKeep(nPieces)) {
            throw SEncircleStop();
        }
    }

private:
    friend class CEncircleWatchScope;
    static constexpr size_t kSteps = 4096;
    static void Ask(const char* pPass, size_t nDone, size_t nAll);

    static CEncircleWatch* s_pCurrent;
};

// Installs a watch for its own life. Scopes nest; the innermost is asked.
class AFX_EXT_CLASS CEncircleWatchScope {
public:
    explicit CEncircleWatchScope(CEncircleWatch& watch);
    ~CEncircleWatchScope();
    CEncircleWatchScope(const CEncircleWatchScope&) = delete;
    CEncircleWatchScope& operator=(const CEncircleWatchScope&) = delete;

private:
    CEncircleWatch* m_pFormer;
};
