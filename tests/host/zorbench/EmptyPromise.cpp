#include "plugin/ZBKInterfacePlugIn.h"

#include <QObject>

/// A plug-in that names the host's interface and has it not.
class EmptyPromise : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID ZBKInterfacePlugIn_iid)
};

#include "EmptyPromise.moc"
