// Registration of services under a name in the system registry.
#pragma once

#include "rxdict.h"
#include "rxsrvice.h"

// Registers a new service; null when the name is taken.
// Modules say by one that they are there; it lives until the program ends.
AcRxService* acrxRegisterService(const ACHAR* name);

// True when an object of that name is registered.
bool acrxServiceIsRegistered(const ACHAR* name);
