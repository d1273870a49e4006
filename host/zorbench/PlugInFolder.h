#pragma once

#include <QStringList>
#include <QVector>

class ZBKInterfacePlugIn;

namespace zor {

/// What a folder of plug-ins holds.
struct PlugInFolder
{
    /// In the order of their files' names, each once, also when a link leads to it. The objects are the
    /// loader's, and stay for the life of the process: no library is unloaded.
    QVector<ZBKInterfacePlugIn*> plugIns;
    /// One clause for each library that is of no use: its name and the reason.
    QStringList refusals;
};

/// Loads the plug-ins of a folder. No code of a library runs before its metadata shows that it has this
/// program's interface.
PlugInFolder loadPlugIns(const QString& folder);

} // namespace zor
