#include "tests/host/ZorffcRun.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

/// Switches every source of unevenness off.
const QStringList Even{"--vignetting", "0", "--column-fpn", "0", "--row-fpn",      "0",
                       "--prnu",       "0", "--dark-noise", "0", "--no-shot-noise"};

} // namespace

class TestZorffcSimulate : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aFrameWithoutNoiseIsTheModelsNumber_data();
    void aFrameWithoutNoiseIsTheModelsNumber();
    void theSeedDecidesTheFrame();
    void aFormatMakesADump_data();
    void aFormatMakesADump();
    void theDumpHoldsThePgmsSamples();
    void theSummarySaysHowToReadADump();
    void computeMakesASampleFlat();
    void theSystemGainIsReportedWithItsDigits();
    void refusesBadSettings_data();
    void refusesBadSettings();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    ZorffcRun simulate(const QString& output, const QStringList& options) const
    {
        return runZorffc(m_folder->path(), QStringList{"simulate", "--output", output} + options);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestZorffcSimulate::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void TestZorffcSimulate::aFrameWithoutNoiseIsTheModelsNumber_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("maxval");
    QTest::addColumn<int>("sample");
    QTest::newRow("8 bits, 40 % of 255") << QStringList{"--depth", "8", "--level", "40"} << 255 << 102;
    QTest::newRow("10 bits, 25.5 % of 1023 is 260.865")
        << QStringList{"--depth", "10", "--level", "25.5"} << 1023 << 261;
    QTest::newRow("12 bits are the default, 70 % of 4095 is 2866.5, next up")
        << QStringList{"--full-well", "4095"} << 4095 << 2867;
    QTest::newRow("16 bits, 20 % of 65535")
        << QStringList{"--depth", "16", "--level", "20"} << 65535 << 13107;
    QTest::newRow("light beyond saturation") << QStringList{"--depth", "8", "--level", "101"} << 255 << 255;
    QTest::newRow("no light") << QStringList{"--depth", "8", "--level", "0"} << 255 << 0;
    QTest::newRow("no light above a black level")
        << QStringList{"--depth", "8", "--level", "0", "--black-level", "16"} << 255 << 16;
    QTest::newRow("a black level shortens the scale: 55 + 40 % of 200")
        << QStringList{"--depth", "8", "--level", "40", "--black-level", "55"} << 255 << 135;
}

void TestZorffcSimulate::aFrameWithoutNoiseIsTheModelsNumber()
{
    QFETCH(QStringList, options);
    QFETCH(int, maxval);
    QFETCH(int, sample);
    const ZorffcRun run = simulate("f.pgm", Even + QStringList{"--size", "5x3"} + options);
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    QCOMPARE(run.err, QString());
    QVERIFY2(run.out.startsWith("Frame            5 x 3 pixels"), qPrintable(run.transcript()));
    QCOMPARE(readFile(path("f.pgm")), pgm(5, 3, maxval, std::vector<std::uint16_t>(15, sample)));
    QCOMPARE(namesIn(m_folder->path()), QStringList{"f.pgm"});
}

void TestZorffcSimulate::theSeedDecidesTheFrame()
{
    const QStringList small{"--size", "64x48", "--dsnu", "3"};
    QCOMPARE(simulate("default.pgm", small).exitCode, 0);
    QCOMPARE(simulate("one.pgm", small + QStringList{"--seed", "1"}).exitCode, 0);
    QCOMPARE(simulate("two.pgm", small + QStringList{"--seed", "2"}).exitCode, 0);
    const QByteArray one = readFile(path("one.pgm"));
    QCOMPARE(one.size(), 14 + 2 * 64 * 48);
    QCOMPARE(readFile(path("default.pgm")), one);
    QVERIFY(readFile(path("two.pgm")) != one);
}

void TestZorffcSimulate::aFormatMakesADump_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("dump"); // of 3 x 1 pixels
    const auto hex = [](const char* text) { return QByteArray::fromHex(text); };
    const QStringList record{"--packed-order", "record"};
    // 40 % of full scale: 102 of 255, 409 of 1023, 1638 of 4095, 6553 of 16383, 26214 of 65535.
    QTest::newRow("Mono8") << "Mono8" << QStringList{} << hex("666666");
    QTest::newRow("Mono14: the sensor has the format's bits")
        << "Mono14" << QStringList{} << hex("991999199919");
    QTest::newRow("Mono16") << "Mono16" << QStringList{} << hex("666666666666");
    QTest::newRow("Mono12p holds 12 bits") << "Mono12p" << QStringList{} << hex("666666 6606");
    QTest::newRow("Mono10p") << "Mono10p" << QStringList{} << hex("99 65 96 19");
    QTest::newRow("Mono10Packed on the wire: the odd last pixel's low bits in the low nibble")
        << "Mono10Packed" << QStringList{} << hex("661166 6601");
    QTest::newRow("Mono10Packed as in a record: in the high nibble")
        << "Mono10Packed" << record << hex("661166 6610");
    QTest::newRow("Mono12Packed on the wire") << "Mono12Packed" << QStringList{} << hex("666666 6606");
    QTest::newRow("Mono12Packed as in a record") << "Mono12Packed" << record << hex("666666 6660");
    QTest::newRow("an order does not matter to other formats") << "Mono8" << record << hex("666666");
    QTest::newRow("BayerRG8") << "BayerRG8" << QStringList{} << hex("666666");
    QTest::newRow("RGB8") << "RGB8" << QStringList{} << hex("666666666666666666");
    QTest::newRow("YUV422_8: grey has chroma in the middle")
        << "YUV422_8" << QStringList{} << hex("668066806680");
}

