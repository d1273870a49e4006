#include "host/zorbench/PlugInFolder.h"

#include "plugin/ZBKInterfacePlugIn.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>

namespace zor {

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("PlugInFolder", source);
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
    const QStringList names = files.entryList(QDir::Files, QDir::Name);
    for (const QString& name : names) {
        if (!QLibrary::isLibrary(name))
            continue;
        QString reason;
        if (ZBKInterfacePlugIn* plugIn = load(files.absoluteFilePath(name), reason))
            result.plugIns.append(plugIn);
        else
            result.refusals.append(files.absoluteFilePath(name) + QLatin1String(": ") + reason);
    }
    return result;
}

} // namespace zor
