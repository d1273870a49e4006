#include "tests/host/ZorffcRun.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QStringList Compute{"compute", "f.pgm", "--title", "Title", "--camera", "Camera", "--output", "f.ffc"};

/// A pipe that takes no byte more: whoever writes to it waits.
class FullPipe
{
public:
    FullPipe()
    {
        if (::pipe(m_ends) != 0)
            qFatal("no pipe");
        const int flags = ::fcntl(m_ends[1], F_GETFL);
        ::fcntl(m_ends[1], F_SETFL, flags | O_NONBLOCK);
        const char byte = 0;
        while (::write(m_ends[1], &byte, 1) == 1) {
        }
        ::fcntl(m_ends[1], F_SETFL, flags);
    }
    ~FullPipe()
    {
        ::close(m_ends[0]);
        ::close(m_ends[1]);
    }

    int end() const { return m_ends[1]; }

    /// Takes everything out, so that who waits goes on.
    void empty() const
    {
        char bytes[4096];
        ::fcntl(m_ends[0], F_SETFL, ::fcntl(m_ends[0], F_GETFL) | O_NONBLOCK);
        while (::read(m_ends[0], bytes, sizeof bytes) > 0) {
        }
    }

private:
    int m_ends[2];
};

/// A run whose output nobody reads any more.
class UnreadRun : public QProcess
{
protected:
    void setupChildProcess() override
    {
        int ends[2];
        if (::pipe(ends) != 0)
            ::_exit(1);
        ::close(ends[0]);
        ::dup2(ends[1], STDOUT_FILENO);
    }
};

/// A run that waits when it comes to print its summary. It is started with the signals as a terminal has
/// them, but for one that may be ignored.
class WaitingRun : public QProcess
{
public:
    explicit WaitingRun(int output, int ignored = 0)
        : m_output(output)
        , m_ignored(ignored)
    {
    }

protected:
    void setupChildProcess() override
    {
        ::dup2(m_output, STDOUT_FILENO);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP})
            std::signal(signal, SIG_DFL);
        if (m_ignored != 0)
            std::signal(m_ignored, SIG_IGN);
    }

private:
    int m_output;
    int m_ignored;
};

bool hasUnnamedFiles(const QString& folder)
{
    const int descriptor = ::open(qPrintable(folder), O_TMPFILE | O_WRONLY, 0600);
    return descriptor >= 0 && ::close(descriptor) == 0;
}

/// Whether a process has a file of the folder open that has no name.
bool holdsUnnamedFile(qint64 process, const QString& folder)
{
    const QDir descriptors(QString("/proc/%1/fd").arg(process));
    for (const QString& descriptor : descriptors.entryList(QDir::Files | QDir::System)) {
        if (QFile::symLinkTarget(descriptors.filePath(descriptor)).startsWith(folder + "/#"))
            return true;
    }
    return false;
}

} // namespace

/// How zorffc lives with what surrounds its process: streams, signals, a missing piece of Qt.
class TestZorffcProcess : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aClosedStreamDoesNotEndInTheFile_data();
    void aClosedStreamDoesNotEndInTheFile();
    void aReaderThatHasSeenEnoughIsNoError_data();
    void aReaderThatHasSeenEnoughIsNoError();
    void anEndedRunLeavesNothing_data();
    void anEndedRunLeavesNothing();
    void anIgnoredSignalStaysIgnored();
    void leftoversOfKilledRunsAreSwept_data();
    void leftoversOfKilledRunsAreSwept();
    void whatOnlyLooksLikeALeftoverStays();
    void aMissingPieceOfQtIsReported();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestZorffcProcess::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    writeFile(path("f.pgm"), pgm(2, 2, 255, {0, 200, 0, 200}));
    writeFile(path("f.ffc"), "what was there");
}

void TestZorffcProcess::aClosedStreamDoesNotEndInTheFile_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("input") << "exec \"$@\" <&-" << 0;
    QTest::newRow("output: the summary cannot be printed") << "exec \"$@\" >&-" << 2;
    QTest::newRow("errors") << "exec \"$@\" 2>&-" << 0;
    QTest::newRow("output and errors") << "exec \"$@\" >&- 2>&-" << 2;
    QTest::newRow("all") << "exec \"$@\" <&- >&- 2>&-" << 2;
}

