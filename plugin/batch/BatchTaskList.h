// The tasks of one drawing, and their form stored in it.
#pragma once

#include <vector>

#include "BatchTask.h"

// Where a drawing keeps its list: a dictionary among the named objects, and the Xrecord in it.
constexpr const ACHAR* kStoreDictionary = _T("QZDJBLX");
constexpr const ACHAR* kStoreRecord = _T("BLX");

// An ordered list; rows of the task grid are indexes into it.
class BatchTaskList : public std::vector<BatchTask> {
public:
    // Writes the list into the drawing, replacing what was there: the Xrecord "BLX" of the
    // dictionary "QZDJBLX" in the named-objects dictionary, both made when missing, format
    // version 2. A record that load() could not read to its end is kept beside it as "BLX-1" (or
    // the next number that is free), and that is told on the command line.
    //
    // drawing  changed under its document's write lock, which is taken here
    // result   eOk, or the first refusal of the host; the former record then stays
    Acad::ErrorStatus store(AcDbDatabase* pDatabase);

    // Replaces the list by what the drawing holds; empty without a record. Only reads: no lock is
    // taken. Reading stops at the first value that is not what the format says and keeps the tasks
    // read completely so far, which is told on the command line. Handles of objects that are gone
    // give null envelopes and are left out of the source lists. Nothing is allocated by a count
    // that the record states.
    void load(AcDbDatabase* pDatabase);

    // Whether the drawing holds a stored list.
    static bool isStored(AcDbDatabase* pDatabase);

private:
    bool m_bPartlyRead = false;  // the drawing holds more than load() could make out
};
