#include "tests/host/ZorffcRun.h"

#include "tests/host/frames/MakePng.h"
#include "tests/host/frames/TiffEntries.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/resource.h>

namespace {

const QStringList Header{"--title", "Title", "--camera", "Camera"};

QString otherProgramsFile(const QString& name)
{
    return QDir(PICTURE_FILES).filePath(name);
}

} // namespace

/// Picture files as frames: what only some kinds of them need, and those that claim more than they hold.
class TestZorffcPictures : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aWhiteZeroNeedsItsOption_data();
    void aWhiteZeroNeedsItsOption();
    void aWhiteZeroIsTakenAsAsked_data();
    void aWhiteZeroIsTakenAsAsked();
    void everyCommandTakesTheSameSamples();
    void theOptionIsRefusedWhereItCannotMatter_data();
    void theOptionIsRefusedWhereItCannotMatter();
    void aFileThatClaimsMoreThanItHoldsTakesNoMemory_data();
    void aFileThatClaimsMoreThanItHoldsTakesNoMemory();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    ZorffcRun run(const QStringList& arguments) const { return runZorffc(m_folder->path(), arguments); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestZorffcPictures::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    QVERIFY(QFile::copy(otherProgramsFile("white-is-zero-8-netpbm.tif"), path("white.tif")));
    writeFile(path("black.pgm"), readFile(otherProgramsFile("grey8.pgm")));
}

void TestZorffcPictures::aWhiteZeroNeedsItsOption_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("compute") << QStringList{"compute", "white.tif", "-o", "out.ffc"} + Header;
    QTest::newRow("report") << QStringList{"report", "white.tif", "--ffc", "f.ffc", "-o", "out.png"};
    QTest::newRow("convert") << QStringList{"convert", "white.tif", "out.png"};
}

void TestZorffcPictures::aWhiteZeroNeedsItsOption()
{
    QFETCH(QStringList, arguments);
    QCOMPARE(run(QStringList{"compute", "black.pgm", "-o", "f.ffc"} + Header).exitCode, 0);
    const QStringList before = namesIn(m_folder->path());
    const ZorffcRun refused = run(arguments);
    QVERIFY2(refused.exitCode == 2 && refused.err.count('\n') == 1, qPrintable(refused.transcript()));
    QVERIFY2(refused.err.startsWith(
                 "zorffc: white.tif: is a TIFF whose 0 is white; give --white-is-zero stored to take the "
                 "samples as they are, or --white-is-zero inverted to take full scale less the sample"),
             qPrintable(refused.transcript()));
    QCOMPARE(namesIn(m_folder->path()), before);

    const ZorffcRun done = run(arguments + QStringList{"--white-is-zero", "stored"});
    QVERIFY2(done.exitCode == 0, qPrintable(done.transcript()));
}

void TestZorffcPictures::aWhiteZeroIsTakenAsAsked_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("way");
    QTest::addColumn<QString>("source");
    // netpbm stores what it is given inverted, libtiff's tool marks it alone.
    QTest::newRow("inverted") << "white-is-zero-8-netpbm.tif"
                              << "inverted"
                              << "grey8.pgm";
    QTest::newRow("stored") << "white-is-zero-16.tif"
                            << "stored"
                            << "grey16.pgm";
}

void TestZorffcPictures::aWhiteZeroIsTakenAsAsked()
{
    QFETCH(QString, file);
    QFETCH(QString, way);
    QFETCH(QString, source);
    const ZorffcRun done = run({"convert", otherProgramsFile(file), "out.pgm", "--white-is-zero", way});
    QVERIFY2(done.exitCode == 0, qPrintable(done.transcript()));
    QCOMPARE(readFile(path("out.pgm")), readFile(otherProgramsFile(source)));
}

void TestZorffcPictures::everyCommandTakesTheSameSamples()
{
    // Two lines are about the frame and its depth, which a PGM gives by its maxval.
    const auto figures = [](const ZorffcRun& done) { return done.out.section('\n', 2); };
    const ZorffcRun computed = run(QStringList{"compute", "black.pgm", "-o", "f.ffc"} + Header);
    QVERIFY2(computed.exitCode == 0, qPrintable(computed.transcript()));
    const ZorffcRun shown = run({"report", "black.pgm", "--ffc", "f.ffc", "-o", "f.png"});
    QVERIFY2(shown.exitCode == 0, qPrintable(shown.transcript()));

    const QStringList inverted{"--white-is-zero", "inverted"};
    const ZorffcRun computedInverted =
        run(QStringList{"compute", "white.tif", "-o", "f.ffc"} + Header + inverted);
    QCOMPARE(figures(computedInverted), figures(computed));
    const ZorffcRun shownInverted =
        run(QStringList{"report", "white.tif", "--ffc", "f.ffc", "-o", "f.png"} + inverted);
    QCOMPARE(figures(shownInverted), figures(shown));
}

void TestZorffcPictures::theOptionIsRefusedWhereItCannotMatter_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("says");
    QTest::newRow("a TIFF whose 0 is black")
        << QStringList{otherProgramsFile("strip-8.tif"), "--white-is-zero", "stored"}
        << "strip-8.tif: is a TIFF whose 0 is black; leave --white-is-zero out";
    QTest::newRow("a PGM") << QStringList{"black.pgm", "--white-is-zero", "inverted"}
                           << "black.pgm: is no TIFF file, so that its 0 is black; leave --white-is-zero out";
    QTest::newRow("a raw dump") << QStringList{"black.pgm", "--white-is-zero", "inverted", "--format",
                                               "Mono8",     "--size",          "2x2"}
                                << "--white-is-zero";
    QTest::newRow("a way that is none")
        << QStringList{"white.tif", "--white-is-zero", "white"} << "--white-is-zero: white not in";
    QTest::newRow("no way") << QStringList{"white.tif", "--white-is-zero"} << "--white-is-zero";
}

