// The viewer's context menu with the hex dump entries that DisplayAdapterQT adds to it.

#include "display/DisplayEvents.h"
#include "display/ParameterText.h"
#include "display/ZorDisplayProcessor.h"

#include <QAction>
#include <QMenu>
#include <QPointer>
#include <QWidget>

bool DisplayAdapterQT::showContextMenu()
{
    if (!hasViewer())
        return false;
    notification.close();
    if (!menuParameters.count("qmenu"))
        processor->command("cmd.system.menu.create", &menuParameters);
    auto* menu = static_cast<QMenu*>(paramPointer(&menuParameters, "qmenu"));
    // The gate stays closed on purpose: a viewer that can't make its menu is not heard again.
    if (!menu)
        return false;
    if (features & DisplayFeatureDump)
        addHexDumpEntries(menu);
    const QPointer<DisplayAdapterQT> living(this);
    processor->command("cmd.system.menu.exec", &menuParameters);
    // The event loop of an open menu may end the adapter.
    if (living)
        notification.open();
    return true;
}

void DisplayAdapterQT::addHexDumpEntries(QMenu* menu)
{
    // Each entry is made once for the life of the adapter. The menu owns them; with an entry as the context
    // its connection ends with it.
    if (!menuParameters.count("hexShow")) {
        auto* entry = new QAction(menu);
        paramSetText(&menuParameters, "hexShow", textFromPointer(entry).c_str());
        menu->addSeparator();
        menu->addAction(entry);
        connect(
            entry, &QAction::triggered, entry, [this] { hexDumpToggled(); }, Qt::DirectConnection);
    }
    if (auto* entry = static_cast<QAction*>(paramPointer(&menuParameters, "hexShow")))
        entry->setText(dumpShown ? QStringLiteral("Hide HexPixelDump") : QStringLiteral("Show HexPixelDump"));

    if (!menuParameters.count("hexSet")) {
        auto* entry = new QAction(QStringLiteral("Set HexPixelDump Here"), menu);
        paramSetText(&menuParameters, "hexSet", textFromPointer(entry).c_str());
        menu->addAction(entry);
        connect(
            entry, &QAction::triggered, entry, [this] { hexDumpHere(); }, Qt::DirectConnection);
    }
    if (auto* entry = static_cast<QAction*>(paramPointer(&menuParameters, "hexSet")))
        entry->setVisible(dumpShown);
}

void DisplayAdapterQT::hexDumpToggled()
{
    // dumpShown follows when the listener calls showDumpOverlay.
    QEvent event(DisplayEvHexDump);
    sendToView(event);
}

void DisplayAdapterQT::hexDumpHere()
{
    const auto* menu = static_cast<QMenu*>(paramPointer(&menuParameters, "qmenu"));
    const auto* widget = static_cast<QWidget*>(paramPointer(&menuParameters, "qmenuWidget"));
    if (!menu || !widget)
        return;
    // Nobody kept the place of the click; the menu popped up there.
    DisplayEvent event(DisplayEvHexDumpHere);
    event.windowPos = widget->mapFromGlobal(menu->pos());
    int x = event.windowPos.x();
    int y = event.windowPos.y();
    if (!translatePoint(&x, &y, "win", "img"))
        return;
    event.imagePos = QPoint(x, y);
    sendToView(event);
}
