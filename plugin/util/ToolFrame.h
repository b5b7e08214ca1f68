// Drawing frames: block references that carry a tool number. What lies inside one belongs to the
// tool of that number.
#pragma once

#include <vector>

#include "QZRect.h"

// Name under which a frame carries its tool number.
constexpr const ACHAR* kToolNumberKey = _T("TUKANGE_NAME_IDENTITY");

// How an entity can carry a text.
enum E_TextCarrier {
    E_Carrier_None,
    E_Carrier_ExtendedData,
    E_Carrier_ExtensionRecord,
    E_Carrier_Attribute
};

struct SToolFrame {
    AcDbObjectId m_id;
    CString m_strNumber;
    CQZRect m_rect;  // extents of the block reference
    E_TextCarrier m_carrier = E_Carrier_None;
};

// The text that an entity carries under a key: in its extended data of that application name, else
// as an Xrecord of that key in its extension dictionary, else, for a block reference, in an
// attribute of that tag. The first text of the first carrier that is there counts; empty when none
// is. Keys and tags match without regard to case.
//
// pCarrier  when given, receives which it was
CString GetAttachedText(const AcDbObjectId& id, const ACHAR* pKey,
                        E_TextCarrier* pCarrier = nullptr);

// The frames of a database, of the working one for null, in drawing order: those of model space,
// then those of the layouts. O(entities).
std::vector<SToolFrame> CollectToolFrames(AcDbDatabase* pDatabase = nullptr);

// The tool number of the first frame whose rectangle contains the box, within 1e-6; empty when none
// does.
CString FindToolNumber(const std::vector<SToolFrame>& frames, const CQZRect& box);
