#include "tests/host/ZorffcRun.h"

#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

namespace {

using Samples = std::vector<std::uint16_t>;

} // namespace

Q_DECLARE_METATYPE(Samples)

/// Frames as picture files: the samples, the kinds of files, what is reported.
class TestZorffcConvert : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aDumpBecomesItsSamples_data();
    void aDumpBecomesItsSamples();
    void theDepthOfThePictureCanBeAsked_data();
    void theDepthOfThePictureCanBeAsked();
    void aStretchedPictureHasFullScale_data();
    void aStretchedPictureHasFullScale();
    void aPictureThatViewersShowDarkIsReported_data();
    void aPictureThatViewersShowDarkIsReported();
    void theEndingDecidesTheKind_data();
    void theEndingDecidesTheKind();
    void picturesGoThroughAllKindsUnchanged_data();
    void picturesGoThroughAllKindsUnchanged();
    void theSummarySaysWhatWasDone();
    void anExistingPictureIsReplaced();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    ZorffcRun convert(const QStringList& arguments) const
    {
        return runZorffc(m_folder->path(), QStringList{"convert"} + arguments);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestZorffcConvert::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void TestZorffcConvert::aDumpBecomesItsSamples_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("size");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("dump");
    QTest::addColumn<int>("maxval");
    QTest::addColumn<Samples>("samples");
    const auto add = [](const char* name, const char* format, const char* size, const QStringList& options,
                        const QByteArray& hex, int maxval, const Samples& samples) {
        QTest::newRow(name) << format << size << options << QByteArray::fromHex(hex) << maxval << samples;
    };
    const QStringList none;
    const QStringList record{"--packed-order", "record"};

    add("Mono8", "Mono8", "2x2", none, "00 01 FE FF", 255, {0, 1, 254, 255});
    add("Mono8 with padded rows", "Mono8", "2x2", {"--pitch", "3"}, "0001EE FEFFEE", 255, {0, 1, 254, 255});
    add("Mono10", "Mono10", "2x1", none, "FF03 0102", 1023, {1023, 513});
    add("Mono10p: one stream from the low bit", "Mono10p", "4x1", none, "01 08 30 C0 FF", 1023,
        {1, 2, 3, 1023});
    add("Mono10Packed from the wire: the even pixel in the low nibble", "Mono10Packed", "2x1", none,
        "FF 13 80", 1023, {1023, 513});
    add("Mono10Packed as in a record", "Mono10Packed", "2x1", record, "FF 31 80", 1023, {1023, 513});
    add("Mono10_FLExPacked: fields of 12 bits", "Mono10_FLExPacked", "2x1", none, "FF 13 20", 1023,
        {0x3FF, 0x201});
    add("Mono10_FLExPacked: the upper two bits of a field do not count", "Mono10_FLExPacked", "2x1", none,
        "00 4C E0", 1023, {0x000, 0x204});
    add("Mono12Packed from the wire", "Mono12Packed", "2x1", none, "32 21 64", 4095, {0x321, 0x642});
    add("Mono12Packed as in a record", "Mono12Packed", "2x1", record, "32 12 64", 4095, {0x321, 0x642});
    add("Mono12Packed given as from the wire", "Mono12Packed", "2x1", {"--packed-order", "wire"}, "32 21 64",
        4095, {0x321, 0x642});
    add("Mono12Packed with an odd width and padded rows", "Mono12Packed", "3x2", {"--pitch", "6"},
        "AB1278CD04EE 000000FF0FEE", 4095, {0xAB2, 0x781, 0xCD4, 0, 0, 0xFFF});
    add("Mono12p comes to 10 bits", "Mono12p", "2x1", none, "FF 3F 12", 1023, {1023, 0x48});
    add("Mono14 comes down to 8 bits", "Mono14", "3x1", none, "FF3F 3412 3F00", 255, {255, 72, 0});
    add("Mono16", "Mono16", "2x1", none, "CDAB FFFF", 65535, {0xABCD, 0xFFFF});

    const auto even = [](const char* byte, int count) { return QByteArray(byte).repeated(count); };
    add("BayerRG8 of one value", "BayerRG8", "4x4", none, even("4D", 16), 255, Samples(16, 77));
    add("BayerGB8 of one pixel", "BayerGB8", "1x1", none, "4D", 255, {77});
    add("BayerRG12Packed of one value", "BayerRG12Packed", "4x2", none, even("ABCCAB", 4), 4095,
        Samples(8, 0xABC));
    add("BayerGR14 of one value comes down to 8 bits", "BayerGR14", "2x2", none, even("3412", 4), 255,
        Samples(4, 72));
    add("TrueSense of one value", "TrueSense_RGGB_WRRW_2_10", "5x4", none, even("0102", 20), 1023,
        Samples(20, 513));

    add("RGB8: grey, red, green, blue by 0.299, 0.587, 0.114", "RGB8", "4x1", none,
        "090909 FF0000 00FF00 0000FF", 255, {9, 76, 150, 29});
    add("BGR8: blue comes first", "BGR8", "2x1", none, "FF0000 0000FF", 255, {29, 76});
    add("RGBa8: alpha does not count", "RGBa8", "2x1", none, "FF000000 FF0000FF", 255, {76, 76});
    add("RGB12 grey", "RGB12", "2x1", none, "BC0ABC0ABC0A FF0FFF0FFF0F", 4095, {0xABC, 0xFFF});
    add("RGB_10_FLEX_Packed: the two spare bits do not count", "RGB_10_FLEX_Packed", "2x1", none,
        "FFFFFF3F FFFFFFFF", 1023, {1023, 1023});
    add("YUV422_8: luma first", "YUV422_8", "2x2", none, "10A020B0 30C040D0", 255, {0x10, 0x20, 0x30, 0x40});
    add("YUV422_8_UYVY: chroma first", "YUV422_8_UYVY", "2x1", none, "A010B020", 255, {0x10, 0x20});
    add("YUV422_8 with an odd width", "YUV422_8", "3x1", none, "10A020B030C0", 255, {0x10, 0x20, 0x30});
    add("YUV444_8", "YUV444_8", "2x1", none, "10A0B0FF 20C0D0FF", 255, {0x10, 0x20});
    add("YUV422_10_PACKED", "YUV422_10_PACKED", "2x1", none, "FF 03 18 00 80", 1023, {1023, 1});
}

