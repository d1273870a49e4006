#include "tests/host/LesserSystem.h"
#include "tests/host/ZorffcRun.h"

#include "host/zorffc/AtomicFile.h"
#include "host/zorffc/CommandError.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace zor;

namespace {

/// The temporary name with this number that a process takes.
QString temporaryName(int number, qint64 process = ::getpid())
{
    return QString(".zorffc-%1-%2.tmp").arg(process).arg(number);
}

} // namespace

Q_DECLARE_METATYPE(LesserSystem)

/// Files that appear whole or not at all, on systems that have less than others.
class TestAtomicFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void theTargetChangesWithTheCommit_data();
    void theTargetChangesWithTheCommit();
    void nothingStaysWithoutACommit_data();
    void nothingStaysWithoutACommit();
    void anEndedProcessLeavesWhatTheNextOneSweeps_data();
    void anEndedProcessLeavesWhatTheNextOneSweeps();
    void anotherRunSweepsNoFileInTheMaking_data();
    void anotherRunSweepsNoFileInTheMaking();
    void aFileThatIsSweptBeforeItsLockIsMadeAnew();
    void aFileThatASweeperHasLockedIsMadeAnew();
    void withoutLocksNothingIsSwept();
    void takenNamesArePassedOver_data();
    void takenNamesArePassedOver();
    void aFileOfAnotherOfThisNameIsLeftAlone();
    void aFailureKeepsTheTarget_data();
    void aFailureKeepsTheTarget();
    void aFileSystemThatCannotSyncIsNotWaitedFor_data();
    void aFileSystemThatCannotSyncIsNotWaitedFor();
    void aWriteMayTakeItsTime();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    QStringList names() const { return namesIn(m_folder->path()); }
    std::string target() const { return path("f").toStdString(); }
    /// Writes and commits the target; what it is refused for, else empty.
    QString save(const std::string& content = "new") const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

QString TestAtomicFile::save(const std::string& content) const
{
    try {
        AtomicFile file(target());
        file.write(content);
        file.commit();
        return {};
    } catch (const CommandError& error) {
        return QString::fromStdString(error.what());
    }
}

void TestAtomicFile::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    writeFile(path("f"), "what was there");
}

void TestAtomicFile::cleanup()
{
    lesserSystem() = {};
}

void TestAtomicFile::theTargetChangesWithTheCommit_data()
{
    QTest::addColumn<bool>("hasUnnamedFiles");
    QTest::addColumn<bool>("hasProc");
    QTest::addColumn<QStringList>("inTheMaking");
    const QStringList seen{temporaryName(0), "f"};
    QTest::newRow("a file without a name") << true << true << QStringList{"f"};
    QTest::newRow("a system without such files") << false << true << seen;
    QTest::newRow("a system that could not give it a name") << true << false << seen;
}

void TestAtomicFile::theTargetChangesWithTheCommit()
{
    QFETCH(bool, hasUnnamedFiles);
    QFETCH(bool, hasProc);
    QFETCH(QStringList, inTheMaking);
    lesserSystem().hasUnnamedFiles = hasUnnamedFiles;
    lesserSystem().hasProc = hasProc;
    AtomicFile file(target());
    file.write("new");
    QCOMPARE(names(), inTheMaking);
    QCOMPARE(readFile(path("f")), QByteArray("what was there"));
    file.commit();
    QCOMPARE(names(), QStringList{"f"});
    QCOMPARE(readFile(path("f")), QByteArray("new"));
}

void TestAtomicFile::nothingStaysWithoutACommit_data()
{
    QTest::addColumn<bool>("hasUnnamedFiles");
    QTest::newRow("a file without a name") << true;
    QTest::newRow("a file with a name") << false;
}

void TestAtomicFile::nothingStaysWithoutACommit()
{
    QFETCH(bool, hasUnnamedFiles);
    lesserSystem().hasUnnamedFiles = hasUnnamedFiles;
    AtomicFile(target()).write("new");
    QCOMPARE(names(), QStringList{"f"});
    QCOMPARE(readFile(path("f")), QByteArray("what was there"));
}

