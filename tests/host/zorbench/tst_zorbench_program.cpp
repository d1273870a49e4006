#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>
#include <fstream>

/// The built program, as its user starts it.
class TestZorbenchProgram : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void helpAndVersionEndWell_data();
    void helpAndVersionEndWell();
    void wrongUseEndsWith2AndOneLine_data();
    void wrongUseEndsWith2AndOneLine();
    void aNameThatIsNoTextIsRefused();
    void helpThatCannotBeToldIsAnError();
    void framesOfTheCallersFolderAreOpened();

private:
    /// Starts the program in the folder of the test, with settings of its own.
    void start(QProcess& process, const QStringList& arguments) const;
    /// Likewise by a command of a shell, which passes any bytes on. "$0" is the program.
    void startByShell(QProcess& process, const QString& command) const;
    void prepare(QProcess& process) const;

    QTemporaryDir m_folder;
};

void TestZorbenchProgram::initTestCase()
{
    QVERIFY(QDir(m_folder.path()).mkpath("frames"));
    for (const char* name : {"a.pgm", "frames/b\u00e4.pgm"}) {
        std::ofstream file(m_folder.path().toStdString() + '/' + name);
        QVERIFY(file << "P5 2 1 255 AB");
    }
    QFile empty(m_folder.filePath("empty.pgm"));
    QVERIFY(empty.open(QIODevice::WriteOnly));
}

void TestZorbenchProgram::prepare(QProcess& process) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_CONFIG_HOME", m_folder.filePath("config"));
    environment.insert("LC_ALL", "C.UTF-8");
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_folder.path());
}

void TestZorbenchProgram::start(QProcess& process, const QStringList& arguments) const
{
    prepare(process);
    process.start(ZORBENCH_PROGRAM, arguments);
}

void TestZorbenchProgram::startByShell(QProcess& process, const QString& command) const
{
    prepare(process);
    process.start("sh", {"-c", "exec " + command, ZORBENCH_PROGRAM});
}

void TestZorbenchProgram::helpAndVersionEndWell_data()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QString>("says");
    QTest::newRow("help names the option") << "--help"
                                           << "--plugins DIR";
    QTest::newRow("help names the pictures") << "--help"
                                             << "PGM, PPM, PNG or TIFF";
    QTest::newRow("short help") << "-h"
                                << "FRAME";
    QTest::newRow("version") << "--version"
                             << "zorbench " ZOR_VERSION "\n";
}

void TestZorbenchProgram::helpAndVersionEndWell()
{
    QFETCH(QString, argument);
    QFETCH(QString, says);
    QProcess process;
    // Without any screen.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "none of these");
    process.setProcessEnvironment(environment);
    process.start(ZORBENCH_PROGRAM, {argument});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    const QString out = process.readAllStandardOutput();
    QVERIFY2(out.contains(says), qPrintable(out));
    QCOMPARE(process.readAllStandardError(), QByteArray());
}

void TestZorbenchProgram::wrongUseEndsWith2AndOneLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("says");
    QTest::newRow("an unknown option")
        << QStringList{"--fast"} << "not expected: --fast; see zorbench --help";
    QTest::newRow("an option without its value") << QStringList{"--plugins"} << "; see zorbench --help";
    QTest::newRow("a file that is not there") << QStringList{"no.pgm"} << "no.pgm: there is no such file; ";
    QTest::newRow("a second file that is not there")
        << QStringList{"a.pgm", "no.pgm"} << "no.pgm: there is no such file; ";
    QTest::newRow("a folder") << QStringList{"frames"} << "frames: is a folder; ";
    QTest::newRow("an empty file") << QStringList{"empty.pgm"} << "empty.pgm: is empty; ";
    QTest::newRow("a name that is none") << QStringList{""} << "a FRAME has no name";
    QTest::newRow("a name of two lines") << QStringList{"no\nfile"} << "no file: there is no such file; ";
    QTest::newRow("a folder of plug-ins that is not there")
        << QStringList{"--plugins", "nowhere"} << "nowhere: there is no such folder; check --plugins";
    QTest::newRow("a file in place of that folder")
        << QStringList{"--plugins", "a.pgm"} << "a.pgm: there is no such folder; check --plugins";
    QTest::newRow("no folder of plug-ins")
        << QStringList{"--plugins", ""} << ": there is no such folder; check --plugins";
}

void TestZorbenchProgram::wrongUseEndsWith2AndOneLine()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, says);
    QProcess process;
    start(process, arguments);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 2);
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
    const QString error = process.readAllStandardError();
    QVERIFY2(error.startsWith("zorbench: ") && error.endsWith('\n') && error.count('\n') == 1,
             qPrintable(error));
    QVERIFY2(error.contains(says), qPrintable(error));
}

// There is no file of the name that it would be taken for.
void TestZorbenchProgram::aNameThatIsNoTextIsRefused()
{
    const std::string name = m_folder.path().toStdString() + "/b\xFF.pgm";
    QVERIFY(std::ofstream(name) << "P5 2 1 255 AB");
    const auto remove = qScopeGuard([&name] { std::remove(name.c_str()); });
    QProcess process;
    startByShell(process, "\"$0\" a.pgm \"$(printf 'b\\377.pgm')\"");
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 2);
    QCOMPARE(
        process.readAllStandardError(),
        QByteArray("zorbench: b\xFF.pgm: the name is no text in the character set of this locale; rename "
                   "the file\n"));
}

void TestZorbenchProgram::helpThatCannotBeToldIsAnError()
{
    QProcess process;
    process.setStandardOutputFile("/dev/full");
    process.start(ZORBENCH_PROGRAM, {"--help"});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 2);
    QVERIFY(process.readAllStandardError().contains("standard output cannot be written"));
}

// The settings tell what was opened, by its whole name.
void TestZorbenchProgram::framesOfTheCallersFolderAreOpened()
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    startByShell(process, "\"$0\" a.pgm \"$(printf 'frames/b\\303\\244.pgm')\"");
    const QString settings = m_folder.filePath("config/ZorBench/zorbench.conf");
    const QString first = QFileInfo(m_folder.filePath("a.pgm")).canonicalFilePath();
    const QString second = QFileInfo(first).path() + QString::fromUtf8("/frames/b\u00e4.pgm");
    const auto opened = [&] {
        return QSettings(settings, QSettings::IniFormat).value("RecentFiles").toStringList();
    };
    QTRY_COMPARE_WITH_TIMEOUT(opened(), (QStringList{first, second}), 60000);
    QCOMPARE(process.state(), QProcess::Running);
    process.kill();
    QVERIFY(process.waitForFinished());
}

QTEST_GUILESS_MAIN(TestZorbenchProgram)
#include "tst_zorbench_program.moc"
