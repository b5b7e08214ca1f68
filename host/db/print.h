// Where acutPrintf goes.
#pragma once

#include <string>

namespace host {

// Receives what is printed on the command line; text as formatted, line ends included.
using PrintSink = void (*)(const std::wstring& text);

// Null restores the default: standard output, as UTF-8.
void SetPrintSink(PrintSink sink);

}  // namespace host