void TestAtomicFile::anEndedProcessLeavesWhatTheNextOneSweeps_data()
{
    QTest::addColumn<bool>("hasUnnamedFiles");
    QTest::addColumn<bool>("isCommitting");
    QTest::addColumn<int>("signal");
    QTest::addColumn<bool>("leaves");
    const auto add = [](const char* name, int signal, bool leaves) {
        QTest::addRow("%s while an unnamed file is made", name) << true << false << signal << false;
        QTest::addRow("%s while a named file is made", name) << false << false << signal << leaves;
        QTest::addRow("%s between link and rename", name) << true << true << signal << leaves;
        QTest::addRow("%s before the rename of a named file", name) << false << true << signal << leaves;
    };
    add("an interrupt", SIGINT, false);
    add("a request to end", SIGTERM, false);
    add("a lost terminal", SIGHUP, false);
    add("a kill", SIGKILL, true);
}

void TestAtomicFile::anEndedProcessLeavesWhatTheNextOneSweeps()
{
    QFETCH(bool, hasUnnamedFiles);
    QFETCH(bool, isCommitting);
    QFETCH(int, signal);
    QFETCH(bool, leaves);
    lesserSystem().hasUnnamedFiles = hasUnnamedFiles;
    const pid_t process = ::fork();
    if (process == 0) {
        std::signal(signal, SIG_DFL);
        lesserSystem().beforeRename = [signal] { ::raise(signal); };
        AtomicFile file(target());
        file.write("new");
        if (isCommitting)
            file.commit();
        else
            ::raise(signal);
        ::_exit(0);
    }
    int status = 0;
    QCOMPARE(::waitpid(process, &status, 0), process);
    QVERIFY2(WIFSIGNALED(status) && WTERMSIG(status) == signal, qPrintable(QString::number(status)));
    QCOMPARE(names(), leaves ? (QStringList{temporaryName(0, process), "f"}) : QStringList{"f"});
    QCOMPARE(readFile(path("f")), QByteArray("what was there"));

    QCOMPARE(save(), QString());
    QCOMPARE(names(), QStringList{"f"});
    QCOMPARE(readFile(path("f")), QByteArray("new"));
}

void TestAtomicFile::anotherRunSweepsNoFileInTheMaking_data()
{
    nothingStaysWithoutACommit_data();
}

void TestAtomicFile::anotherRunSweepsNoFileInTheMaking()
{
    QFETCH(bool, hasUnnamedFiles);
    lesserSystem().hasUnnamedFiles = hasUnnamedFiles;
    AtomicFile file(target());
    file.write("new");
    lesserSystem().beforeRename = [this] {
        QCOMPARE(names(), (QStringList{temporaryName(0), "f"}));
        AtomicFile other(path("other").toStdString());
        other.write("other");
        other.commit();
        QCOMPARE(names(), (QStringList{temporaryName(0), "f", "other"}));
    };
    file.commit();
    QCOMPARE(names(), (QStringList{"f", "other"}));
    QCOMPARE(readFile(path("f")), QByteArray("new"));
    QCOMPARE(readFile(path("other")), QByteArray("other"));
}

void TestAtomicFile::aFileThatIsSweptBeforeItsLockIsMadeAnew()
{
    lesserSystem().hasUnnamedFiles = false;
    lesserSystem().beforeLock = [this] { QVERIFY(QFile::remove(path(temporaryName(0)))); };
    QCOMPARE(save(), QString());
    QCOMPARE(names(), QStringList{"f"});
    QCOMPARE(readFile(path("f")), QByteArray("new"));
}

void TestAtomicFile::aFileThatASweeperHasLockedIsMadeAnew()
{
    lesserSystem().hasUnnamedFiles = false;
    QFile sweeper(path(temporaryName(0)));
    lesserSystem().beforeLock = [&sweeper] {
        QVERIFY(sweeper.open(QIODevice::ReadOnly));
        QCOMPARE(::flock(sweeper.handle(), LOCK_EX), 0);
    };
    AtomicFile file(target());
    file.write("new");
    QCOMPARE(names(), (QStringList{temporaryName(1), "f"}));
    file.commit();
    QCOMPARE(names(), QStringList{"f"});
    QCOMPARE(readFile(path("f")), QByteArray("new"));
}

void TestAtomicFile::withoutLocksNothingIsSwept()
{
    lesserSystem().lockError = ENOLCK;
    writeFile(path(temporaryName(7)), "perhaps in the making");
    for (const bool hasUnnamedFiles : {true, false}) {
        lesserSystem().hasUnnamedFiles = hasUnnamedFiles;
        writeFile(path("f"), "what was there");
        QCOMPARE(save(), QString());
        QCOMPARE(names(), (QStringList{temporaryName(7), "f"}));
        QCOMPARE(readFile(path("f")), QByteArray("new"));
    }
}

