#include "tests/host/ZorffcRun.h"

#include <QDate>
#include <QImage>
#include <QLocale>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

const QStringList Header{"--title", "Title", "--camera", "Camera"};

/// The text of a coefficient file with the given tables.
QByteArray fileText(const QByteArray& columns, const QByteArray& rows)
{
    return "-- Flat Field Correction input file example,\n"
           "-- lines beginning with two dashes are comments,\n"
           "-- and are ignored by parser,\n"
           ":Header,\n"
           "-- this is the text that will get displayed with a 'gfh' command,\n"
           "Title,\n"
           "Camera,\n"
           "date " +
           QLocale::c().toString(QDate::currentDate(), "M/dd/yy").toUtf8() +
           ",\n"
           ":Table,\n"
           "-- Column(X),HEX Value\n" +
           columns +
           ":FFC_Y start,\n"
           "-- Row(Y),HEX Value\n" +
           rows;
}

/// Samples of one value but for the first.
std::vector<std::uint16_t> oneAmong(std::size_t count, std::uint16_t first, std::uint16_t others)
{
    std::vector<std::uint16_t> samples(count, others);
    samples.front() = first;
    return samples;
}

/// Column means 100 and 200, row means equal.
QByteArray twoColumns()
{
    return pgm(2, 2, 255, {100, 200, 100, 200});
}

} // namespace

class TestZorffcCompute : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void writesTheGainsOfAFrame_data();
    void writesTheGainsOfAFrame();
    void readsOtherFiles_data();
    void readsOtherFiles();
    void summarySaysWhatWasDone();
    void summaryOfAFrameWithoutLight();
    void warnsOfAPoorFrame_data();
    void warnsOfAPoorFrame();
    void aGuessedDepthThatLimitsPixelsIsReported_data();
    void aGuessedDepthThatLimitsPixelsIsReported();
    void theWayOutOfAWrappedFrameLeavesItFlat();
    void keepsALinkAndThePermissionsOfTheTarget();
    void keepsTheOwnerOfTheTarget();
    void takesItsEndingInCapitalLetters();
    void needsNoScreen();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    ZorffcRun compute(const QStringList& arguments) const
    {
        return runZorffc(m_folder->path(), QStringList{"compute"} + arguments);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestZorffcCompute::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void TestZorffcCompute::writesTheGainsOfAFrame_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("columns");
    QTest::addColumn<QByteArray>("rows");

    QTest::newRow("the brightest column is the target")
        << twoColumns() << QStringList{} << QByteArray("1,512\n2,256\n") << QByteArray("1,256\n2,256\n");
    QTest::newRow("12 fraction bits") << twoColumns() << QStringList{"--precision", "12"}
                                      << QByteArray("1,8192\n2,4096\n") << QByteArray("1,4096\n2,4096\n");
    QTest::newRow("the mean is the target") << twoColumns() << QStringList{"--mean"}
                                            << QByteArray("1,384\n2,192\n") << QByteArray("1,256\n2,256\n");
    QTest::newRow("half of the brightest is the target, in columns and again in rows")
        << twoColumns() << QStringList{"--normalize", "0.5"} << QByteArray("1,256\n2,128\n")
        << QByteArray("1,128\n2,128\n");
    QTest::newRow("a target so low that gains are 0, and rows that are black have none")
        << twoColumns() << QStringList{"--normalize", "5e-324"} << QByteArray("1,0\n2,0\n")
        << QByteArray("1,0\n2,0\n");
    QTest::newRow("rows are taken after the columns, 12 bits")
        << pgm(2, 2, 4095, {1000, 2000, 500, 1000}) << QStringList{} << QByteArray("1,512\n2,256\n")
        << QByteArray("1,256\n2,512\n");
    QTest::newRow("one row, one column")
        << pgm(1, 1, 255, {7}) << QStringList{} << QByteArray("1,256\n") << QByteArray("1,256\n");
    QTest::newRow("a black column has an infinite gain, written as 255")
        << pgm(2, 1, 255, {0, 9}) << QStringList{} << QByteArray("1,255\n2,256\n") << QByteArray("1,256\n");
    QTest::newRow("a black frame has no gains, written as 0")
        << pgm(1, 2, 255, {0, 0}) << QStringList{} << QByteArray("1,0\n") << QByteArray("1,0\n2,0\n");
}