void TestZorffcPictures::theOptionIsRefusedWhereItCannotMatter()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, says);
    const QStringList before = namesIn(m_folder->path());
    const ZorffcRun refused = run(QStringList{"convert"} + arguments + QStringList{"--", "out.png"});
    QVERIFY2(refused.exitCode == 2 && refused.err.count('\n') == 1, qPrintable(refused.transcript()));
    QVERIFY2(refused.err.contains(says), qPrintable(refused.transcript()));
    QCOMPARE(namesIn(m_folder->path()), before);
}

void TestZorffcPictures::aFileThatClaimsMoreThanItHoldsTakesNoMemory_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("says");

    // 300 strips of 100 rows in one place.
    constexpr quint32 side = 30000;
    const QByteArray strip = qCompress(QByteArray(100 * int{side}, '\0'), 9).mid(4);
    TiffEntries entries = greyEntries(side, side, 8);
    entries[278] = {100};
    for (int i = 0; i < 300; ++i) {
        entries[273].append(TiffDataPlace);
        entries[279].append(quint32(strip.size()));
    }
    QTest::newRow("a TIFF whose strips share one place")
        << tiffOfEntries(entries, strip)
        << "its header asks for 900000000 bytes of samples, which takes a "
           "file of at least 872093 bytes; it has ";
    // As many bytes as the claim needs, which are no samples.
    QTest::newRow("a TIFF that is filled up")
        << tiffOfEntries(entries, "no strip", 1000000)
        << "the TIFF data are broken (Decoding error at scanline 0, incorrect header check)";
    PngContent content;
    content.width = 2;
    content.height = 2;
    content.samples = {1, 2, 3, 4};
    const QByteArray png = makePng(content);
    content.interlaced = true;
    const QByteArray interlaced = makePng(content);
    QTest::newRow("a PNG of the largest sides")
        << pngWithSides(png, 65535, 65535)
        << "its header asks for 4294836225 bytes of samples, which takes a "
           "file of at least 4161663 bytes; it has ";
    QTest::newRow("a PNG that is filled up")
        << pngWithSides(png, side, side) + QByteArray(1000000, '\0') << "the PNG data are broken (";
    const QByteArray text =
        pngChunk("zTXt", QByteArray("text\0\0", 6) + qCompress(QByteArray(7900000, ' '), 9).mid(4));
    QTest::newRow("a PNG with texts that unfold to 632 MB")
        << pngWithChunks(png, text.repeated(80)).chopped(1)
        << "the PNG data are broken (the file ends too early)";
    QTest::newRow("an interlaced PNG that is filled up")
        << pngWithSides(interlaced, side, side) + QByteArray(1000000, '\0') << "the PNG data are broken (";
    // About as many samples in three channels.
    constexpr quint32 colourSide = 17000;
    content.colorType = 2;
    content.samples = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    QTest::newRow("an interlaced PNG in colour that is filled up")
        << pngWithSides(makePng(content), colourSide, colourSide) + QByteArray(3000000, '\0')
        << "the PNG data are broken (";
    content.colorType = 3;
    content.bits = 1;
    content.palette = {0xFF0000, 0x00FF00};
    content.samples = {0, 1, 1, 0};
    QTest::newRow("an interlaced PNG with a palette that is filled up")
        << pngWithSides(makePng(content), colourSide, colourSide) + QByteArray(1000000, '\0')
        << "the PNG data are broken (";
    QTest::newRow("a PPM of the largest size")
        << QByteArray("P6 65535 21845 255 A") << "its header asks for 4294836225 bytes of samples";
    entries = greyEntries(colourSide, colourSide, 8);
    entries[258] = {8, 8, 8};
    entries[262] = {2};
    entries[277] = {3};
    entries[284] = {2};
    entries[278] = {colourSide};
    for (int i = 0; i < 3; ++i) {
        entries[273].append(TiffDataPlace);
        entries[279].append(1000000);
    }
    QTest::newRow("a TIFF in planes that is filled up")
        << tiffOfEntries(entries, "no strip", 3000000)
        << "the TIFF data are broken (Decoding error at scanline 0, incorrect header check)";
}

void TestZorffcPictures::aFileThatClaimsMoreThanItHoldsTakesNoMemory()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, says);
    writeFile(path("frame"), bytes);
    const ZorffcRun refused = run({"convert", "frame", "out.png"});
    QVERIFY2(refused.exitCode == 2 && refused.err.count('\n') == 1, qPrintable(refused.transcript()));
    QVERIFY2(refused.err.contains("frame: " + says), qPrintable(refused.transcript()));

    // The most that any run of this program has had in memory.
    rusage usage = {};
    QCOMPARE(::getrusage(RUSAGE_CHILDREN, &usage), 0);
    constexpr long most = 400 * 1024; // KiB: less than half of the smallest claim
    QVERIFY2(usage.ru_maxrss < most, qPrintable(QString("%1 KiB").arg(usage.ru_maxrss)));
}

QTEST_GUILESS_MAIN(TestZorffcPictures)
#include "tst_zorffc_pictures.moc"
