// The transaction manager, as far as it concerns the screen.
#pragma once

#include "rxboiler.h"

class AcTransactionManager : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcTransactionManager);

    // Asks for what was changed to be drawn; drawn at the next flush. No data changes.
    virtual void queueForGraphicsFlush();
    virtual void flushGraphics();
    // Transactions are not part of this host: always 0.
    virtual int numActiveTransactions();
};

// The only one; never null. The interface has it under three names.
AcTransactionManager* acTransactionManagerPtr();
#define actrTransactionManager acTransactionManagerPtr()
#define acTransactionManager acTransactionManagerPtr()
