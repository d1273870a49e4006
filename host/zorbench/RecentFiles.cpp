#include "host/zorbench/RecentFiles.h"

#include <QSettings>

namespace zor {

namespace {

QString key()
{
    return QStringLiteral("RecentFiles");
}

} // namespace

RecentFiles::RecentFiles(QSettings& settings)
    : m_settings(settings)
{
}

QStringList RecentFiles::files() const
{
    return m_settings.value(key()).toStringList().mid(0, MaxCount);
}

void RecentFiles::add(const QString& file)
{
    QStringList all = files();
    all.removeAll(file);
    all.prepend(file);
    m_settings.setValue(key(), QStringList(all.mid(0, MaxCount)));
    emit changed();
}

} // namespace zor
