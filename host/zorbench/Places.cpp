#include "host/zorbench/Places.h"

#include <QDir>

namespace zor {

Places placesOf(const QString& programFolder)
{
    const QDir prefix(QDir(programFolder).absoluteFilePath(QStringLiteral("..")));
    const auto place = [&prefix](const char* name) {
        return QDir::cleanPath(prefix.filePath(QLatin1String(name)));
    };
    if (prefix.exists(QStringLiteral("lib/ZorBench")))
        return {place("lib/ZorBench"), place("lib/ZorBench/Plugins")};
    return {place("ZorBench"), place("Plugins")};
}

} // namespace zor
