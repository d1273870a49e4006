#include "tests/host/ZorffcRun.h"

#include <QTemporaryDir>
#include <QtTest>

class TestZorffcUsage : public QObject
{
    Q_OBJECT

private slots:
    void helpAndVersionEndWell_data();
    void helpAndVersionEndWell();
    void wrongUseEndsWith2AndOneLine_data();
    void wrongUseEndsWith2AndOneLine();
    void helpThatCannotBeWrittenIsAnError();

private:
    QTemporaryDir m_folder;
};

void TestZorffcUsage::helpAndVersionEndWell_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("names");
    QTest::newRow("help names the commands") << QStringList{"--help"} << "simulate";
    QTest::newRow("short help") << QStringList{"-h"} << "report";
    QTest::newRow("version") << QStringList{"--version"} << "zorffc ";
    QTest::newRow("help of compute") << QStringList{"compute", "--help"} << "--precision";
    QTest::newRow("help of compute says what the target does")
        << QStringList{"compute", "--help"}
        << "Aim at V times the mean of the brightest column, then of the brightest row, so at V * V times "
           "the "
           "level (default 1)";
    QTest::newRow("help of compute names formats") << QStringList{"compute", "--help"} << "--format NAME";
    QTest::newRow("help of simulate") << QStringList{"simulate", "--help"} << "--vignetting";
    QTest::newRow("help of convert") << QStringList{"convert", "--help"} << "--packed-order";
    QTest::newRow("help of simulate names formats") << QStringList{"simulate", "--help"} << "--format NAME";
    QTest::newRow("help of formats") << QStringList{"formats", "--help"} << "  TEXT      ";
    QTest::newRow("help of convert names its files")
        << QStringList{"convert", "--help"} << "OUT FILE REQUIRED";
    QTest::newRow("help of report") << QStringList{"report", "--help"} << "--ffc";
}

void TestZorffcUsage::helpAndVersionEndWell()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, names);
    const ZorffcRun run = runZorffc(m_folder.path(), arguments);
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    QVERIFY2(run.out.contains(names), qPrintable(run.transcript()));
    QCOMPARE(run.err, QString());
}

void TestZorffcUsage::wrongUseEndsWith2AndOneLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("names");
    QTest::newRow("nothing") << QStringList{}
                             << "no command; name one: compute, report, convert, formats or simulate";
    const QString list = "; name one: compute, report, convert, formats or simulate; see zorffc --help\n";
    QTest::newRow("an unknown command") << QStringList{"compile"} << "unknown command 'compile'" + list;
    QTest::newRow("the beginning of a command") << QStringList{"comp"} << "unknown command 'comp'" + list;
    QTest::newRow("a command in capital letters")
        << QStringList{"Compute"} << "unknown command 'Compute'" + list;
    QTest::newRow("an unknown command with arguments")
        << QStringList{"comp", "f.pgm", "--help"} << "unknown command 'comp'" + list;
    QTest::newRow("a dash") << QStringList{"-"} << "unknown command '-'" + list;
    QTest::newRow("two dashes") << QStringList{"--"} << "no command" + list;
    QTest::newRow("an unknown option") << QStringList{"--fast"} << "not expected: --fast; see zorffc --help";
    QTest::newRow("an unknown letter") << QStringList{"-x"} << "not expected: -x; see zorffc --help";
    QTest::newRow("an empty word") << QStringList{""} << "unknown command ''" + list;
    QTest::newRow("a word of two lines") << QStringList{"com\npute"} << "unknown command 'com pute'" + list;
    QTest::newRow("two commands, of which the second is a word of the first")
        << QStringList{"formats", "simulate"} << "TEXT: no pixel format has 'simulate'";
    QTest::newRow("two commands with what each needs")
        << QStringList{"formats", "mono12", "simulate", "-o", "f.pgm"} << "not expected: ";
    QTest::newRow("compute without anything") << QStringList{"compute"} << "zorffc compute --help";
    QTest::newRow("simulate without an output") << QStringList{"simulate"} << "--output";
    QTest::newRow("report without a coefficient file")
        << QStringList{"report", "f.pgm", "-o", "f.png"} << "--ffc";
    QTest::newRow("an option without its value") << QStringList{"simulate", "-o"} << "--output";
}

void TestZorffcUsage::wrongUseEndsWith2AndOneLine()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, names);
    const ZorffcRun run = runZorffc(m_folder.path(), arguments);
    QVERIFY2(run.exitCode == 2, qPrintable(run.transcript()));
    QCOMPARE(run.out, QString());
    QVERIFY2(run.err.startsWith("zorffc: ") && run.err.endsWith('\n') && run.err.count('\n') == 1,
             qPrintable(run.transcript()));
    QVERIFY2(run.err.contains(names), qPrintable(run.transcript()));
}

void TestZorffcUsage::helpThatCannotBeWrittenIsAnError()
{
    const ZorffcRun run = runShell(m_folder.path(), "exec \"$@\" >/dev/full", {"--help"});
    QVERIFY2(run.exitCode == 2, qPrintable(run.transcript()));
    QVERIFY2(run.err.contains("standard output"), qPrintable(run.transcript()));
}

QTEST_GUILESS_MAIN(TestZorffcUsage)
#include "tst_zorffc_usage.moc"