void TestZorffcConvert::aDumpBecomesItsSamples()
{
    QFETCH(QString, format);
    QFETCH(QString, size);
    QFETCH(QStringList, options);
    QFETCH(QByteArray, dump);
    QFETCH(int, maxval);
    QFETCH(Samples, samples);
    writeFile(path("f.raw"), dump);
    const ZorffcRun run =
        convert(QStringList{"f.raw", "--format", format, "--size", size, "f.pgm"} + options);
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    QCOMPARE(run.err, QString());
    const QStringList sides = size.split('x');
    QCOMPARE(readFile(path("f.pgm")), pgm(sides[0].toInt(), sides[1].toInt(), maxval, samples));
    QCOMPARE(namesIn(m_folder->path()), (QStringList{"f.pgm", "f.raw"}));
}

void TestZorffcConvert::theDepthOfThePictureCanBeAsked_data()
{
    QTest::addColumn<QStringList>("frame");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("depth");
    QTest::addColumn<int>("maxval");
    QTest::addColumn<Samples>("samples");
    const auto dump = [](const char* format) {
        return QStringList{"f.in", "--size", "2x1", "--format", format};
    };
    const auto hex = [](const char* text) { return QByteArray::fromHex(text); };
    const QStringList picture{"f.in"};

    QTest::newRow("14 bits to 16: the two highest bits are repeated below")
        << dump("Mono14") << hex("FF3F 3412") << "16" << 65535 << Samples{65535, 18641};
    QTest::newRow("14 bits to 12") << dump("Mono14") << hex("FF3F 3412") << "12" << 4095
                                   << Samples{4095, 0x48D};
    QTest::newRow("colour of 14 bits to 16")
        << dump("RGB14") << hex("FF3FFF3FFF3F 341234123412") << "16" << 65535 << Samples{65535, 18641};
    QTest::newRow("all 12 bits of Mono12p")
        << dump("Mono12p") << hex("FF3F12") << "12" << 4095 << Samples{4095, 0x123};
    QTest::newRow("8 bits to 16") << dump("Mono8") << hex("12FF") << "16" << 65535 << Samples{0x1212, 0xFFFF};
    QTest::newRow("8 bits to 10") << dump("Mono8") << hex("81FF") << "10" << 1023 << Samples{0x206, 1023};
    QTest::newRow("16 bits to 8") << dump("Mono16") << hex("CDABFFFF") << "8" << 255 << Samples{0xAB, 255};
    QTest::newRow("the same depth") << dump("Mono12Packed") << hex("322164") << "12" << 4095
                                    << Samples{0x321, 0x642};
    QTest::newRow("a PGM of 12 bits to 8")
        << picture << pgm(2, 1, 4095, {0xABC, 15}) << "8" << 255 << Samples{0xAB, 0};
    QTest::newRow("a PGM of 8 bits to 12")
        << picture << pgm(2, 1, 255, {0xAB, 255}) << "12" << 4095 << Samples{0xABA, 4095};
}

