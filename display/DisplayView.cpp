#include "display/DisplayView.h"

#include "display/DisplayEvents.h"
#include "display/UnloadableMetaType.h"

#include <QIcon>
#include <QPixmap>
#include <QToolButton>

int QMetaTypeId<DisplayView*>::qt_metatype_id()
{
    static const zor::UnloadableMetaType<DisplayView*> type("DisplayView*", &DisplayView::staticMetaObject);
    return type.id();
}

DisplayView::DisplayView(QWidget* parent)
    : QGraphicsView(parent)
{
    // A press may come on the viewer's thread; a listener then gets the signal through its own queue, which
    // must know how to copy the arguments.
    static const zor::UnloadableMetaType<QEvent::Type> type("QEvent::Type", &QEvent::staticMetaObject);
    // A file of the host's installation, found from the working directory; without it the icon is empty.
    const QIcon icon(QPixmap(QStringLiteral("../ZorBench/Resources/ZoomFull.png")));
    escapeButton = new QToolButton(this);
    escapeButton->hide();
    escapeButton->setGeometry(0, 0, 34, 34);
    escapeButton->setIconSize(QSize(32, 32));
    escapeButton->setIcon(icon);
    // Only the bare icon is seen over the image.
    escapeButton->setStyleSheet(
        QStringLiteral("QToolButton {\tbackground-color: transparent; border: 0px; }"));
    connect(escapeButton, SIGNAL(clicked()), this, SIGNAL(sigKeyEscape()));
}

bool DisplayView::event(QEvent* e)
{
    const QEvent::Type type = e->type();
    if (type == DisplayEvMouseMove || type == DisplayEvMouseDown || type == DisplayEvMouseUp) {
        emit sigMouseMoved(static_cast<DisplayAdapterQT::DisplayEvent*>(e)->imagePos, type);
        return true;
    }
    if (type == DisplayEvHexDump) {
        emit sigHexDump();
        return true;
    }
    if (type == DisplayEvHexDumpHere) {
        emit sigHexDumpHere(static_cast<DisplayAdapterQT::DisplayEvent*>(e)->imagePos);
        return true;
    }
    if (type == DisplayEvViewChanged) {
        emit sigViewChanged(this);
        return true;
    }
    return QGraphicsView::event(e);
}

void DisplayView::keyPressEvent(QKeyEvent* e)
{
    QGraphicsView::keyPressEvent(e);
}

void DisplayView::showEvent(QShowEvent* e)
{
    escapeButton->setVisible(windowState() == Qt::WindowFullScreen);
    QGraphicsView::showEvent(e);
}