void TestZorffcCompute::writesTheGainsOfAFrame()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, options);
    QFETCH(QByteArray, columns);
    QFETCH(QByteArray, rows);
    writeFile(path("f.pgm"), frame);

    const ZorffcRun run = compute(QStringList{"f.pgm", "--output", "f.ffc"} + Header + options);
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    QCOMPARE(readFile(path("f.ffc")), fileText(columns, rows));
    QCOMPARE(namesIn(m_folder->path()), (QStringList{"f.ffc", "f.pgm"}));
}

void TestZorffcCompute::readsOtherFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("columns");
    QTest::addColumn<QString>("format");

    QTest::newRow("a grey PNG") << "f.png" << QStringList{} << QByteArray("1,512\n2,256\n") << "Mono8 (";
    QTest::newRow("a raw dump") << "f.raw" << QStringList{"--format", "Mono8", "--size", "2x2"}
                                << QByteArray("1,512\n2,256\n") << "Mono8";
    QTest::newRow("a raw dump with padded rows")
        << "padded.raw" << QStringList{"--format", "Mono8", "--size", "2x2", "--pitch", "3"}
        << QByteArray("1,512\n2,256\n") << "Mono8";
    QTest::newRow("Mono12Packed from the wire: the even pixel's low bits in the low nibble")
        << "packed.raw" << QStringList{"--format", "Mono12Packed", "--size", "2x1"}
        << QByteArray("1,512\n2,256\n") << "Mono12Packed";
    QTest::newRow("Mono12Packed as in a record: the even pixel's low bits in the high nibble")
        << "record.raw"
        << QStringList{"--format", "Mono12Packed", "--size", "2x1", "--packed-order", "record"}
        << QByteArray("1,512\n2,256\n") << "Mono12Packed";
    QTest::newRow("RGB, 100 and 200 in every channel")
        << "rgb.raw" << QStringList{"--format", "RGB8", "--size", "2x1"} << QByteArray("1,512\n2,256\n")
        << "RGB8 (depth from format RGB8), brought to Mono8";
    QTest::newRow("YUV, luma 100 and 200 beside any chroma")
        << "yuv.raw" << QStringList{"--format", "YUV422_8", "--size", "2x1"} << QByteArray("1,512\n2,256\n")
        << "YUV422_8 (depth from format YUV422_8), brought to Mono8";
    QTest::newRow("Bayer, one value")
        << "bayer.raw" << QStringList{"--format", "BayerGB8", "--size", "2x4"} << QByteArray("1,256\n2,256\n")
        << "BayerGB8 (depth from format BayerGB8), brought to Mono8";
    QTest::newRow("14 bits, 6400 and 12800, come down to 8")
        << "14.raw" << QStringList{"--format", "Mono14", "--size", "2x1"} << QByteArray("1,512\n2,256\n")
        << "Mono14 (depth from format Mono14), brought to Mono8";
    QTest::newRow("the depth can be given")
        << "f.pgm" << QStringList{"--depth", "12"} << QByteArray("1,512\n2,256\n")
        << "Mono12 (depth from --depth 12)";
    QTest::newRow("the largest depth can be given")
        << "f.pgm" << QStringList{"--depth", "16"} << QByteArray("1,512\n2,256\n")
        << "Mono16 (depth from --depth 16)";
}