void TestZorffcConvert::theDepthOfThePictureCanBeAsked()
{
    QFETCH(QStringList, frame);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, depth);
    QFETCH(int, maxval);
    QFETCH(Samples, samples);
    writeFile(path("f.in"), bytes);
    const ZorffcRun run = convert(frame + QStringList{"f.pgm", "--depth", depth});
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    QCOMPARE(readFile(path("f.pgm")), pgm(2, 1, maxval, samples));
}

void TestZorffcConvert::aStretchedPictureHasFullScale_data()
{
    QTest::addColumn<QStringList>("frame");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("maxval");
    QTest::addColumn<Samples>("samples");
    const auto dump = [](const char* format) {
        return QStringList{"f.in", "--size", "2x1", "--format", format};
    };
    const auto hex = [](const char* text) { return QByteArray::fromHex(text); };
    QTest::newRow("8 bits fill their byte") << dump("Mono8") << hex("12FF") << 255 << Samples{0x12, 255};
    QTest::newRow("10 bits: the six highest are repeated below")
        << dump("Mono10") << hex("FF03 0102") << 65535 << Samples{65535, 0x8060};
    QTest::newRow("12 bits: the four highest are repeated below")
        << dump("Mono12Packed") << hex("FFF264") << 65535 << Samples{0xFF2F, 0x64F6};
    QTest::newRow("all 12 bits of Mono12p")
        << dump("Mono12p") << hex("FF3F12") << 65535 << Samples{65535, 0x1231};
    QTest::newRow("14 bits") << dump("Mono14") << hex("FF3F 3412") << 65535 << Samples{65535, 18641};
    QTest::newRow("16 bits stay") << dump("Mono16") << hex("CDABFFFF") << 65535 << Samples{0xABCD, 0xFFFF};
    QTest::newRow("colour of 12 bits")
        << dump("RGB12") << hex("BC0ABC0ABC0A FF0FFF0FFF0F") << 65535 << Samples{0xABCA, 0xFFFF};
    QTest::newRow("a PGM of 12 bits")
        << QStringList{"f.in"} << pgm(2, 1, 4095, {0xABC, 15}) << 65535 << Samples{0xABCA, 0xF0};
}

void TestZorffcConvert::aStretchedPictureHasFullScale()
{
    QFETCH(QStringList, frame);
    QFETCH(QByteArray, bytes);
    QFETCH(int, maxval);
    QFETCH(Samples, samples);
    writeFile(path("f.in"), bytes);
    const ZorffcRun run = convert(frame + QStringList{"f.pgm", "--stretch"});
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    QCOMPARE(readFile(path("f.pgm")), pgm(2, 1, maxval, samples));
}

void TestZorffcConvert::aPictureThatViewersShowDarkIsReported_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QStringList>("output");
    QTest::addColumn<QString>("note");
    const QString dark =
        ": %1 bits in samples of 16, nearly black in most viewers; --stretch makes a bright one";
    QTest::newRow("a PNG of 12 bits") << "Mono12" << QStringList{"f.png"} << dark.arg(12);
    QTest::newRow("a TIFF of 10 bits") << "Mono10" << QStringList{"f.tif"} << dark.arg(10);
    QTest::newRow("a TIFF with four letters") << "Mono12" << QStringList{"f.tiff"} << dark.arg(12);
    QTest::newRow("a PNG of 16 bits that are to be 10")
        << "Mono16" << QStringList{"f.png", "--depth", "10"} << dark.arg(10);
    QTest::newRow("a PGM, whose maxval every viewer knows") << "Mono12" << QStringList{"f.pgm"} << "";
    QTest::newRow("a stretched PNG") << "Mono12" << QStringList{"f.png", "--stretch"} << "";
    QTest::newRow("a PNG of 16 bits") << "Mono16" << QStringList{"f.png"} << "";
    QTest::newRow("a PNG of 14 bits, which come down to 8") << "Mono14" << QStringList{"f.png"} << "";
}

void TestZorffcConvert::aPictureThatViewersShowDarkIsReported()
{
    QFETCH(QString, format);
    QFETCH(QStringList, output);
    QFETCH(QString, note);
    writeFile(path("f.raw"), QByteArray(8, '\1'));
    const ZorffcRun run = convert(QStringList{"f.raw", "--format", format, "--size", "2x2"} + output);
    QVERIFY2(run.exitCode == 0 && run.err.isEmpty(), qPrintable(run.transcript()));
    QVERIFY2(run.out.endsWith("\nPicture          " + output[0] + note + "\n"), qPrintable(run.transcript()));
}

