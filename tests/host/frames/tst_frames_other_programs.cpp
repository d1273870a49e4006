#include "tests/host/frames/FrameFiles.h"
#include "tests/support/FormatCodes.h"

#include <QDir>
#include <QtTest>

namespace {

using Formula = int (*)(int x, int y);

// The sources of the files, as their README makes them.
int grey8(int x, int y)
{
    return (37 * x + 101 * y + x * y) % 256;
}

int grey12(int x, int y)
{
    return (211 * x + 97 * y + 3 * x * y) % 4096;
}

int grey16(int x, int y)
{
    return (4099 * x + 977 * y + 31 * x * y) % 65536;
}

int squares(int x, int y)
{
    return 20 + 40 * (x / 8) + 70 * (y / 8);
}

/// What a file's source holds: a formula for each channel.
using Source = QList<Formula>;

const Source Colour8{[](int x, int y) { return (37 * x + 101 * y + x * y) % 256; },
                     [](int x, int y) { return (53 * x + 29 * y + 3) % 256; },
                     [](int x, int y) { return (11 * x + 67 * y + 5 * x * y) % 256; }};
const Source Colour12{[](int x, int y) { return (211 * x + 97 * y + 3 * x * y) % 4096; },
                      [](int x, int y) { return (89 * x + 307 * y + 9) % 4096; },
                      [](int x, int y) { return (401 * x + 61 * y + x * y) % 4096; }};
const Source Colour16{[](int x, int y) { return (4099 * x + 977 * y + 31 * x * y) % 65536; },
                      [](int x, int y) { return (1021 * x + 3001 * y + 7) % 65536; },
                      [](int x, int y) { return (257 * x + 5003 * y + 13 * x * y) % 65536; }};
const Source FourColours{[](int, int) { return 255; }, [](int x, int y) { return (x + y) % 4 * 85; },
                         [](int, int) { return 0; }};
const Source ColourSquares{squares, [](int x, int) { return 250 - 60 * (x / 8); },
                           [](int, int y) { return 5 + 200 * (y / 8); }};

bool isSquares(const Source& source)
{
    return source.first() == squares;
}

QList<int> samplesOf(const Source& source)
{
    QList<int> samples;
    for (int y = 0; y < (isSquares(source) ? 16 : 21); ++y)
        for (int x = 0; x < (isSquares(source) ? 24 : 19); ++x)
            for (const Formula formula : source)
                samples.append(formula(x, y));
    return samples;
}

std::string pathOf(const char* name)
{
    return QDir(PICTURE_FILES).filePath(name).toStdString();
}

/// What reading a file gives: the samples of its source, or an error.
struct Expectation
{
    Source source;
    QString format;
    QString error;
};

/// One for each file, by its name.
QMap<QString, Expectation> expectations()
{
    QMap<QString, Expectation> all;
    const auto gives = [&all](const Source& source, const char* format, const QStringList& names) {
        for (const QString& name : names)
            all[name] = {source, format, {}};
    };
    gives({grey8}, "Mono8", {"grey8.pgm", "strip-8.tif", "low-bit-first-8.tif", "planes-8-packbits.tif"});
    gives({grey8}, "Mono8",
          {"pages-8-then-16.tif", "netpbm-8.png", "netpbm-8-interlaced.png", "pngfix-8.png"});
    gives({grey8}, "Mono8", {"netpbm-8-transparent.png", "imagemagick-8-interlaced.png"});
    gives({grey12}, "Mono12", {"grey12.pgm", "netpbm-12-in-16.png"});
    gives({grey16}, "Mono16", {"grey16.pgm", "grey16-plain.pgm", "strip-16.tif", "low-bit-first-16-lzw.tif"});
    gives({squares}, "Mono8", {"squares.pgm", "strips-8-jpeg.tif", "tiles-8-jpeg.tif"});
    for (const char* compression :
         {"none", "packbits", "lzw", "lzw-predictor", "zip", "zip-predictor", "lzma", "lzma-predictor",
          "zstd", "zstd-predictor", "lerc", "lerc-deflate", "lerc-zstd"}) {
        gives({grey8}, "Mono8", {QString("strips-8-%1.tif").arg(compression)});
        gives({grey16}, "Mono16", {QString("tiles-16-%1.tif").arg(compression)});
    }
    for (const char* way :
         {"strips-16", "strips-16-zip-predictor", "tiles-16-lzw-predictor", "tiles-16-lerc"})
        gives({grey16}, "Mono16", {QString("big-endian-%1.tif").arg(way)});
    gives({grey16}, "Mono16", {"bigtiff-strips-16-lzw.tif", "bigtiff-big-endian-tiles-16.tif"});
    for (const char* way : {"", "-interlaced", "-nofilter", "-sub", "-up", "-avg", "-paeth"})
        gives({grey16}, "Mono16", {QString("netpbm-16%1.png").arg(way)});
    gives({grey16}, "Mono16", {"imagemagick-16.png", "graphicsmagick-16.png", "pngcrush-16.png"});
    gives({grey16}, "Mono16", {"imagemagick-16.tif", "graphicsmagick-16.tif", "netpbm-16.tif"});
    gives({grey16}, "Mono16", {"optipng-16-interlaced.png"});

    gives(FourColours, "RGB8", {"four-colours.ppm", "palette.png", "palette-interlaced.png", "rgb-8.png"});
    gives(FourColours, "RGB8", {"netpbm-palette-transparent.png", "imagemagick-palette.png"});
    gives(FourColours, "RGB8", {"rgb-8.tif", "rgb-8-planes.tif"});
    gives(Colour8, "RGB8", {"colour8.ppm", "netpbm-colour-8.png", "imagemagick-colour-8-interlaced.png"});
    gives(Colour8, "RGB8", {"optipng-colour-8-interlaced.png", "graphicsmagick-colour-8.tif"});
    gives(Colour8, "RGB8", {"colour-strip-8.tif", "colour-plane-tiles-8-zip-predictor.tif"});
    gives(Colour8, "RGB8", {"colour-low-bit-first-8-zip.tif"});
    gives(Colour12, "RGB12", {"colour12.ppm", "netpbm-colour-12-in-16.png"});
    gives(ColourSquares, "RGB8",
          {"colour-squares.ppm", "colour-strips-8-jpeg.tif", "colour-tiles-8-jpeg.tif"});
    for (const char* compression :
         {"packbits", "lzw", "lzw-predictor", "zip", "zip-predictor", "lzma", "zstd-predictor", "lerc"}) {
        gives(Colour8, "RGB8", {QString("colour-strips-8-%1.tif").arg(compression)});
        gives(Colour16, "RGB16", {QString("colour-tiles-16-%1.tif").arg(compression)});
        gives(Colour8, "RGB8", {QString("colour-planes-8-%1.tif").arg(compression)});
    }
    gives(Colour16, "RGB16", {"colour16.ppm", "colour16-plain.ppm", "colour-strip-16.tif"});
    gives(Colour8, "RGB8", {"colour-planes-8-none.tif", "colour-big-endian-plane-tiles-8.tif"});
    gives(Colour16, "RGB16",
          {"colour-big-endian-strips-16-lzw-predictor.tif", "colour-bigtiff-strips-16.tif"});
    gives(Colour16, "RGB16", {"netpbm-colour-16.tif", "imagemagick-colour-16.tif"});
    gives(Colour16, "RGB16", {"imagemagick-colour-planes-16.tif", "netpbm-colour-16.png"});
    gives(Colour16, "RGB16", {"netpbm-colour-16-interlaced.png", "imagemagick-colour-16.png"});
    gives(Colour16, "RGB16", {"graphicsmagick-colour-16.png", "pngcrush-colour-16.png"});

    const auto refuses = [&all](const QString& error, const QStringList& names) {
        for (const QString& name : names)
            all[name] = {{}, {}, error};
    };
    const QString bits = "has %1 bits a sample; save it as grey or RGB of 8 or 16 bits";
    refuses(bits.arg(1), {"bits-1-none.tif", "bits-1-packbits.tif", "bits-1-g3-1d.tif", "bits-1-g3-2d.tif"});
    refuses(bits.arg(1), {"bits-1-g4.tif", "bits-1-g4-white-is-zero.tif", "bits-1-jbig.tif", "grey-1.png"});
    refuses(bits.arg(2), {"bits-2.tif", "grey-2-interlaced.png"});
    refuses(bits.arg(4), {"bits-4.tif", "grey-4.png"});
    for (const int count : {10, 12, 14, 32})
        refuses(bits.arg(count), {QString("bits-%1.tif").arg(count)});
    refuses(bits.arg(32), {"float-32.tif"});
    refuses("has signed or floating point samples; save it with unsigned ones of 8 or 16 bits",
            {"float-16.tif", "signed-16.tif"});
    const QString colours = "is a TIFF with %1; save it as grey or RGB of 8 or 16 bits";
    refuses(colours.arg("a palette"), {"palette-2.tif", "palette-8.tif"});
    refuses(colours.arg("CMYK colours"), {"colour-cmyk-8.tif"});
    refuses(colours.arg("Lab colours"), {"colour-lab-16.tif"});
    refuses(colours.arg("YCbCr colours"), {"colour-ycbcr-jpeg.tif"});
    refuses("its compression 50001 (WEBP) is not read here; save it uncompressed, or with LZW or Deflate",
            {"rgb-8-webp.tif"});
    const QString samples =
        "is a TIFF with %1 samples a pixel, where %2; save it without alpha and other channels";
    refuses(samples.arg("2", "grey has 1"), {"alpha-8.tif"});
    refuses(samples.arg("4", "RGB has 3"), {"colour-alpha-8.tif"});
    refuses("is a PNG with alpha; save it without, as grey or RGB of 8 or 16 bits",
            {"alpha-8.png", "colour-alpha-8.png"});
    refuses("is a bitmap or PAM file of the PNM family; save it as PGM or PPM (P2, P3, P5 or P6)",
            {"bits.pbm"});
    refuses("is a TIFF whose 0 is white; give --white-is-zero stored to take the samples as they are, or "
            "--white-is-zero inverted to take full scale less the sample",
            {"white-is-zero-8-netpbm.tif", "white-is-zero-16.tif", "white-is-zero-big-endian-tiles-16.tif"});
    return all;
}

} // namespace

