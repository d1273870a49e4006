#pragma once

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <vector>

/// One run of the program, as a user sees it.
struct ZorffcRun
{
    int exitCode = -1; ///< -1: it did not end by itself
    QString out;
    QString err;

    /// What a failing test has to show.
    QString transcript() const;
};

/// Runs zorffc in the given folder.
ZorffcRun runZorffc(const QString& folder, const QStringList& arguments,
                    const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

/// Runs a shell line in which "$@" is zorffc with the arguments.
ZorffcRun runShell(const QString& folder, const QString& line, const QStringList& arguments);

/// Writes a file whole; fails the test program's run when that is impossible.
void writeFile(const QString& path, const QByteArray& content);

QByteArray readFile(const QString& path);

/// A binary PGM of the given samples, row by row.
QByteArray pgm(int width, int height, int maxval, const std::vector<std::uint16_t>& samples);

/// All names in a folder, hidden ones too.
QStringList namesIn(const QString& folder);