void TestZorffcProcess::aClosedStreamDoesNotEndInTheFile()
{
    QFETCH(QString, line);
    QFETCH(int, exitCode);
    QCOMPARE(runZorffc(m_folder->path(), Compute).exitCode, 0);
    const QByteArray expected = exitCode == 0 ? readFile(path("f.ffc")) : QByteArray("what was there");
    writeFile(path("f.ffc"), "what was there");

    // The frame has a black column, so that a run which ends well has something to say on standard error.
    const ZorffcRun run = runShell(m_folder->path(), line, Compute);
    QVERIFY2(run.exitCode == exitCode, qPrintable(run.transcript()));
    QCOMPARE(readFile(path("f.ffc")), expected);
    QCOMPARE(namesIn(m_folder->path()), (QStringList{"f.ffc", "f.pgm"}));
}

void TestZorffcProcess::aReaderThatHasSeenEnoughIsNoError_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("the table of formats") << QStringList{"formats"} << 0;
    QTest::newRow("help") << QStringList{"compute", "--help"} << 0;
    QTest::newRow("version") << QStringList{"--version"} << 0;
    QTest::newRow("a summary without which no file is written") << Compute << 2;
}

void TestZorffcProcess::aReaderThatHasSeenEnoughIsNoError()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    UnreadRun run;
    run.setWorkingDirectory(m_folder->path());
    run.start(ZORFFC_PROGRAM, arguments);
    QVERIFY(run.waitForFinished(60000));
    const QByteArray message = run.readAllStandardError();
    QVERIFY2(run.exitStatus() == QProcess::NormalExit && run.exitCode() == exitCode, message.constData());
    QVERIFY2(message.isEmpty() == (exitCode == 0), message.constData());
    QCOMPARE(readFile(path("f.ffc")), QByteArray("what was there"));
    QCOMPARE(namesIn(m_folder->path()), (QStringList{"f.ffc", "f.pgm"}));
}

void TestZorffcProcess::anEndedRunLeavesNothing_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("an interrupt from the keyboard") << SIGINT;
    QTest::newRow("a request to end") << SIGTERM;
    QTest::newRow("a terminal that is gone") << SIGHUP;
    QTest::newRow("a kill, of which no process hears") << SIGKILL;
}