Q_DECLARE_METATYPE(Expectation)
Q_DECLARE_METATYPE(Formula)

/// Picture files that other programs made, in every way in which a picture can be stored.
class TestFramesOtherPrograms : public QObject
{
    Q_OBJECT

private slots:
    void everyFileHasItsExpectation();
    void aFileIsReadOrRefused_data();
    void aFileIsReadOrRefused();
    void whiteIsZeroDecides_data();
    void whiteIsZeroDecides();
};

void TestFramesOtherPrograms::everyFileHasItsExpectation()
{
    QStringList files = QDir(PICTURE_FILES).entryList(QDir::Files);
    QVERIFY(files.removeOne("README.md"));
    files.sort();
    QCOMPARE(files, QStringList(expectations().keys()));
}

void TestFramesOtherPrograms::aFileIsReadOrRefused_data()
{
    QTest::addColumn<Expectation>("expected");
    const auto all = expectations();
    for (auto it = all.begin(); it != all.end(); ++it)
        QTest::newRow(qPrintable(it.key())) << it.value();
}

void TestFramesOtherPrograms::aFileIsReadOrRefused()
{
    QFETCH(Expectation, expected);
    const std::string path = pathOf(QTest::currentDataTag());
    try {
        const zor::Frame frame = zor::readFrame(path, {});
        QVERIFY(!expected.source.isEmpty());
        QCOMPARE(frame.width, isSquares(expected.source) ? 24U : 19U);
        QCOMPARE(frame.height, isSquares(expected.source) ? 16U : 21U);
        QCOMPARE(frame.pixelType, codeOf(expected.format.toStdString()));
        QCOMPARE(samplesOf(frame), samplesOf(expected.source));
    } catch (const zor::FrameError& error) {
        QCOMPARE(QString(error.what()), QString::fromStdString(path) + ": " + expected.error);
    }
}

