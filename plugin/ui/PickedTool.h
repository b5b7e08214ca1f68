// Picking in the drawing: entities, centre and tool number.
#pragma once

// Entities that the user selects under a prompt; empty when nothing was selected.
// pFilter  DXF name that they must have; null for any
AcDbObjectIdArray SelectEntities(const ACHAR* pPrompt, const ACHAR* pFilter = nullptr);

// Everything of the current space that is on no frozen or locked layer, invisible entities
// included.
AcDbObjectIdArray SelectAllEntities();

// A point under a prompt, in world coordinates and on the XY plane: a height that came with an
// object snap is dropped. False without one.
bool PickCentre(const ACHAR* pPrompt, AcGePoint3d& pt);

struct SPickedTool {
    AcDbObjectIdArray m_ids;
    AcGePoint3d m_centre;
    CString m_strNumber;
};

// Picks one tool for a task: its entities, its centre, and its number from the drawing frame around
// both, else asked for on the command line.
//
// strPrevious  number of the tool before, the base of the answer offered; empty for the first one
// result       false when the user ends it at any prompt
bool PickTool(const CString& strPrevious, SPickedTool& picked);
