#include "tests/display/TakenEventHints.h"

#include <QEvent>

bool eventHintsAreTaken()
{
    return qEnvironmentVariableIsSet("ZOR_TAKE_EVENT_HINTS");
}

// Before all static initialisers of the program, those of the display layer among them.
__attribute__((constructor(101))) static void takeEventHints()
{
    if (!eventHintsAreTaken())
        return;
    for (const int hint : {8000, 8001, 8002, 8003, 8100, 8101, 8102, 8103, 8104, 8200, 8201})
        QEvent::registerEventType(hint);
}