void TestZorffcCompute::readsOtherFiles()
{
    QFETCH(QString, name);
    QFETCH(QStringList, options);
    QFETCH(QByteArray, columns);
    QFETCH(QString, format);

    const std::uint8_t pixels[] = {100, 200, 100, 200};
    QVERIFY(QImage(pixels, 2, 2, 2, QImage::Format_Grayscale8).save(path("f.png")));
    writeFile(path("f.pgm"), pgm(2, 2, 4095, {100, 200, 100, 200}));
    writeFile(path("f.raw"), QByteArray("\x64\xC8\x64\xC8", 4));
    writeFile(path("padded.raw"), QByteArray("\x64\xC8\xFF\x64\xC8\xFF", 6));
    writeFile(path("rgb.raw"), QByteArray("\x64\x64\x64\xC8\xC8\xC8", 6));
    writeFile(path("yuv.raw"), QByteArray("\x64\x10\xC8\xF0", 4));
    writeFile(path("bayer.raw"), QByteArray(8, 'B'));
    writeFile(path("14.raw"), QByteArray("\x00\x19\x00\x32", 4));
    // 0x321 and 0x642: high bits, then both low nibbles in one byte, then high bits.
    writeFile(path("packed.raw"), QByteArray("\x32\x21\x64", 3));
    writeFile(path("record.raw"), QByteArray("\x32\x12\x64", 3));

    const ZorffcRun run = compute(QStringList{name, "--output", "f.ffc"} + Header + options);
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    const QByteArray text = readFile(path("f.ffc"));
    QVERIFY2(text.contains("HEX Value\n" + columns + ":FFC_Y start,\n"), text.constData());
    QVERIFY2(run.out.contains("Format           " + format), qPrintable(run.transcript()));
}

void TestZorffcCompute::summarySaysWhatWasDone()
{
    writeFile(path("f.pgm"), pgm(2, 2, 4095, {1000, 2000, 500, 1000}));
    const ZorffcRun run = compute(QStringList{"f.pgm", "--output", "f.ffc"} + Header);
    // Column means 750 and 1500: deviation 375 of 1125. Row means 1500 and 750 likewise. All even afterwards.
    QCOMPARE(run.out,
             QStringLiteral("Frame            2 x 2 pixels\n"
                            "Format           Mono12 (depth from maxval 4095)\n"
                            "Column gain      1.0000 to 2.0000 computed, 1.0000 to 2.0000 in the file\n"
                            "Row gain         1.0000 to 2.0000 computed, 1.0000 to 2.0000 in the file\n"
                            "Non-uniformity         before       after\n"
                            "  column means      33.3333 %    0.0000 %\n"
                            "  row means         33.3333 %    0.0000 %\n"
                            "File             f.ffc: 2 column and 2 row entries with 8 fraction bits\n"));
    QCOMPARE(run.err, QString());
    QCOMPARE(run.exitCode, 0);
}

void TestZorffcCompute::summaryOfAFrameWithoutLight()
{
    writeFile(path("f.pgm"), pgm(2, 1, 255, {0, 0}));
    const ZorffcRun run = compute(QStringList{"f.pgm", "--output", "f.ffc"} + Header);
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    QVERIFY2(run.out.contains("Column gain      nan computed, 0.0000 to 0.0000 in the file\n"),
             qPrintable(run.out));
    QVERIFY2(run.out.contains("  column means            nan         nan\n"), qPrintable(run.out));
}

