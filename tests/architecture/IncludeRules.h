#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// The whole text of a file; ends the program when it cannot be read.
QString textOf(const QString& path);

/// Who may include whom, by the table of a Markdown page: folder, what is in it, what it may include, and
/// whether it may include Qt. Names of folders and files are between backticks; folders end with a slash.
class IncludeRules
{
public:
    /// Takes the first table whose heading begins with "folder".
    explicit IncludeRules(const QString& page);

    /// The folders of the table.
    QStringList folders() const;

    /// The folders of the project's root that they are in, without a slash.
    QStringList rootFolders() const;

    /// The table's folder that a file belongs to; empty when there is none.
    QString folderOf(const QString& file) const;

    /// Judges one include of one source file. `file` is a path from the project's root, `include` is the text
    /// between the quotes or brackets. Empty when it is allowed, else what is wrong.
    QString whatIsWrongWith(const QString& file, const QString& include) const;

private:
    struct Row
    {
        QString folder;
        /// Folders or single files.
        QStringList mayInclude;
        bool mayIncludeQt;
    };

    const Row* find(const QString& path) const;
    bool isOfTheProject(const QString& include) const;

    QVector<Row> m_rows;
};
