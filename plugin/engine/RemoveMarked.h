// Removing many records at once: erasing single elements would move all later ones each time.
#pragma once

#include <vector>

#include "LineInfo.h"

// Erases the entities of the marked records. An entity that is gone or cannot be opened is passed
// over. Always done before the records go, so that drawing and records stay in step.
void EraseMarked(const std::vector<CLineInfo>& lines, const std::vector<char>& marked);

// Deletes the marked records; the others keep their order. O(records).
void DeleteMarked(std::vector<CLineInfo>& lines, const std::vector<char>& marked);
