// Registered commands: AcEdCommand, AcEdCommandStack and the iterator.
#include <memory>
#include <string>
#include <vector>

#include "accmd.h"
#include "acutmem.h"
#include "host/ed/text_compare.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcEdCommand, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcEdCommandIterator, AcRxObject)
ACRX_CONS_DEFINE_MEMBERS(AcEdCommandStack, AcRxObject, 1)

using host::EqualsNoCase;

AcEdCommand::AcEdCommand(const ACHAR* globalName, const ACHAR* localName, Adesk::Int32 flags,
                         AcRxFunctionPtr function)
    : m_flags(flags), m_function(function) {
    if (acutNewString(globalName, m_globalName) != Acad::eOk) m_globalName = nullptr;
    if (acutNewString(localName, m_localName) != Acad::eOk) m_localName = nullptr;
}

AcEdCommand::~AcEdCommand() {
    acutDelString(m_globalName);
    acutDelString(m_localName);
}

struct AcEdCommandStack::Imp {
    struct Group {
        std::wstring name;
        std::vector<std::unique_ptr<AcEdCommand>> commands;
    };
    std::vector<Group> groups;

    Group* Find(const ACHAR* name) {
        for (Group& group : groups)
            if (EqualsNoCase(group.name.c_str(), name)) return &group;
        return nullptr;
    }

    AcEdCommand* Lookup(const ACHAR* name, const ACHAR* (AcEdCommand::*nameOf)() const) {
        if (name == nullptr) return nullptr;
        for (size_t i = groups.size(); i-- > 0;)
            for (const auto& command : groups[i].commands)
                if (EqualsNoCase((command.get()->*nameOf)(), name)) return command.get();
        return nullptr;
    }
};

AcEdCommandStack::AcEdCommandStack() : m_imp(new Imp()) {}
AcEdCommandStack::~AcEdCommandStack() { delete m_imp; }

Acad::ErrorStatus AcEdCommandStack::addCommand(const ACHAR* groupName, const ACHAR* globalName,
                                               const ACHAR* localName, Adesk::Int32 flags,
                                               AcRxFunctionPtr function, AcEdUIContext*, int,
                                               HINSTANCE, AcEdCommand** command) {
    for (const ACHAR* name : {groupName, globalName, localName})
        if (name == nullptr || *name == 0) return Acad::eInvalidInput;
    if (function == nullptr) return Acad::eInvalidInput;
    Imp::Group* group = m_imp->Find(groupName);
    if (group == nullptr) {
        m_imp->groups.push_back({groupName, {}});
        group = &m_imp->groups.back();
    }
    for (const auto& present : group->commands)
        if (EqualsNoCase(present->globalName(), globalName) ||
            EqualsNoCase(present->localName(), localName))
            return Acad::eDuplicateKey;
    group->commands.push_back(
        std::make_unique<AcEdCommand>(globalName, localName, flags, function));
    if (command != nullptr) *command = group->commands.back().get();
    return Acad::eOk;
}

AcEdCommand* AcEdCommandStack::lookupGlobalCmd(const ACHAR* name) {
    return m_imp->Lookup(name, &AcEdCommand::globalName);
}

AcEdCommand* AcEdCommandStack::lookupLocalCmd(const ACHAR* name) {
    return m_imp->Lookup(name, &AcEdCommand::localName);
}

Acad::ErrorStatus AcEdCommandStack::removeCmd(const ACHAR* groupName, const ACHAR* globalName) {
    if (groupName == nullptr || globalName == nullptr) return Acad::eInvalidInput;
    Imp::Group* const group = m_imp->Find(groupName);
    if (group == nullptr) return Acad::eKeyNotFound;
    for (size_t i = 0; i < group->commands.size(); ++i) {
        if (!EqualsNoCase(group->commands[i]->globalName(), globalName)) continue;
        group->commands.erase(group->commands.begin() + static_cast<std::ptrdiff_t>(i));
        return Acad::eOk;
    }
    return Acad::eKeyNotFound;
}

Acad::ErrorStatus AcEdCommandStack::removeGroup(const ACHAR* groupName) {
    if (groupName == nullptr) return Acad::eInvalidInput;
    const Imp::Group* const group = m_imp->Find(groupName);
    if (group == nullptr) return Acad::eKeyNotFound;
    m_imp->groups.erase(m_imp->groups.begin() + (group - m_imp->groups.data()));
    return Acad::eOk;
}

namespace {

class CommandIterator : public AcEdCommandIterator {
public:
    using Entry = std::pair<std::wstring, const AcEdCommand*>;
    explicit CommandIterator(std::vector<Entry> entries) : m_entries(std::move(entries)) {}
    bool done() const override { return m_index >= m_entries.size(); }
    bool next() override {
        ++m_index;
        return !done();
    }
    const AcEdCommand* command() const override {
        return done() ? nullptr : m_entries[m_index].second;
    }
    const ACHAR* commandGroup() const override {
        return done() ? nullptr : m_entries[m_index].first.c_str();
    }

private:
    std::vector<Entry> m_entries;
    size_t m_index = 0;
};

}  // namespace

AcEdCommandIterator* AcEdCommandStack::iterator() {
    std::vector<CommandIterator::Entry> entries;
    for (const Imp::Group& group : m_imp->groups)
        for (const auto& command : group.commands) entries.push_back({group.name, command.get()});
    return new CommandIterator(std::move(entries));
}
