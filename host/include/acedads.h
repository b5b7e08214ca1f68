// The editor's C-style functions: selection sets, prompts, variables.
#pragma once

#include "AcString.h"
#include "adscodes.h"
#include "adsdef.h"

// Makes a selection set.
// mode    null: the user selects; "A" all of the current space that is not on frozen or locked
//         layers; "X" the whole drawing; "I" the set picked beforehand; "P" the previous set;
//         "L" the newest entity shown; "W", "C" window and crossing between pt1 and pt2 (UCS);
//         ":$" own prompts in pt1 (two texts), ":S" one selection, ":L" no locked layers; these
//         combine, as ":$:L". A leading "_" is allowed.
// filter  conditions that all must hold: 0 the type's DXF name, 8 the layer, 62 the colour,
//         6 the linetype; texts may hold wildcards and comma lists, without case
// ss      the set, to be freed by acedSSFree; at most 128 at a time
// result  RTNORM when the set is not empty; RTERROR when nothing was selected or the call is bad;
//         RTCAN for Esc
int acedSSGet(const ACHAR* mode, const void* pt1, const void* pt2, const resbuf* filter,
              ads_name ss);
// How many entities the set holds, erased ones included. RTERROR for a set that was freed.
int acedSSLength(const ads_name ss, Adesk::Int32* length);
// The entity at a place, counted from 0, as a name for acdbGetObjectId. RTERROR beyond the end.
int acedSSName(const ads_name ss, int index, ads_name entity);
// Gives the set's number back; its entities stay. RTERROR for a set that was freed already.
int acedSSFree(const ads_name ss);
// Adds or removes one entity; a nil set makes a new one. result receives the set.
int acedSSAdd(const ads_name entity, const ads_name ss, ads_name result);
// Takes one entity out; RTERROR when it is not in the set.
int acedSSDel(const ads_name entity, const ads_name ss);
// RTNORM when the entity is in the set, else RTERROR.
int acedSSMemb(const ads_name entity, const ads_name ss);

// Asks for a point, in UCS. RTNORM, RTNONE for Enter, RTCAN for Esc; result only with RTNORM.
int acedGetPoint(const ads_point base, const ACHAR* prompt, ads_point result);
// Asks for a text. cronly 0: a blank ends it. Enter alone: RTNORM and an empty text. result has
// room for n characters with the closing zero; a longer answer is cut. Unlike AutoCAD, takes no
// bare pointer without a size.
int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result, size_t n);
template <size_t N>
int acedGetString(int cronly, const ACHAR* prompt, ACHAR (&result)[N]) {
    return acedGetString(cronly, prompt, result, N);
}
int acedGetString(int cronly, const ACHAR* prompt, AcString& result);
// Rules for the next input only: RSG_NONULL asks again instead of taking Enter. keywords, with
// blanks between them, are for acedGetKword; their capitals alone may be typed. What stands behind
// "_" are their names in the same order, which answers come as: "Ja Nein _Yes No".
int acedInitGet(int bits, const ACHAR* keywords);
// Asks for one of the keywords of acedInitGet, again until it is one. RTNORM with the keyword,
// RTNONE for Enter, RTCAN for Esc, RTERROR without keywords. n as of acedGetString.
int acedGetKword(const ACHAR* prompt, ACHAR* result, size_t n);
template <size_t N>
int acedGetKword(const ACHAR* prompt, ACHAR (&result)[N]) {
    return acedGetKword(prompt, result, N);
}

// A variable that outlives the session: AutoCAD keeps it in the registry of the user's profile,
// this host in a file "qzhost/settings" where programs keep their settings (XDG_CONFIG_HOME, else
// .config in the home folder; on Windows APPDATA). Names in any case of letters. RTERROR for one
// that is not kept, or that cannot be.
int acedGetEnv(const ACHAR* name, ACHAR* value, size_t n);
int acedSetEnv(const ACHAR* name, const ACHAR* value);

int acedPrompt(const ACHAR* text);  // writes a text to the command line and asks nothing

// System variables known here: CLAYER, INSUNITS, DWGNAME, DWGPREFIX, DWGTITLED, DBMOD, CMDNAMES,
// CMDACTIVE. RTERROR for another name; acedSetVar also for a read-only one. Texts in an answer are
// freed by the caller.
int acedGetVar(const ACHAR* name, resbuf* result);
int acedSetVar(const ACHAR* name, const resbuf* value);