void TestFramesOtherPrograms::whiteIsZeroDecides_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("inverted");
    QTest::addColumn<Formula>("formula");
    // netpbm stores the source inverted, the other two are marked alone.
    QTest::newRow("netpbm's file inverted") << "white-is-zero-8-netpbm.tif" << true << Formula(grey8);
    QTest::newRow("netpbm's file as it is")
        << "white-is-zero-8-netpbm.tif" << false << Formula([](int x, int y) { return 255 - grey8(x, y); });
    for (const char* file : {"white-is-zero-16.tif", "white-is-zero-big-endian-tiles-16.tif"}) {
        QTest::addRow("%s as it is", file) << QString(file) << false << Formula(grey16);
        QTest::addRow("%s inverted", file)
            << QString(file) << true << Formula([](int x, int y) { return 65535 - grey16(x, y); });
    }
}

void TestFramesOtherPrograms::whiteIsZeroDecides()
{
    QFETCH(QString, file);
    QFETCH(bool, inverted);
    QFETCH(Formula, formula);
    zor::FrameOptions options;
    options.whiteIsZero = inverted ? zor::WhiteIsZero::Inverted : zor::WhiteIsZero::Stored;
    QCOMPARE(samplesOf(zor::readFrame(pathOf(qPrintable(file)), options)), samplesOf(Source{formula}));
}

QTEST_GUILESS_MAIN(TestFramesOtherPrograms)
#include "tst_frames_other_programs.moc"