void TestZorffcSimulate::aFormatMakesADump()
{
    QFETCH(QString, format);
    QFETCH(QStringList, options);
    QFETCH(QByteArray, dump);
    for (const QString name : {"f.raw", "f.BIN"}) {
        const ZorffcRun run = simulate(
            name, Even + QStringList{"--size", "3x1", "--level", "40", "--format", format} + options);
        QVERIFY2(run.exitCode == 0 && run.err.isEmpty(), qPrintable(run.transcript()));
        QCOMPARE(readFile(path(name)).toHex(), dump.toHex());
    }
}

void TestZorffcSimulate::theDumpHoldsThePgmsSamples()
{
    const QStringList settings{"--size", "31x17", "--seed", "5"};
    QCOMPARE(simulate("f.pgm", settings + QStringList{"--depth", "16"}).exitCode, 0);
    QCOMPARE(simulate("f.raw", settings + QStringList{"--format", "Mono16"}).exitCode, 0);
    QByteArray swapped = readFile(path("f.pgm")).mid(15);
    QCOMPARE(swapped.size(), 2 * 31 * 17);
    for (int i = 0; i < swapped.size(); i += 2)
        std::swap(swapped.data()[i], swapped.data()[i + 1]);
    QCOMPARE(readFile(path("f.raw")), swapped);
}

void TestZorffcSimulate::theSummarySaysHowToReadADump()
{
    const ZorffcRun run = simulate("f.raw", {"--size", "3x1", "--format", "BayerRG12Packed"});
    QVERIFY2(run.out.startsWith("Frame            3 x 1 pixels, 12 bits\n"), qPrintable(run.transcript()));
    QVERIFY2(
        run.out.endsWith("File             f.raw, to be read with --format BayerRG12Packed --size 3x1\n"),
        qPrintable(run.transcript()));
    const ZorffcRun record =
        simulate("f.raw", {"--size", "3x1", "--format", "Mono12Packed", "--packed-order", "record"});
    QVERIFY2(record.out.endsWith("--format Mono12Packed --size 3x1 --packed-order record\n"),
             qPrintable(record.transcript()));
}

void TestZorffcSimulate::computeMakesASampleFlat()
{
    QCOMPARE(simulate("f.pgm", {"--size", "320x240"}).exitCode, 0);
    const ZorffcRun run = runZorffc(m_folder->path(), {"compute", "f.pgm", "--title", "T", "--camera", "C",
                                                       "--output", "f.ffc", "--precision", "12"});
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    const QRegularExpression figures(
        "column means +([0-9.]+) % +([0-9.]+) %\n  row means +([0-9.]+) % +([0-9.]+) %\n");
    const QRegularExpressionMatch match = figures.match(run.out);
    QVERIFY2(match.hasMatch(), qPrintable(run.out));
    // 15 % less light in the corners is some per cent of deviation in the means; 12 bits of gain leave next
    // to none.
    for (const int before : {1, 3})
        QVERIFY2(match.captured(before).toDouble() > 1.0, qPrintable(run.out));
    for (const int after : {2, 4})
        QVERIFY2(match.captured(after).toDouble() < 0.05, qPrintable(run.out));
}

void TestZorffcSimulate::theSystemGainIsReportedWithItsDigits()
{
    const ZorffcRun run = simulate("f.pgm", {"--size", "2x2", "--full-well", "1000000000"});
    QVERIFY2(run.out.contains("full well 1000000000 e-, system gain 4.095e-06 DN/e-, seed 1"),
             qPrintable(run.transcript()));
}

