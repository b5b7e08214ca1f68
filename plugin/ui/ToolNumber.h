#pragma once

// The tool number that follows another: its closing run of digits, without leading zeros, plus one;
// "0007" gives "0008", "0009" gives "00010". A text that ends in no digit, or only in zeros, gets a
// "1" appended. Runs of any length count up.
CString GetNextToolNumber(const CString& strNumber);
