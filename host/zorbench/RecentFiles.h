#pragma once

#include <QObject>
#include <QStringList>

class QSettings;

namespace zor {

/// The files that were opened last, the latest first, kept in the settings.
class RecentFiles : public QObject
{
    Q_OBJECT

public:
    static constexpr int MaxCount = 10;

    /// The settings must outlive this object.
    explicit RecentFiles(QSettings& settings);

    QStringList files() const;
    /// Puts a file first, wherever it was. The name is absolute.
    void add(const QString& file);

signals:
    void changed();

private:
    QSettings& m_settings;
};

} // namespace zor