void TestZorffcCompute::warnsOfAPoorFrame_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QStringList>("warnings");
    const QString limited =
        " of the pixels are limited to %1 by the correction, which hides what is left of the "
        "pattern; aim lower with compute --normalize V, which acts on columns and on rows, so as V * V on "
        "the "
        "level, or take the frame with less light";
    const QString endless =
        " no finite number although there is light in the frame; choose another target with "
        "--normalize or --mean";
    const QString wrapped = " or more, which wraps in the file's 32-bit values; choose a lower target with "
                            "--normalize or --mean";
    const QByteArray flat = pgm(2, 2, 255, {100, 200, 100, 200});

    QTest::newRow("a good frame") << flat << QStringList{} << QStringList{};
    QTest::newRow("saturated pixels")
        << pgm(2, 2, 255, {255, 255, 190, 190}) << QStringList{"--mean"}
        << QStringList{"50.0 % of the pixels are saturated; take the frame with "
                       "less light or exposure"};
    QTest::newRow("a black frame") << pgm(2, 2, 255, {0, 0, 0, 0}) << QStringList{}
                                   << QStringList{"the frame is black, so every value in the file is 0; "
                                                  "uncover the lens and light the scene"};
    const QString dark =
        "the frame is nearly dark: its mean of %1 is %2 % of full scale; uncover the lens or "
        "give it more light, 10 % at least";
    QTest::newRow("a lens cap over a black level of 16, 8 bits")
        << pgm(2, 2, 255, {16, 16, 16, 16}) << QStringList{} << QStringList{dark.arg("16.0", "6.3")};
    QTest::newRow("a lens cap over a black level of 16, 12 bits")
        << pgm(2, 2, 4095, {15, 16, 16, 17}) << QStringList{} << QStringList{dark.arg("16.0", "0.4")};
    QTest::newRow("just below a tenth of full scale")
        << pgm(2, 2, 255, {25, 25, 26, 25}) << QStringList{} << QStringList{dark.arg("25.2", "9.9")};
    QTest::newRow("a tenth of full scale")
        << pgm(2, 2, 255, {25, 26, 26, 25}) << QStringList{} << QStringList{};
    QTest::newRow("samples of 12 bits in a file of 16")
        << pgm(2, 1, 65535, {3000, 3000}) << QStringList{}
        << QStringList{dark.arg("3000.0", "4.6") +
                       ", or say with --depth or --format that its samples have fewer than 16 bits"};
    QTest::newRow("the same with the depth given")
        << pgm(2, 1, 65535, {3000, 3000}) << QStringList{"--depth", "12"} << QStringList{};

    const QString wrong = "row gains are up to %1 % off, because values above half of 16 bits wrap in the "
                          "working image; bring the frame to fewer bits with convert --depth %2, exact for "
                          "left-aligned samples, or take it with less light";
    // Code 336 for the second column. 40000 and 36000 read as -25536 and -29536 and become 32020 and 26770,
    // not 52500 and 47250: row means 46010 and 33385, not 56250 and 43625.
    QTest::newRow("16 bits above half of the scale") << pgm(2, 2, 65535, {60000, 40000, 40000, 36000})
                                                     << QStringList{} << QStringList{wrong.arg("6.9", "12")};
    QTest::newRow("16 bits whose products wrap: 30000 x 1.5 x 1.5 in the second column")
        << pgm(2, 2, 65535, {32000, 30000, 30000, 2000}) << QStringList{"--normalize", "1.5"}
        << QStringList{wrong.arg("38.7", "12"), "75.0 %" + limited.arg(65535)};
    QTest::newRow("16 bits above half of the scale under gains of 1")
        << pgm(2, 2, 65535, {60000, 60000, 50000, 50000}) << QStringList{} << QStringList{};
    QTest::newRow("16 bits above half of the scale, wrapped alike in all rows")
        << pgm(2, 2, 65535, {60000, 40000, 60000, 40000}) << QStringList{} << QStringList{};
    QTest::newRow("16 bits with a stuck pixel, which becomes 65534 and not 65535")
        << pgm(40, 40, 65535, oneAmong(40 * 40, 65535, 30000)) << QStringList{"--normalize", "1.2"}
        << QStringList{};
    QTest::newRow("12 bits: 4000 under a gain of 10 becomes 40000, not 4095")
        << pgm(2, 10, 4095,
               {4000, 4000, 4000, 0, 4000, 0, 4000, 0, 4000, 0, 4000, 0, 4000, 0, 4000, 0, 4000, 0, 4000, 0})
        << QStringList{} << QStringList{wrong.arg("443.5", "10"), "50.0 %" + limited.arg(4095)};
    QTest::newRow("12 bits at the limit, which the column gains leave alone")
        << pgm(2, 2, 4095, {4095, 1000, 1000, 3000}) << QStringList{"--mean"}
        << QStringList{"25.0 % of the pixels are saturated; take the frame with less light or exposure"};

    QTest::newRow("a black column") << pgm(2, 1, 255, {0, 90}) << QStringList{}
                                    << QStringList{
                                           "1 column without light, where no gain helps; light the whole "
                                           "frame"};
    QTest::newRow("black rows") << pgm(1, 3, 255, {90, 0, 0}) << QStringList{}
                                << QStringList{
                                       "2 rows without light, where no gain helps; light the whole frame"};
    QTest::newRow("a target that limits three pixels of four: 1.3 x 1.3 x 200 is above 255")
        << pgm(2, 2, 255, {100, 200, 100, 200}) << QStringList{"--normalize", "1.3"}
        << QStringList{"100.0 %" + limited.arg(255)};
    QTest::newRow("saturated before is not limited by the correction")
        << pgm(2, 2, 255, {255, 255, 255, 255}) << QStringList{}
        << QStringList{"100.0 % of the pixels are saturated; take the frame with less light or exposure"};
    QTest::newRow("a target of next to nothing leaves the rows without a gain")
        << flat << QStringList{"--normalize", "0.001"} << QStringList{"2 row gains are" + endless};
    QTest::newRow("a target beyond all numbers")
        << flat << QStringList{"--normalize", "1e308"}
        << QStringList{"2 column gains are" + endless, "2 row gains are" + endless};
    QTest::newRow("gains that wrap at 8 fraction bits")
        << pgm(1, 1, 255, {100}) << QStringList{"--normalize", "8388608"}
        << QStringList{"1 column gain is 8388608" + wrapped, "1 row gain is 8388608" + wrapped,
                       "100.0 %" + limited.arg(255)};
    QTest::newRow("gains just below do not wrap, and limit the frame")
        << pgm(1, 1, 255, {100}) << QStringList{"--normalize", "8388607"}
        << QStringList{"100.0 %" + limited.arg(255)};
    QTest::newRow("gains that wrap at 12 fraction bits")
        << pgm(1, 1, 255, {100}) << QStringList{"--normalize", "524288", "--precision", "12"}
        << QStringList{"1 column gain is 524288" + wrapped, "1 row gain is 524288" + wrapped,
                       "100.0 %" + limited.arg(255)};
}

