// Services: objects that modules offer one another through the system registry.
#pragma once

#include "rxboiler.h"

// An entry of the registry under a name; does nothing by itself.
class AcRxService : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcRxService);
    AcRxService() = default;
};