void TestZorffcSimulate::refusesBadSettings_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("names");
    QTest::newRow("a name of another kind") << "f.png" << QStringList{} << "ends in .pgm";
    QTest::newRow("an ending alone") << ".pgm" << QStringList{} << ".pgm: the name";
    QTest::newRow("no name") << "" << QStringList{} << "--output";
    QTest::newRow("a missing folder") << "absent/f.pgm" << QStringList{} << "absent/f.pgm";
    QTest::newRow("a depth that is none") << "f.pgm" << QStringList{"--depth", "9"} << "--depth";
    QTest::newRow("a size that is none") << "f.pgm" << QStringList{"--size", "10"} << "--size";
    QTest::newRow("a size with a sign") << "f.pgm" << QStringList{"--size", "-1x10"} << "--size";
    QTest::newRow("a side of 65536") << "f.pgm" << QStringList{"--size", "65536x1"} << "--size";
    QTest::newRow("more pixels than fit") << "f.pgm" << QStringList{"--size", "65535x65535"} << "--size";
    QTest::newRow("all light lost") << "f.pgm" << QStringList{"--vignetting", "99.001"}
                                    << "--vignetting: \"99.001\" does not fit; give a number from 0 to 99;";
    QTest::newRow("a negative deviation") << "f.pgm" << QStringList{"--prnu=-1"} << "--prnu";
    QTest::newRow("a deviation that is no number")
        << "f.pgm" << QStringList{"--row-fpn", "nan"} << "--row-fpn";
    QTest::newRow("a full well of 0")
        << "f.pgm" << QStringList{"--full-well", "0.999"} << "give a number from 1 to 1000000000;";
    QTest::newRow("a value for a switch")
        << "f.pgm" << QStringList{"--no-shot-noise=false"} << "--no-shot-noise: takes no value";
    QTest::newRow("a negative seed") << "f.pgm" << QStringList{"--seed=-1"} << "--seed";
    QTest::newRow("a seed of 2^64") << "f.pgm" << QStringList{"--seed", "18446744073709551616"} << "--seed";
    QTest::newRow("an unknown format") << "f.raw" << QStringList{"--format", "Mono13"}
                                       << "--format: there is no pixel format 'Mono13'; see zorffc formats";
    QTest::newRow("a format in other letters")
        << "f.raw" << QStringList{"--format", "rgb8"} << "did you mean 'RGB8'?";
    QTest::newRow("an empty format") << "f.raw" << QStringList{"--format", ""} << "--format: there is no";
    QTest::newRow("a depth beside a format")
        << "f.raw" << QStringList{"--format", "Mono8", "--depth", "8"} << "--depth excludes --format";
    QTest::newRow("a dump that is called a picture")
        << "f.pgm" << QStringList{"--format", "Mono8"} << "give --output a name that ends in .raw or .bin";
    QTest::newRow("a picture that is called a dump") << "f.raw" << QStringList{} << "ends in .pgm";
    QTest::newRow("an order without a format")
        << "f.pgm" << QStringList{"--packed-order", "record"} << "--packed-order requires --format";
    QTest::newRow("an order that is none")
        << "f.raw" << QStringList{"--format", "Mono8", "--packed-order", "east"} << "--packed-order";
    QTest::newRow("a dump on a device")
        << "/dev/full" << QStringList{"--format", "Mono8"} << "/dev/full: the name";
    QTest::newRow("a dump into a missing folder")
        << "absent/f.raw" << QStringList{"--format", "Mono8"} << "there is no folder absent";
    QTest::newRow("a black level at a format's full scale")
        << "f.raw" << QStringList{"--format", "Mono14", "--black-level", "16383"}
        << "--black-level: 16383 leaves no room below 16383; give a lower one or more bits";
    QTest::newRow("a black level above all full scales")
        << "f.pgm" << QStringList{"--depth", "16", "--black-level", "65536"}
        << "--black-level: \"65536\" does not fit";
    QTest::newRow("a black level at full scale")
        << "f.pgm" << QStringList{"--depth", "8", "--black-level", "255"} << "--black-level";
}

void TestZorffcSimulate::refusesBadSettings()
{
    QFETCH(QString, target);
    QFETCH(QStringList, options);
    QFETCH(QString, names);
    writeFile(path("f.pgm"), "what was there");
    const ZorffcRun run = simulate(target, options);
    QVERIFY2(run.exitCode == 2, qPrintable(run.transcript()));
    QVERIFY2(run.err.startsWith("zorffc: ") && run.err.count('\n') == 1, qPrintable(run.transcript()));
    QVERIFY2(run.err.contains(names), qPrintable(run.transcript()));
    QCOMPARE(run.out, QString());
    QCOMPARE(readFile(path("f.pgm")), QByteArray("what was there"));
    QCOMPARE(namesIn(m_folder->path()), QStringList{"f.pgm"});
}

QTEST_GUILESS_MAIN(TestZorffcSimulate)
#include "tst_zorffc_simulate.moc"