void TestZorffcProcess::anEndedRunLeavesNothing()
{
    QFETCH(int, signal);
    if (!hasUnnamedFiles(m_folder->path()))
        QSKIP("this file system has no files without a name");
    const FullPipe pipe;
    WaitingRun run(pipe.end());
    run.setWorkingDirectory(m_folder->path());
    run.start(ZORFFC_PROGRAM, Compute);
    QVERIFY(run.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(holdsUnnamedFile(run.processId(), m_folder->path()), 30000);
    QCOMPARE(namesIn(m_folder->path()), (QStringList{"f.ffc", "f.pgm"}));

    QCOMPARE(::kill(static_cast<pid_t>(run.processId()), signal), 0);
    QVERIFY(run.waitForFinished(60000));
    QCOMPARE(run.exitStatus(), QProcess::CrashExit);
    QCOMPARE(run.exitCode(), signal);
    QCOMPARE(namesIn(m_folder->path()), (QStringList{"f.ffc", "f.pgm"}));
    QCOMPARE(readFile(path("f.ffc")), QByteArray("what was there"));
}

void TestZorffcProcess::anIgnoredSignalStaysIgnored()
{
    if (!hasUnnamedFiles(m_folder->path()))
        QSKIP("this file system has no files without a name");
    const FullPipe pipe;
    WaitingRun run(pipe.end(), SIGHUP);
    run.setWorkingDirectory(m_folder->path());
    run.start(ZORFFC_PROGRAM, Compute);
    QVERIFY(run.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(holdsUnnamedFile(run.processId(), m_folder->path()), 30000);

    QCOMPARE(::kill(static_cast<pid_t>(run.processId()), SIGHUP), 0);
    pipe.empty();
    QVERIFY(run.waitForFinished(60000));
    QCOMPARE(run.exitStatus(), QProcess::NormalExit);
    QCOMPARE(run.exitCode(), 0);
    QCOMPARE(namesIn(m_folder->path()), (QStringList{"f.ffc", "f.pgm"}));
    QVERIFY(readFile(path("f.ffc")) != QByteArray("what was there"));
}

void TestZorffcProcess::leftoversOfKilledRunsAreSwept_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isLocked");
    QTest::addColumn<bool>("isSwept");
    QTest::newRow("a temporary file that nobody holds") << ".zorffc-12-0.tmp" << false << true;
    QTest::newRow("a temporary file of a run that goes on") << ".zorffc-12-0.tmp" << true << false;
    QTest::newRow("large numbers") << ".zorffc-4194304-999.tmp" << false << true;
    QTest::newRow("one number") << ".zorffc-12.tmp" << false << false;
    QTest::newRow("no number after the dash") << ".zorffc-12-.tmp" << false << false;
    QTest::newRow("no number before the dash") << ".zorffc--12.tmp" << false << false;
    QTest::newRow("three numbers") << ".zorffc-12-0-0.tmp" << false << false;
    QTest::newRow("words") << ".zorffc-my-notes.tmp" << false << false;
    QTest::newRow("another ending") << ".zorffc-12-0.txt" << false << false;
    QTest::newRow("more after the ending") << ".zorffc-12-0.tmp.bak" << false << false;
    QTest::newRow("another beginning") << "zorffc-12-0.tmp" << false << false;
    QTest::newRow("next to nothing") << ".zorffc-.tmp" << false << false;
    QTest::newRow("beginning and ending in one") << ".zorffc-tmp" << false << false;
}

void TestZorffcProcess::leftoversOfKilledRunsAreSwept()
{
    QFETCH(QString, name);
    QFETCH(bool, isLocked);
    QFETCH(bool, isSwept);
    QFile leftover(path(name));
    QVERIFY(leftover.open(QIODevice::WriteOnly));
    if (isLocked)
        QCOMPARE(::flock(leftover.handle(), LOCK_EX), 0);

    const ZorffcRun run = runZorffc(m_folder->path(), Compute);
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    QCOMPARE(QFileInfo::exists(path(name)), !isSwept);
    QCOMPARE(namesIn(m_folder->path()).size(), isSwept ? 2 : 3);
}

void TestZorffcProcess::whatOnlyLooksLikeALeftoverStays()
{
    const QString name = ".zorffc-12-%1.tmp";
    QVERIFY(QFile::link("f.pgm", path(name.arg(0))));
    QVERIFY(QDir(m_folder->path()).mkdir(name.arg(1)));
    QCOMPARE(::mkfifo(qPrintable(path(name.arg(2))), 0600), 0);
    // A pipe that somebody reads can be opened.
    const int reader = ::open(qPrintable(path(name.arg(2))), O_RDONLY | O_NONBLOCK);
    const QStringList before = namesIn(m_folder->path());
    const ZorffcRun run = runZorffc(m_folder->path(), Compute);
    ::close(reader);
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    QCOMPARE(namesIn(m_folder->path()), before);
}

void TestZorffcProcess::aMissingPieceOfQtIsReported()
{
    // A copy of the program that looks for Qt's plug-ins where there are none.
    QVERIFY(QFile::copy(ZORFFC_PROGRAM, path("zorffc")));
    writeFile(path("qt.conf"), "[Paths]\nPlugins=nowhere\n");
    QCOMPARE(runZorffc(m_folder->path(), Compute).exitCode, 0);
    const QStringList before = namesIn(m_folder->path());

    QProcess run;
    run.setWorkingDirectory(m_folder->path());
    run.start(path("zorffc"), {"report", "f.pgm", "--ffc", "f.ffc", "-o", "f.png"});
    QVERIFY(run.waitForFinished(60000));
    const QByteArray message = run.readAllStandardError();
    QVERIFY2(run.exitStatus() == QProcess::NormalExit && run.exitCode() == 2, message.constData());
    QVERIFY2(message.startsWith("zorffc: ") && message.contains("platform plugin") &&
                 message.count('\n') == 1,
             message.constData());
    QCOMPARE(namesIn(m_folder->path()), before);
}

QTEST_GUILESS_MAIN(TestZorffcProcess)
#include "tst_zorffc_process.moc"
