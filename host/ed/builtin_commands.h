// The host's own commands: what a drawing session needs.
#pragma once

#include <string>

class AcApDocument;

namespace host {

enum class CommandEnd { kEnded, kCancelled, kFailed };

struct BuiltinCommand {
    const wchar_t* name;   // global name, capitals
    const wchar_t* alias;  // short form, or null
    bool isSession;        // runs in the application context, without a document if need be
    CommandEnd (*run)(AcApDocument* document);
};

// Null when there is none of that name or alias.
const BuiltinCommand* FindBuiltin(const std::wstring& name);

}  // namespace host