void TestZorffcConvert::theEndingDecidesTheKind_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("start");
    QTest::newRow("PNG") << "f.png" << QByteArray("\x89PNG\r\n\x1a\n");
    QTest::newRow("PNG in capital letters") << "F.PNG" << QByteArray("\x89PNG\r\n\x1a\n");
    QTest::newRow("TIFF") << "f.tiff" << QByteArray("II*\0", 4);
    QTest::newRow("TIFF with three letters") << "f.tif" << QByteArray("II*\0", 4);
    QTest::newRow("PGM") << "f.pgm" << QByteArray("P5\n2 1\n4095\n");
    QTest::newRow("the last ending counts") << "f.png.pgm" << QByteArray("P5\n2 1\n4095\n");
}

void TestZorffcConvert::theEndingDecidesTheKind()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, start);
    writeFile(path("f.raw"), QByteArray("\x32\x21\x64", 3));
    const ZorffcRun run = convert({"f.raw", "--format", "Mono12Packed", "--size", "2x1", name});
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    const QByteArray bytes = readFile(path(name));
    QVERIFY2(bytes.startsWith(start), bytes.left(16).toHex(' ').constData());
}

void TestZorffcConvert::picturesGoThroughAllKindsUnchanged_data()
{
    QTest::addColumn<int>("maxval");
    QTest::addColumn<QString>("format");
    QTest::newRow("8 bits") << 255 << "Mono8";
    QTest::newRow("10 bits") << 1023 << "Mono10";
    QTest::newRow("12 bits") << 4095 << "Mono12";
    QTest::newRow("16 bits") << 65535 << "Mono16";
}

void TestZorffcConvert::picturesGoThroughAllKindsUnchanged()
{
    QFETCH(int, maxval);
    QFETCH(QString, format);
    Samples samples;
    for (int i = 0; i < 13 * 7; ++i)
        samples.push_back(std::uint16_t(i * 719 % (maxval / 3)));
    const QByteArray original = pgm(13, 7, maxval, samples);
    writeFile(path("1.pgm"), original);
    const QStringList names{"1.pgm", "2.png", "3.tiff", "4.pgm"};
    for (int i = 0; i < 3; ++i) {
        const ZorffcRun run = convert({names[i], names[i + 1]});
        QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
        QVERIFY2(run.out.contains("Format           " + format + " (depth from "),
                 qPrintable(run.transcript()));
    }
    QCOMPARE(readFile(path("4.pgm")), original);

    // Another reader sees the same.
    const QImage image(path("2.png"));
    for (int i = 0; i < 13 * 7; ++i) {
        const uchar* line = image.constScanLine(i / 13);
        const int sample = maxval == 255 ? line[i % 13] : reinterpret_cast<const quint16*>(line)[i % 13];
        QVERIFY2(sample == samples[std::size_t(i)], qPrintable(QString("pixel %1: %2").arg(i).arg(sample)));
    }
}

void TestZorffcConvert::theSummarySaysWhatWasDone()
{
    writeFile(path("f.raw"), QByteArray(16, 'M'));
    const ZorffcRun dump = convert({"f.raw", "--format", "BayerRG8", "--size", "4x4", "f.png"});
    QCOMPARE(dump.out, QString("Frame            4 x 4 pixels\n"
                               "Format           BayerRG8 (depth from format BayerRG8), brought to Mono8\n"
                               "Picture          f.png\n"));
    const ZorffcRun picture = convert({"f.png", "f.pgm", "--depth", "16"});
    QCOMPARE(picture.out, QString("Frame            4 x 4 pixels\n"
                                  "Format           Mono8 (depth from largest sample 77), brought to Mono16\n"
                                  "Picture          f.pgm\n"));
}

void TestZorffcConvert::anExistingPictureIsReplaced()
{
    writeFile(path("f.raw"), "AB");
    writeFile(path("f.pgm"), "what was there");
    QCOMPARE(convert({"f.raw", "--format", "Mono8", "--size", "2x1", "f.pgm"}).exitCode, 0);
    QCOMPARE(readFile(path("f.pgm")), QByteArray("P5\n2 1\n255\nAB"));
    QCOMPARE(namesIn(m_folder->path()), (QStringList{"f.pgm", "f.raw"}));
}

QTEST_GUILESS_MAIN(TestZorffcConvert)
#include "tst_zorffc_convert.moc"
