// Registration of services under a name in the system registry.
#pragma once

#include "rxdict.h"
#include "rxsrvice.h"

// Registers a new service; null when the name is taken.
AcRxService* acrxRegisterService(const ACHAR* name);

// True when an object of that name is registered.
bool acrxServiceIsRegistered(const ACHAR* name);
