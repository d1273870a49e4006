#include "tests/host/ZorffcRun.h"
#include "tests/reference/ExpectedFormats.h"

#include <QTemporaryDir>
#include <QtTest>

/// The table of the pixel formats as a user reads it.
class TestZorffcFormats : public QObject
{
    Q_OBJECT

private slots:
    void allFormatsAreInTheirOrder();
    void aLineDescribesAFormat_data();
    void aLineDescribesAFormat();
    void everyColumnHasItsPlace();
    void aTextChoosesByNameOrFamily_data();
    void aTextChoosesByNameOrFamily();
    void wrongUseIsReported_data();
    void wrongUseIsReported();
    void aTableThatCannotBeWrittenIsAnError();

private:
    ZorffcRun formats(const QStringList& arguments = {}) const
    {
        return runZorffc(m_folder.path(), QStringList{"formats"} + arguments);
    }
    /// The lines below the heading.
    static QStringList rows(const ZorffcRun& run)
    {
        return run.out.split('\n').mid(1, run.out.count('\n') - 1);
    }

    QTemporaryDir m_folder;
};

void TestZorffcFormats::allFormatsAreInTheirOrder()
{
    const ZorffcRun run = formats();
    QVERIFY2(run.exitCode == 0 && run.err.isEmpty(), qPrintable(run.transcript()));
    const QStringList lines = rows(run);
    QCOMPARE(lines.size(), int(expectedFormats().size()));
    QSet<QString> names;
    for (int i = 0; i < lines.size(); ++i) {
        const QStringList words = lines[i].simplified().split(' ');
        QVERIFY2(words.size() >= 10, qPrintable(lines[i]));
        QCOMPARE(words[0], QString::number(i + 1));
        // A code's low byte is the row, its third byte the bits.
        const uint code = words[2].toUInt(nullptr, 16);
        QCOMPARE(int(code & 0xFF), i + 1);
        QCOMPARE(words[5], QString::number(code >> 16 & 0xFF));
        names.insert(words[1]);
    }
    QCOMPARE(names.size(), int(expectedFormats().size()));
    QCOMPARE(namesIn(m_folder.path()), QStringList());
}

void TestZorffcFormats::aLineDescribesAFormat_data()
{
    QTest::addColumn<QString>("line");
    for (const char* line : {
             "1 Mono8 0x01080101 Mono 8 8 unpacked 1 Mono8 Y",
             "4 Mono10Packed 0x010C1204 Mono 10 12 packed 1 Mono10 Y",
             "7 Mono12p 0x010C2307 Mono 10 12 p 1 Mono10 Y",
             "10 Mono14 0x0110040A Mono 14 16 unpacked 1 Mono8 Y",
             "25 BayerGR10p 0x030A2219 Bayer 10 10 p 1 Mono10 G R G2 B",
             "48 BayerBG16 0x03100530 Bayer 16 16 unpacked 1 Mono16 B G R G2",
             "65 TrueSense_BGGR_WBBW_0_10 0x04100241 TrueSense 10 16 unpacked 1 Mono10 "
             "W B W G B W G W W G W R G W R W",
             "116 BGRa8 0x02200174 RGB 8 32 unpacked 4 Mono8 B G R A",
             "126 RGB_10_FLEX_Packed 0x0220327E RGB 10 32 flex 3 Mono10 R G B",
             "133 YCbCr422_8 0x05100185 YUV 8 16 unpacked 3 Mono8 Y Cb Y Cr",
         })
        QTest::newRow(line) << QString(line);
}

void TestZorffcFormats::aLineDescribesAFormat()
{
    QFETCH(QString, line);
    QStringList lines;
    for (const QString& row : rows(formats()))
        lines.append(row.simplified());
    QVERIFY2(lines.contains(line), qPrintable(lines.join('\n')));
}

void TestZorffcFormats::everyColumnHasItsPlace()
{
    const QStringList lines = formats().out.split('\n');
    QCOMPARE(lines[0], QString("row  name                      code        family     depth  bits  packing   "
                               "channels  target  layout"));
    QCOMPARE(lines[8], QString("  8  Mono12Packed              0x010C1308  Mono          12    12  packed    "
                               "       1  Mono12  Y"));
    const int code = lines[0].indexOf("code");
    const int layout = lines[0].indexOf("layout");
    for (const QString& line : lines.mid(1, int(expectedFormats().size()))) {
        QVERIFY2(line.mid(code - 2, 4) == "  0x", qPrintable(line));
        QVERIFY2(line.mid(layout - 2, 2) == "  " && line[layout] != ' ', qPrintable(line));
    }
}

void TestZorffcFormats::aTextChoosesByNameOrFamily_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("first");
    QTest::newRow("a name") << "Mono12Packed" << 1 << "Mono12Packed";
    QTest::newRow("a family") << "Bayer" << 36 << "BayerGR8";
    QTest::newRow("a family in small letters finds names without it") << "yuv" << 6 << "YUV422_8_UYVY";
    QTest::newRow("a name in small letters") << "ycbcr" << 1 << "YCbCr422_8";
    QTest::newRow("part of many names") << "12p" << 10 << "Mono12p";
    QTest::newRow("no text chooses all") << "" << int(expectedFormats().size()) << "Mono8";
}

void TestZorffcFormats::aTextChoosesByNameOrFamily()
{
    QFETCH(QString, text);
    QFETCH(int, count);
    QFETCH(QString, first);
    const ZorffcRun run = formats({text});
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    QVERIFY2(run.out.startsWith("row  name"), qPrintable(run.out));
    QVERIFY2(rows(run).size() == count, qPrintable(run.out));
    QCOMPARE(rows(run).first().simplified().split(' ')[1], first);
}

void TestZorffcFormats::wrongUseIsReported_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("names");
    QTest::newRow("a text that no format has")
        << QStringList{"Mono99"} << "TEXT: no pixel format has 'Mono99' in its name or family; leave it out";
    QTest::newRow("two texts") << QStringList{"Mono", "Bayer"} << "Bayer";
    QTest::newRow("an option of other commands") << QStringList{"--format", "Mono8"} << "--format";
}

void TestZorffcFormats::wrongUseIsReported()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, names);
    const ZorffcRun run = formats(arguments);
    QVERIFY2(run.exitCode == 2 && run.out.isEmpty(), qPrintable(run.transcript()));
    QVERIFY2(run.err.startsWith("zorffc: ") && run.err.count('\n') == 1, qPrintable(run.transcript()));
    QVERIFY2(run.err.contains(names), qPrintable(run.transcript()));
}

void TestZorffcFormats::aTableThatCannotBeWrittenIsAnError()
{
    const ZorffcRun run = runShell(m_folder.path(), "exec \"$@\" >/dev/full", {"formats"});
    QVERIFY2(run.exitCode == 2, qPrintable(run.transcript()));
    QVERIFY2(run.err.contains("standard output cannot be written"), qPrintable(run.transcript()));
}

QTEST_GUILESS_MAIN(TestZorffcFormats)
#include "tst_zorffc_formats.moc"
