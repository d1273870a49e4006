#include "architecture/IncludeRules.h"

#include <QRegularExpression>
#include <QStringList>
#include <QVector>

namespace {

struct Room
{
    QString folder;
    /// Folders with what lies below them, or single headers; a room may always include itself. A folder below
    /// with a row of its own does not belong to its upper one.
    QStringList mayInclude;
    bool mayIncludeQt;
};

const QVector<Room>& rooms()
{
    static const QString hostInterface = "plugin/ZBKInterfacePlugIn.h";
    static const QVector<Room> table = {
        {"image", {}, false},
        {"splitter", {}, true},
        {"engine", {}, false},
        {"display", {"image"}, true},
        {"dialog", {"display", "splitter", "engine", "image", hostInterface}, true},
        {"engine/stages", {"dialog", "engine", "image"}, true},
        {"plugin", {"dialog"}, true},
        {"platform", {}, false},
        {"platform/records", {"image", "platform"}, false},
        {"platform/imageapi", {"image", "platform", "platform/records"}, false},
        {"platform/converter", {"image", "platform", "platform/records"}, false},
        {"platform/viewer",
         {"image", "platform", "display/DisplaySettings.h", "display/DisplayStage.h",
          "display/ParameterMap.h", "display/ZorDisplayCommand.h", "display/ZorDisplayProcessor.h",
          "display/ZorDisplayQt.h"},
         true},
        {"host/frames", {"engine", "image"}, true},
        {"host/camera", {"engine", "image"}, true},
        {"host/quality", {"engine", "image"}, true},
        {"host/zorffc", {"engine", "image", "host/frames", "host/camera", "host/quality"}, true},
        {"host/zorbench",
         {"display", "image", hostInterface, "host/frames", "host/camera", "host/quality"},
         true},
    };
    return table;
}

bool isBelow(const QString& path, const QString& folder)
{
    return path.startsWith(folder + '/');
}

const Room* findRoom(const QString& path)
{
    const Room* found = nullptr;
    for (const Room& room : rooms()) {
        if (isBelow(path, room.folder) && (!found || isBelow(room.folder, found->folder)))
            found = &room;
    }
    return found;
}

bool isQtHeader(const QString& include)
{
    static const QRegularExpression qt("^(Q[A-Z][A-Za-z]*|Qt[A-Z][A-Za-z]*/.*|q[a-z0-9_]+\\.h)$");
    return qt.match(include).hasMatch();
}

/// Whether the path's first folder is one of the project's or a dot folder.
bool isOfTheProject(const QString& include)
{
    static const QStringList others = {"..", ".", "host", "tests", "bench", "fuzz"};
    const QString first = include.section('/', 0, 0);
    if (!include.contains('/'))
        return false;
    return others.contains(first) || findRoom(first + "/x") != nullptr;
}

} // namespace

QString roomOf(const QString& file)
{
    const Room* room = findRoom(file);
    return room ? room->folder : QString();
}

QString whatIsWrongWith(const QString& file, const QString& include)
{
    const Room* from = findRoom(file);
    if (!from)
        return file + " lies in a folder that the table does not know";
    if (include.endsWith(".moc") && !include.contains('/'))
        return {};
    if (isQtHeader(include))
        return from->mayIncludeQt ? QString() : from->folder + " includes Qt's " + include;
    if (!isOfTheProject(include))
        return {};
    const Room* to = findRoom(include);
    if (!to || include.contains(".."))
        return file + " includes " + include + ", which is not a path from the root to a folder of the table";
    if (to == from || from->mayInclude.contains(to->folder) || from->mayInclude.contains(include))
        return {};
    return from->folder + " includes " + include + " of " + to->folder;
}
