// The host's own commands: what a drawing session needs.
#pragma once

#include <string>
#include <vector>

class AcApDocument;

namespace host {

enum class CommandEnd { kEnded, kCancelled, kFailed };

struct BuiltinCommand {
    const wchar_t* name;   // global name, capitals
    const wchar_t* alias;  // short form, or null
    bool isSession;        // runs in the application context, without a document if need be
    CommandEnd (*run)(AcApDocument* document);
    const wchar_t* help;  // what it does, in a few words
};

// Null when there is none of that name or alias.
const BuiltinCommand* FindBuiltin(const std::wstring& name);

// True when a command line may begin so: a module's command or one of these, with its prefixes.
bool IsCommandKnown(const std::wstring& typed);

// The global names, sorted.
std::vector<std::wstring> BuiltinNames();

}  // namespace host
