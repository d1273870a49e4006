#include "tests/architecture/IncludeRules.h"

#include <QFile>
#include <QRegularExpression>

namespace {

QStringList namesIn(const QString& cell)
{
    static const QRegularExpression name("`([^`]+)`");
    QStringList names;
    for (auto match = name.globalMatch(cell); match.hasNext();)
        names.append(match.next().captured(1));
    return names;
}

bool isQtHeader(const QString& include)
{
    static const QRegularExpression qt("^(Q[A-Z][A-Za-z]*|Qt[A-Z][A-Za-z]*/.*|q[a-z0-9_]+\\.h)$");
    return qt.match(include).hasMatch();
}

} // namespace

QString textOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

IncludeRules::IncludeRules(const QString& page)
{
    bool isInTable = false;
    for (const QString& line : page.split('\n')) {
        if (!isInTable) {
            isInTable = line.startsWith("| folder ");
            continue;
        }
        if (!line.startsWith('|'))
            return;
        const QStringList cells = line.split('|');
        if (cells.size() == 6 && namesIn(cells[1]).size() == 1)
            m_rows.append({namesIn(cells[1]).first(), namesIn(cells[3]), cells[4].trimmed() == "yes"});
    }
}

QStringList IncludeRules::folders() const
{
    QStringList all;
    for (const Row& row : m_rows)
        all.append(row.folder);
    return all;
}

QStringList IncludeRules::rootFolders() const
{
    QStringList all;
    for (const Row& row : m_rows)
        all.append(row.folder.section('/', 0, 0));
    all.removeDuplicates();
    return all;
}

const IncludeRules::Row* IncludeRules::find(const QString& path) const
{
    const Row* found = nullptr;
    for (const Row& row : m_rows) {
        if (path.startsWith(row.folder) && (!found || row.folder.size() > found->folder.size()))
            found = &row;
    }
    return found;
}

/// Whether the path's first folder is one of the project's or a dot folder.
bool IncludeRules::isOfTheProject(const QString& include) const
{
    static const QStringList others = {"..", ".", "tests", "bench", "fuzz"};
    const QString first = include.section('/', 0, 0);
    if (!include.contains('/'))
        return false;
    if (others.contains(first))
        return true;
    for (const Row& row : m_rows) {
        if (row.folder.startsWith(first + '/'))
            return true;
    }
    return false;
}

QString IncludeRules::folderOf(const QString& file) const
{
    const Row* row = find(file);
    return row ? row->folder : QString();
}

QString IncludeRules::whatIsWrongWith(const QString& file, const QString& include) const
{
    const Row* from = find(file);
    if (!from)
        return file + " lies in a folder that the table does not know";
    if (include.endsWith(".moc") && !include.contains('/'))
        return {};
    if (isQtHeader(include))
        return from->mayIncludeQt ? QString() : from->folder + " includes Qt's " + include;
    if (!isOfTheProject(include))
        return {};
    const Row* to = find(include);
    if (!to || include.contains(".."))
        return file + " includes " + include + ", which is not a path from the root to a folder of the table";
    if (to == from || from->mayInclude.contains(to->folder) || from->mayInclude.contains(include))
        return {};
    return from->folder + " includes " + include + " of " + to->folder;
}
