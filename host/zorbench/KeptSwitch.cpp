#include "host/zorbench/KeptSwitch.h"

#include <QSettings>

namespace zor {

bool keptSwitch(const QSettings& settings, const QString& key, bool otherwise)
{
    const QString kept = settings.value(key).toString();
    const bool isWord = kept == QLatin1String("true") || kept == QLatin1String("false");
    return isWord ? kept == QLatin1String("true") : otherwise;
}

} // namespace zor
