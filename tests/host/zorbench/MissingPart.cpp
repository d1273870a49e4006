#include "plugin/ZBKInterfacePlugIn.h"

#include <QObject>

/// No library of the process has it, so that this one can't be loaded.
extern int zorPartOfALibraryThatIsNotThere;

/// A plug-in that lacks a library.
class MissingPart : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID ZBKInterfacePlugIn_iid)

public:
    int* part = &zorPartOfALibraryThatIsNotThere;
};

#include "MissingPart.moc"
