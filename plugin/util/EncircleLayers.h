// The layers that the engine knows by name.
#pragma once

#include "StdAfx.h"

// Finished envelopes.
constexpr const ACHAR* kEnvelopeLayer = _T("TempEncircleLine");
// Clones and everything made from them during a run; empty afterwards.
constexpr const ACHAR* kScratchLayer = _T("TempEncircleLineClone");
// Dimension lines: never part of a profile, even when picked.
constexpr const ACHAR* kDimensionLayer = _T("尺寸线");
