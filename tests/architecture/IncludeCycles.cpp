#include "tests/architecture/IncludeCycles.h"

#include <QSet>

namespace {

/// Every unit that can be reached from this one, itself only when a way leads back to it.
QSet<QString> reachableFrom(const QString& unit, const Includes& includes)
{
    QSet<QString> reached;
    QStringList waiting = includes.value(unit);
    while (!waiting.isEmpty()) {
        const QString next = waiting.takeLast();
        if (reached.contains(next))
            continue;
        reached.insert(next);
        waiting += includes.value(next);
    }
    return reached;
}

} // namespace

QString unitOf(const QString& file)
{
    return file.left(file.lastIndexOf('.'));
}

QStringList cyclesOf(const Includes& includes)
{
    QMap<QString, QSet<QString>> reachable;
    for (auto unit = includes.cbegin(); unit != includes.cend(); ++unit)
        reachable[unit.key()] = reachableFrom(unit.key(), includes);
    QStringList cycles;
    QSet<QString> listed;
    for (auto unit = reachable.cbegin(); unit != reachable.cend(); ++unit) {
        if (!unit.value().contains(unit.key()) || listed.contains(unit.key()))
            continue;
        QStringList group;
        for (auto other = reachable.cbegin(); other != reachable.cend(); ++other) {
            if (unit.value().contains(other.key()) && other.value().contains(unit.key()))
                group.append(other.key());
        }
        listed.unite(QSet<QString>(group.cbegin(), group.cend()));
        cycles.append(group.join(' '));
    }
    return cycles;
}
