#include "tests/host/ZorffcRun.h"

#include <QDir>
#include <QFile>
#include <QProcess>

namespace {

ZorffcRun run(const QString& folder, const QString& program, const QStringList& arguments,
              const QProcessEnvironment& environment)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    ZorffcRun result;
    constexpr int longest = 120000; // ms, for slow sanitizer builds
    if (process.waitForFinished(longest) && process.exitStatus() == QProcess::NormalExit)
        result.exitCode = process.exitCode();
    result.out = QString::fromUtf8(process.readAllStandardOutput());
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}

} // namespace

QString ZorffcRun::transcript() const
{
    return QStringLiteral("exit %1\nstdout: %2\nstderr: %3").arg(exitCode).arg(out, err);
}

ZorffcRun runZorffc(const QString& folder, const QStringList& arguments,
                    const QProcessEnvironment& environment)
{
    return run(folder, QStringLiteral(ZORFFC_PROGRAM), arguments, environment);
}

ZorffcRun runShell(const QString& folder, const QString& line, const QStringList& arguments)
{
    const QStringList shell{QStringLiteral("-c"), line, QStringLiteral("sh"), QStringLiteral(ZORFFC_PROGRAM)};
    return run(folder, QStringLiteral("/bin/sh"), shell + arguments,
               QProcessEnvironment::systemEnvironment());
}

void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s cannot be written", qPrintable(path));
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return "(no such file)";
    return file.readAll();
}

QByteArray pgm(int width, int height, int maxval, const std::vector<std::uint16_t>& samples)
{
    QByteArray content = "P5\n" + QByteArray::number(width) + " " + QByteArray::number(height) + "\n" +
                         QByteArray::number(maxval) + "\n";
    for (const std::uint16_t sample : samples) {
        if (maxval > 255)
            content.append(static_cast<char>(sample >> 8));
        content.append(static_cast<char>(sample & 0xFF));
    }
    return content;
}

QStringList namesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}
