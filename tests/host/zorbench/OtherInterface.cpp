#include <QObject>
#include <QtPlugin>

/// A plug-in for another version of the host's interface. It must never run.
class OtherInterface : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.zorlabs.ZorBench.ZBKInterfacePlugIn/2.0")

public:
    OtherInterface() { qFatal("a plug-in of another interface was made"); }
};

#include "OtherInterface.moc"
