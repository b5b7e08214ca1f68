// A module's own resources: found by MFC only while the module makes them the current ones.
#pragma once

#include "host_wintypes.h"

// One per module, made by AC_IMPLEMENT_EXTENSION_MODULE.
class CAcExtensionModule {
public:
    CAcExtensionModule() = default;
    CAcExtensionModule(const CAcExtensionModule&) = delete;
    CAcExtensionModule& operator=(const CAcExtensionModule&) = delete;

    // Called by the module's DllMain; this host calls none, and takes the module that holds the
    // object.
    void AttachInstance(HINSTANCE hInstance) { m_hInstance = hInstance; }
    void DetachInstance() { m_hInstance = nullptr; }
    // The module that dialogs and texts of this one are looked up in.
    HINSTANCE ModuleResourceInstance() const;

private:
    HINSTANCE m_hInstance = nullptr;  // null: the module that holds the object
};

namespace host {
// The module's object; each module has its own, which no other one sees.
HOST_MODULE_LOCAL CAcExtensionModule& ExtensionModule();
// Switches the resources, and returns the ones before.
HINSTANCE SwitchResources(HINSTANCE to);
}  // namespace host

// In a header of the module: tells its other sources of the object.
#define AC_DECLARE_EXTENSION_MODULE(extModuleIdentifier) \
    extern CAcExtensionModule extModuleIdentifier
// In one source of the module: makes the object, and tells the host which one is this module's.
#define AC_IMPLEMENT_EXTENSION_MODULE(extModuleIdentifier)                      \
    CAcExtensionModule extModuleIdentifier;                                     \
    CAcExtensionModule& host::ExtensionModule() { return extModuleIdentifier; } \
    extern CAcExtensionModule extModuleIdentifier

// While it lives, dialogs and texts are found in the module it stands in.
class CAcModuleResourceOverride {
public:
    HOST_MODULE_LOCAL CAcModuleResourceOverride()
        : m_before(host::SwitchResources(host::ExtensionModule().ModuleResourceInstance())) {}
    ~CAcModuleResourceOverride() { host::SwitchResources(m_before); }
    CAcModuleResourceOverride(const CAcModuleResourceOverride&) = delete;
    CAcModuleResourceOverride& operator=(const CAcModuleResourceOverride&) = delete;

private:
    HINSTANCE m_before;  // put back at the end
};