void TestZorffcCompute::warnsOfAPoorFrame()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, options);
    QFETCH(QStringList, warnings);
    writeFile(path("f.pgm"), frame);
    const ZorffcRun run = compute(QStringList{"f.pgm", "--output", "f.ffc"} + Header + options);
    QString lines;
    for (const QString& warning : warnings)
        lines += "zorffc: warning: f.pgm: " + warning + "\n";
    QCOMPARE(run.err, lines);
    QCOMPARE(run.exitCode, 0);
}

void TestZorffcCompute::aGuessedDepthThatLimitsPixelsIsReported_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("brightest");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("limit");
    QTest::addColumn<bool>("isAdvised");
    QTest::newRow("the largest sample needs 8 bits") << 16 << 250 << QStringList{} << 255 << true;
    QTest::newRow("the largest sample needs 10 bits") << 16 << 900 << QStringList{} << 1023 << true;
    QTest::newRow("the largest sample needs 12 bits") << 16 << 3900 << QStringList{} << 4095 << true;
    QTest::newRow("the depth is given") << 16 << 900 << QStringList{"--depth", "10"} << 1023 << false;
    QTest::newRow("the largest sample needs all 16 bits") << 16 << 63000 << QStringList{} << 65535 << false;
    QTest::newRow("samples of one byte have no more") << 8 << 240 << QStringList{} << 255 << false;
}

void TestZorffcCompute::aGuessedDepthThatLimitsPixelsIsReported()
{
    QFETCH(int, bits);
    QFETCH(int, brightest);
    QFETCH(QStringList, options);
    QFETCH(int, limit);
    QFETCH(bool, isAdvised);
    // Two bright pixels in one direction, two of half the light in the other: the bright ones get above.
    QImage image(2, 2, bits == 16 ? QImage::Format_Grayscale16 : QImage::Format_Grayscale8);
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 2; ++x) {
            const int sample = x == y ? brightest : brightest / 2;
            if (bits == 16)
                reinterpret_cast<quint16*>(image.scanLine(y))[x] = quint16(sample);
            else
                image.scanLine(y)[x] = uchar(sample);
        }
    }
    QVERIFY(image.save(path("f.png")));
    const ZorffcRun run =
        compute(QStringList{"f.png", "--output", "f.ffc", "--normalize", "1.1"} + Header + options);
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    const QString limited = QString("zorffc: warning: f.png: 50.0 % of the pixels are limited to %1 by the "
                                    "correction, which hides what is left of the pattern; ")
                                .arg(limit);
    const QString advice = "give --depth, because the depth is guessed from the largest sample, ";
    QVERIFY2(run.err.contains(limited + (isAdvised ? advice : "") + "aim lower"),
             qPrintable(run.transcript()));
}

