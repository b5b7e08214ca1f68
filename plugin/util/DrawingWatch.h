#pragma once

#include "StdAfx.h"

// Tells whether a drawing is still there. Prompts, messages and progress displays let the user
// close it, and nothing of a closed drawing may be touched. A database without document belongs to
// a program that keeps it for as long as it runs.
class CDrawingWatch {
public:
    explicit CDrawingWatch(const AcDbDatabase* pDatabase)
        : m_pDatabase(pDatabase), m_pDocument(FindDocument()) {}

    bool IsOpen() const { return m_pDocument == nullptr || FindDocument() == m_pDocument; }
    // Null for a database without document.
    AcApDocument* GetDocument() const { return m_pDocument; }

private:
    AcApDocument* FindDocument() const {
        return m_pDatabase == nullptr ? nullptr : acDocManager->document(m_pDatabase);
    }

    const AcDbDatabase* m_pDatabase;
    AcApDocument* m_pDocument;
};
