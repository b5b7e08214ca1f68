#include "StdAfx.h"
#include "FlushGraphics.h"

void FlushGraphics() {
    actrTransactionManager->queueForGraphicsFlush();
    actrTransactionManager->flushGraphics();
    acedUpdateDisplay();
}
