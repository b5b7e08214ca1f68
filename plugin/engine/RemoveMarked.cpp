#include "StdAfx.h"

#include "RemoveMarked.h"

#include <utility>

#include "EraseEntity.h"

void EraseMarked(const std::vector<CLineInfo>& lines, const std::vector<char>& marked) {
    for (size_t i = 0; i < lines.size(); ++i) {
        if (marked[i] != 0) {
            EraseById(lines[i].m_id);
        }
    }
}

void DeleteMarked(std::vector<CLineInfo>& lines, const std::vector<char>& marked) {
    size_t kept = 0;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (marked[i] != 0) {
            continue;
        }
        if (kept != i) {
            lines[kept] = std::move(lines[i]);
        }
        ++kept;
    }
    lines.resize(kept);
}
