#include "host/db/print.h"

#include <cstdarg>
#include <cstdio>

#include "acutads.h"
#include "host/base/format.h"

namespace {

void PrintToStdout(const std::wstring& text) {
    const std::string bytes = host::Narrow(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
    std::fflush(stdout);
}

host::PrintSink g_sink = PrintToStdout;

}  // namespace

namespace host {
void SetPrintSink(PrintSink sink) { g_sink = sink != nullptr ? sink : PrintToStdout; }
}  // namespace host

int acutPrintf(const ACHAR* format, ...) {
    if (format == nullptr) return RTERROR;
    std::wstring text;
    va_list args;
    va_start(args, format);
    host::AppendFormatted(text, format, args);
    va_end(args);
    g_sink(text);
    return RTNORM;
}
