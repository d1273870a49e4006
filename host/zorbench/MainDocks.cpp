// The docks of the main window that look into the frame.

#include "host/zorbench/HexDumpDock.h"
#include "host/zorbench/HistogramDock.h"
#include "host/zorbench/InspectDock.h"
#include "host/zorbench/MainWindow.h"

#include <QMenu>

namespace zor {

void MainWindow::addDocks(QMenu* menu)
{
    menu->addSeparator();
    const auto add = [this, menu](QDockWidget* dock, Qt::DockWidgetArea area) {
        addDockWidget(area, dock);
        dock->hide();
        menu->addAction(dock->toggleViewAction());
    };
    add(new InspectDock(*m_view, this), Qt::RightDockWidgetArea);
    add(new HexDumpDock(*m_view, this), Qt::BottomDockWidgetArea);
    add(new HistogramDock(*m_view, this), Qt::RightDockWidgetArea);
}

} // namespace zor