void TestAtomicFile::takenNamesArePassedOver_data()
{
    QTest::addColumn<bool>("hasUnnamedFiles");
    QTest::addColumn<int>("taken");
    QTest::addColumn<QString>("problem");
    QTest::newRow("all but the last of a hundred, a file without a name") << true << 99 << QString();
    QTest::newRow("all but the last of a hundred, a file with a name") << false << 99 << QString();
    QTest::newRow("all of a hundred, a file without a name")
        << true << 100 << "cannot be replaced: File exists; choose another file name";
    QTest::newRow("all of a hundred, a file with a name")
        << false << 100 << "cannot be written: File exists; choose another folder";
}

void TestAtomicFile::takenNamesArePassedOver()
{
    QFETCH(bool, hasUnnamedFiles);
    QFETCH(int, taken);
    QFETCH(QString, problem);
    lesserSystem().hasUnnamedFiles = hasUnnamedFiles;
    // Folders, which nobody sweeps.
    for (int number = 0; number < taken; ++number)
        QVERIFY(QDir(m_folder->path()).mkdir(temporaryName(number)));
    QCOMPARE(save(), problem.isEmpty() ? problem : path("f: ") + problem);
    QCOMPARE(readFile(path("f")), QByteArray(problem.isEmpty() ? "new" : "what was there"));
    QCOMPARE(names().size(), taken + 1);
}

void TestAtomicFile::aFileOfAnotherOfThisNameIsLeftAlone()
{
    const QString name = path(temporaryName(0));
    int another = -1;
    lesserSystem().hasUnnamedFiles = false;
    // At the last moment, when the name has been found free.
    lesserSystem().beforeMake = [&] {
        writeFile(name, "of another");
        another = ::open(name.toLocal8Bit().constData(), O_RDONLY | O_CLOEXEC);
        QCOMPARE(::flock(another, LOCK_EX | LOCK_NB), 0);
    };
    QCOMPARE(save(), QString());
    QVERIFY(another >= 0);
    ::close(another);
    QCOMPARE(readFile(path("f")), QByteArray("new"));
    QCOMPARE(readFile(name), QByteArray("of another"));
}

void TestAtomicFile::aFailureKeepsTheTarget_data()
{
    QTest::addColumn<LesserSystem>("system");
    QTest::addColumn<QString>("problem");
    LesserSystem noPermission;
    noPermission.mayWrite = false;
    QTest::newRow("a file that may not be written")
        << noPermission << "may not be written; change its permissions or give another file name";
    LesserSystem noLink;
    noLink.linkError = EPERM;
    QTest::newRow("no link to a file without a name")
        << noLink << "cannot be replaced: Operation not permitted; choose another file name";
    LesserSystem noRename;
    noRename.renameError = EACCES;
    QTest::newRow("no rename of a file without a name")
        << noRename << "cannot be replaced: Permission denied; choose another file name";
    noRename.hasUnnamedFiles = false;
    QTest::newRow("no rename of a file with a name")
        << noRename << "cannot be replaced: Permission denied; choose another file name";
    LesserSystem noSync;
    noSync.syncError = EIO;
    QTest::newRow("no way to the disk")
        << noSync << "cannot be written: Input/output error; make room or choose another folder";
}

void TestAtomicFile::aFailureKeepsTheTarget()
{
    QFETCH(LesserSystem, system);
    QFETCH(QString, problem);
    lesserSystem() = system;
    QCOMPARE(save(), path("f: ") + problem);
    QCOMPARE(names(), QStringList{"f"});
    QCOMPARE(readFile(path("f")), QByteArray("what was there"));
}

void TestAtomicFile::aFileSystemThatCannotSyncIsNotWaitedFor_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("no such thing here") << EINVAL;
    QTest::newRow("not supported") << ENOTSUP;
}

void TestAtomicFile::aFileSystemThatCannotSyncIsNotWaitedFor()
{
    QFETCH(int, error);
    lesserSystem().syncError = error;
    QCOMPARE(save(), QString());
    QCOMPARE(readFile(path("f")), QByteArray("new"));
}

void TestAtomicFile::aWriteMayTakeItsTime()
{
    lesserSystem().longestWrite = 3;
    QCOMPARE(save("content of more than three bytes"), QString());
    QCOMPARE(readFile(path("f")), QByteArray("content of more than three bytes"));
}

QTEST_GUILESS_MAIN(TestAtomicFile)
#include "tst_atomic_file.moc"
