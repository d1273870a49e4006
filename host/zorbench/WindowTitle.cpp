#include "host/zorbench/WindowTitle.h"

#include <QString>

namespace zor {

QString plainTitle(QString text)
{
    return text.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

} // namespace zor
