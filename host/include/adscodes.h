// Result types and answers of the C-style interface. Group codes lie below 2000, result types
// above.
#pragma once

#define RTNONE 5000      // nothing: Enter at a prompt, the end of a list
#define RTREAL 5001      // a number, in rreal
#define RTPOINT 5002     // two coordinates, in rpoint
#define RTSHORT 5003     // 16 bits, in rint
#define RTANG 5004       // an angle in radians, in rreal
#define RTSTR 5005       // a text, in rstring
#define RTENAME 5006     // an entity's name, in rlname
#define RTPICKS 5007     // a selection set's name, in rlname
#define RTORINT 5008     // as RTANG, whatever the base angle
#define RT3DPOINT 5009   // three coordinates, in rpoint
#define RTLONG 5010      // 32 bits, in rlong
#define RTVOID 5014      // no value
#define RTLB 5016        // a list begins
#define RTLE 5017        // a list ends
#define RTDOTE 5018      // a dotted pair
#define RTNIL 5019       // false, or an empty list
#define RTDXF0 5020      // group 0 within a list
#define RTT 5021         // true
#define RTRESBUF 5023    // a chain within a chain
#define RTMODELESS 5027  // a window took the input away

#define RTNORM 5100      // done
#define RTERROR (-5001)  // refused or failed
#define RTCAN (-5002)    // Esc
#define RTREJ (-5003)    // the host refused the request
#define RTFAIL (-5004)   // the link to the host failed
#define RTKWORD (-5005)  // a keyword instead of a value

// Sent at intervals to modeless windows; TRUE keeps the focus there.
#define WM_ACAD_KEEPFOCUS 1001