void TestZorffcCompute::theWayOutOfAWrappedFrameLeavesItFlat()
{
    QCOMPARE(
        runZorffc(m_folder->path(), {"simulate", "-o", "f.pgm", "--depth", "16", "--level", "90"}).exitCode,
        0);
    QCOMPARE(runZorffc(m_folder->path(), {"convert", "f.pgm", "12.pgm", "--depth", "12"}).exitCode, 0);
    const auto rowsAfter = [](const ZorffcRun& run) {
        const QRegularExpression figures("row means +[0-9.]+ % +([0-9.]+) %\n");
        return figures.match(run.out).captured(1).toDouble();
    };
    const QStringList rest = QStringList{"--output", "f.ffc", "--precision", "12"} + Header;
    const ZorffcRun wrapped = compute(QStringList{"f.pgm"} + rest);
    QVERIFY2(wrapped.err.contains("wrap in the working image"), qPrintable(wrapped.transcript()));
    QVERIFY2(rowsAfter(wrapped) > 0.1, qPrintable(wrapped.transcript()));
    const ZorffcRun fewer = compute(QStringList{"12.pgm"} + rest);
    QVERIFY2(fewer.err.isEmpty(), qPrintable(fewer.transcript()));
    QVERIFY2(fewer.exitCode == 0 && rowsAfter(fewer) < 0.02, qPrintable(fewer.transcript()));
}

void TestZorffcCompute::keepsALinkAndThePermissionsOfTheTarget()
{
    writeFile(path("f.pgm"), twoColumns());
    writeFile(path("real.ffc"), "what was there");
    const QFile::Permissions permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
    QVERIFY(QFile::setPermissions(path("real.ffc"), permissions));
    QVERIFY(QFile::link("real.ffc", path("link.ffc")));

    const ZorffcRun run = compute(QStringList{"f.pgm", "--output", "link.ffc"} + Header);
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    QVERIFY(QFileInfo(path("link.ffc")).isSymLink());
    QCOMPARE(readFile(path("real.ffc")), fileText("1,512\n2,256\n", "1,256\n2,256\n"));
    // Without the four bits that Qt works out for whoever asks.
    constexpr int ownerGroupOthers = 0x7077;
    QCOMPARE(int(QFile::permissions(path("real.ffc"))) & ownerGroupOthers, int(permissions));
}

void TestZorffcCompute::keepsTheOwnerOfTheTarget()
{
    writeFile(path("f.pgm"), twoColumns());
    writeFile(path("f.ffc"), "what was there");
    const QByteArray target = QFile::encodeName(path("f.ffc"));
    if (::chown(target.constData(), 12345, 23456) != 0)
        QSKIP("only root may give files away");
    // The bit of the set user ID goes when a file is given away, unless it is set after that.
    QCOMPARE(::chmod(target.constData(), 04640), 0);

    const ZorffcRun run = compute(QStringList{"f.pgm", "--output", "f.ffc"} + Header);
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    QCOMPARE(readFile(path("f.ffc")), fileText("1,512\n2,256\n", "1,256\n2,256\n"));
    struct stat now
    {
    };
    QCOMPARE(::stat(target.constData(), &now), 0);
    QCOMPARE(now.st_uid, uid_t(12345));
    QCOMPARE(now.st_gid, gid_t(23456));
    QCOMPARE(now.st_mode & 07777, mode_t(04640));
}

void TestZorffcCompute::takesItsEndingInCapitalLetters()
{
    writeFile(path("f.pgm"), twoColumns());
    const ZorffcRun run = compute(QStringList{"f.pgm", "--output", "F.FFC"} + Header);
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    QCOMPARE(readFile(path("F.FFC")), fileText("1,512\n2,256\n", "1,256\n2,256\n"));
}

void TestZorffcCompute::needsNoScreen()
{
    writeFile(path("f.pgm"), twoColumns());
    QProcessEnvironment bare = QProcessEnvironment::systemEnvironment();
    bare.remove("DISPLAY");
    bare.remove("WAYLAND_DISPLAY");
    bare.insert("QT_QPA_PLATFORM", "xcb");
    const ZorffcRun run =
        runZorffc(m_folder->path(), QStringList{"compute", "f.pgm", "--output", "f.ffc"} + Header, bare);
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));
    QCOMPARE(readFile(path("f.ffc")), fileText("1,512\n2,256\n", "1,256\n2,256\n"));
}

QTEST_GUILESS_MAIN(TestZorffcCompute)
#include "tst_zorffc_compute.moc"
