#include "display/DisplayEvents.h"

static QEvent::Type registered(int hint)
{
    return static_cast<QEvent::Type>(QEvent::registerEventType(hint));
}

// They register in this order, which is the order of their hints.
const QEvent::Type DisplayEvStart = registered(8000);
const QEvent::Type DisplayEvReserved = registered(8001);
const QEvent::Type DisplayEvContextMenu = registered(8002);
const QEvent::Type DisplayEvViewChanged = registered(8003);
const QEvent::Type DisplayEvMouseDown = registered(8100);
const QEvent::Type DisplayEvMouseMove = registered(8101);
const QEvent::Type DisplayEvMouseUp = registered(8102);
const QEvent::Type DisplayEvHexDump = registered(8103);
const QEvent::Type DisplayEvHexDumpHere = registered(8104);
const QEvent::Type DisplayEvMessage = registered(8200);
const QEvent::Type DisplayEvImageProcessed = registered(8201);
