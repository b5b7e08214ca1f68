// How the dialogs compute: by the prescribed steps, or by the exact envelope's rules.
#pragma once

#include "EncircleLine.h"

// One of the engine's pipelines.
using EnvelopePipeline = void (CEncircleLine::*)(const AcDbObjectIdArray& ids, AcDbObjectId& outId);

enum E_EnvelopeMethod { E_Method_Steps, E_Method_Exact };

// The words for the command line and the user's profile: "Steps", "Exact".
const ACHAR* GetMethodName(E_EnvelopeMethod method);

// What the user's profile says; steps when it says nothing.
E_EnvelopeMethod GetEnvelopeMethod();
// Keeps it in the user's profile, beyond this session. False when the host does not take it.
bool SetEnvelopeMethod(E_EnvelopeMethod method);

EnvelopePipeline GetPipeline(E_EnvelopeMethod method);

// Tells on the command line, in one line, when an envelope of the steps lies off the exact one of
// the same parameters, with amount and place, or when there is no exact one; nothing when they
// agree. The axis line of the parameters must still be there.
//
// strTool  its number, in front of the line; may be empty
void TellEnvelopeCheck(const CEncircleCalInfo& info, const AcDbObjectIdArray& ids,
                       const AcDbObjectId& envelopeId, const CString& strTool);

// Why there is no exact envelope, as a line for the user.
CString GetExactRefusal(const CEncircleCalInfo& info, const AcDbObjectIdArray& ids);
