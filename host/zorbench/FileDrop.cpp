#include "host/zorbench/FileDrop.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace zor {

namespace {

QStringList localFiles(const QMimeData* data)
{
    QStringList files;
    const QList<QUrl> urls = data->urls();
    for (const QUrl& url : urls) {
        if (url.isLocalFile())
            files.append(url.toLocalFile());
    }
    return files;
}

} // namespace

void FileDrop::watch(QWidget& widget)
{
    widget.setAcceptDrops(true);
    widget.installEventFilter(this);
}

void FileDrop::answer(QDropEvent& event)
{
    const bool isTaken =
        event.possibleActions().testFlag(Qt::CopyAction) && !localFiles(event.mimeData()).isEmpty();
    event.setDropAction(isTaken ? Qt::CopyAction : Qt::IgnoreAction);
    event.setAccepted(isTaken);
}

bool FileDrop::eventFilter(QObject* object, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
        answer(static_cast<QDropEvent&>(*event));
        return true;
    case QEvent::Drop: {
        auto& drop = static_cast<QDropEvent&>(*event);
        answer(drop);
        if (drop.isAccepted())
            emit dropped(localFiles(drop.mimeData()));
        return true;
    }
    default:
        return QObject::eventFilter(object, event);
    }
}

} // namespace zor
