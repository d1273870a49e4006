#pragma once

#include <QMap>
#include <QStringList>

/// What each source unit includes. A header and the source of the same name are one unit, named by their path
/// without its ending.
using Includes = QMap<QString, QStringList>;

/// The unit of a file.
QString unitOf(const QString& file);

/// The units that include each other, by whatever detour: one text a group, its units joined by blanks.
QStringList cyclesOf(const Includes& includes);
