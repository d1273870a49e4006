#include "host/zorbench/PlugInFolder.h"

#include "plugin/ZBKInterfacePlugIn.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>

namespace zor {

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("PlugInFolder", source);
}

/// Why a library is not even opened; empty when nothing speaks against it. A pipe would be waited for.
QString obstacle(const QFileInfo& file)
{
    if (!file.exists())
        return text("leads to a file that is not there");
    return file.isFile() ? QString() : text("is not a regular file");
}

/// The interface of a library; null, with the reason, when it is none that this program can use.
ZBKInterfacePlugIn* load(const QString& file, QString& reason)
{
    QPluginLoader loader(file);
    loader.setLoadHints(QLibrary::PreventUnloadHint);
    const QString interface = loader.metaData().value(QLatin1String("IID")).toString();
    if (interface.isEmpty()) {
        reason = text("is no plug-in");
        return nullptr;
    }
    if (interface != QLatin1String(ZBKInterfacePlugIn_iid)) {
        reason = text("has the interface \"%1\" in place of \"" ZBKInterfacePlugIn_iid "\"").arg(interface);
        return nullptr;
    }
    auto* plugIn = qobject_cast<ZBKInterfacePlugIn*>(loader.instance());
    if (!plugIn)
        reason = loader.isLoaded() ? text("lacks the interface that it promises")
                                   : text("cannot be loaded (%1)").arg(loader.errorString());
    return plugIn;
}

} // namespace

PlugInFolder loadPlugIns(const QString& folder)
{
    PlugInFolder result;
    const QDir files(folder);
    if (!files.exists())
        result.refusals.append(text("%1: there is no such folder").arg(folder));
    // What is no file and no folder counts as "System", a broken link too.
    const QStringList names = files.entryList(QDir::Files | QDir::System, QDir::Name);
    for (const QString& name : names) {
        if (!QLibrary::isLibrary(name))
            continue;
        const QString file = files.absoluteFilePath(name);
        QString reason = obstacle(QFileInfo(file));
        ZBKInterfacePlugIn* plugIn = reason.isEmpty() ? load(file, reason) : nullptr;
        if (!plugIn)
            result.refusals.append(file + QLatin1String(": ") + reason);
        else if (!result.plugIns.contains(plugIn))
            result.plugIns.append(plugIn);
    }
    return result;
}

} // namespace zor
