#include "tests/host/ZorffcRun.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

/// Runs a shell line in which "$@" is zorffc and $name what printf makes of the text.
ZorffcRun runWithName(const QString& folder, const QString& line, const QString& text)
{
    return runShell(folder, "name=$(printf '" + text + "'); " + line, {});
}

} // namespace

/// File names with characters that a terminal would obey, as they are shown.
class TestZorffcNames : public QObject
{
    Q_OBJECT

private slots:
    void controlCharactersAreShownAsBlanks_data();
    void controlCharactersAreShownAsBlanks();
    void everyCommandCleansTheNameOfItsOutput_data();
    void everyCommandCleansTheNameOfItsOutput();
};

void TestZorffcNames::controlCharactersAreShownAsBlanks_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    QTest::newRow("a line break") << "a\\nb"
                                  << "a b";
    QTest::newRow("an escape sequence") << "a\\033[31mb"
                                        << "a [31mb";
    QTest::newRow("the last code below blank") << "a\\037b"
                                               << "a b";
    QTest::newRow("DEL") << "a\\177b"
                         << "a b";
    QTest::newRow("the first of C1") << "a\\302\\200b"
                                     << "a b";
    QTest::newRow("CSI of C1") << "a\\302\\23331mb"
                               << "a 31mb";
    QTest::newRow("the last of C1") << "a\\302\\237b"
                                    << "a b";
    QTest::newRow("CSI as a single byte, which is no UTF-8") << "a\\233b"
                                                             << QString::fromUtf8("a\xEF\xBF\xBD"
                                                                                  "b");
    QTest::newRow("letters beyond ASCII stay")
        << "\\303\\251\\304\\233\\302\\240~" << QString::fromUtf8("é\xC4\x9B\xC2\xA0~");
}

void TestZorffcNames::controlCharactersAreShownAsBlanks()
{
    QFETCH(QString, name);
    QFETCH(QString, shown);
    const QTemporaryDir folder;
    const ZorffcRun summary =
        runWithName(folder.path(), "exec \"$@\" simulate --size 2x2 -o \"$name.pgm\"", name);
    QVERIFY2(summary.exitCode == 0, qPrintable(summary.transcript()));
    QVERIFY2(summary.out.endsWith("\nFile             " + shown + ".pgm\n"),
             qPrintable(summary.transcript()));
    QCOMPARE(summary.out.count('\n'), 3);

    const ZorffcRun error = runWithName(folder.path(), "exec \"$@\" convert \"$name\" f.png", name);
    QVERIFY2(error.exitCode == 2, qPrintable(error.transcript()));
    QVERIFY2(error.err.startsWith("zorffc: " + shown + ": there is no such file"),
             qPrintable(error.transcript()));

    const ZorffcRun warning = runWithName(
        folder.path(),
        "printf 'P2 2 1 255 0 0' > \"$name\"; exec \"$@\" compute \"$name\" --title T --camera C -o f.ffc",
        name);
    QVERIFY2(warning.err.startsWith("zorffc: warning: " + shown + ": the frame is black"),
             qPrintable(warning.transcript()));
}

void TestZorffcNames::everyCommandCleansTheNameOfItsOutput_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("shown");
    QTest::newRow("compute") << "exec \"$@\" compute f.pgm --title T --camera C -o \"$name.ffc\""
                             << "File             a b.ffc: 2 column and";
    QTest::newRow("convert") << "exec \"$@\" convert f.pgm \"$name.png\""
                             << "Picture          a b.png";
    QTest::newRow("report") << "exec \"$@\" report f.pgm --ffc f.ffc -o \"$name.png\""
                            << "Picture          a b.png";
    QTest::newRow("simulate") << "exec \"$@\" simulate --size 2x2 --format Mono8 -o \"$name.raw\""
                              << "File             a b.raw, to be read with";
}

void TestZorffcNames::everyCommandCleansTheNameOfItsOutput()
{
    QFETCH(QString, line);
    QFETCH(QString, shown);
    const QTemporaryDir folder;
    writeFile(folder.filePath("f.pgm"), pgm(2, 1, 255, {100, 200}));
    writeFile(folder.filePath("f.ffc"), ":Header,\nT,\nC,\ndate 1/02/26,\n:Table,\n1,512\n2,256\n"
                                        ":FFC_Y start,\n1,256\n");
    const ZorffcRun run = runWithName(folder.path(), line, "a\\033b");
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    QVERIFY2(run.out.contains('\n' + shown) && !run.out.contains('\033'), qPrintable(run.transcript()));
}

QTEST_GUILESS_MAIN(TestZorffcNames)
#include "tst_zorffc_names.moc"
