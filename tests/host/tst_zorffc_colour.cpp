#include "tests/host/ZorffcRun.h"
#include "tests/host/frames/MakePng.h"
#include "tests/host/frames/MakeTiff.h"

#include <QTemporaryDir>
#include <QtTest>

/// Colour pictures as frames: every command gives what it gives for the raw dump of their samples.
class TestZorffcColour : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void everyCommandGivesWhatTheDumpGives_data();
    void everyCommandGivesWhatTheDumpGives();
    void warningsAreAboutTheLuma();
    void anAskedDepthOverrides();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    ZorffcRun run(const QStringList& arguments) const { return runZorffc(m_folder->path(), arguments); }
    ZorffcRun compute(const QStringList& arguments) const
    {
        return run(QStringList{"compute", "--title", "Title", "--camera", "Camera"} + arguments);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

using Samples = QList<int>;

constexpr int Width = 13;
constexpr int Height = 7;

/// Light that falls off to the right and downwards, other in each channel.
Samples flat(int depth)
{
    Samples samples;
    const int full = (1 << depth) - 1;
    for (int y = 0; y < Height; ++y) {
        for (int x = 0; x < Width; ++x)
            samples << full * 5 / (6 + x) << full * 4 / (6 + y) << full * 6 / (9 + x + y);
    }
    return samples;
}

/// A byte to depth 8, else two.
QByteArray words(const Samples& samples, int depth, bool highFirst)
{
    QByteArray bytes;
    for (const int sample : samples) {
        if (depth > 8 && highFirst)
            bytes.append(char(sample >> 8));
        bytes.append(char(sample));
        if (depth > 8 && !highFirst)
            bytes.append(char(sample >> 8));
    }
    return bytes;
}

QByteArray ppm(const Samples& samples, int depth)
{
    const QString header = QString("P6 %1 %2 %3\n").arg(Width).arg(samples.size() / 3 / Width);
    return header.arg((1 << depth) - 1).toLatin1() + words(samples, depth, true);
}

QByteArray png(const Samples& samples, int depth)
{
    PngContent content;
    content.width = Width;
    content.height = Height;
    content.bits = depth > 8 ? 16 : 8;
    content.colorType = 2;
    content.significantBits = depth;
    content.samples = samples;
    return makePng(content);
}

QByteArray tiff(const Samples& samples, int depth, bool planes)
{
    TiffContent content;
    content.width = Width;
    content.height = Height;
    content.bits = depth > 8 ? 16 : 8;
    content.samplesPerPixel = 3;
    content.planes = planes;
    content.photometric = 2;
    content.compression = 5;
    content.maxSampleValue = (1 << depth) - 1;
    content.samples = samples;
    return makeTiff(content);
}

QStringList dumpOptions(const QString& format)
{
    return {"--format", format, "--size", QString("%1x%2").arg(Width).arg(Height)};
}

/// The summary without the two lines about the frame and the depth's source.
QString figures(const ZorffcRun& done)
{
    return done.out.section('\n', 2);
}

/// A coefficient file from its tables on, without the date.
QByteArray tables(const QByteArray& file)
{
    return file.mid(file.indexOf(":Table,"));
}

} // namespace

void TestZorffcColour::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void TestZorffcColour::everyCommandGivesWhatTheDumpGives_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<QByteArray>("picture");
    QTest::addColumn<QString>("source");
    for (const int depth : {8, 10, 12, 16}) {
        const Samples samples = flat(depth);
        const int full = (1 << depth) - 1;
        QTest::addRow("PPM of %d bits", depth)
            << depth << ppm(samples, depth) << QString("maxval %1").arg(full);
        QTest::addRow("PNG of %d bits", depth)
            << depth << png(samples, depth) << QString("sBIT %1").arg(depth);
        QTest::addRow("TIFF of %d bits", depth)
            << depth << tiff(samples, depth, false) << QString("MaxSampleValue %1").arg(full);
        QTest::addRow("TIFF of %d bits in planes", depth)
            << depth << tiff(samples, depth, true) << QString("MaxSampleValue %1").arg(full);
    }
}

void TestZorffcColour::everyCommandGivesWhatTheDumpGives()
{
    QFETCH(int, depth);
    QFETCH(QByteArray, picture);
    QFETCH(QString, source);
    const QString format = QString("RGB%1").arg(depth);
    const QStringList dump = QStringList{"f.raw"} + dumpOptions(format);
    writeFile(path("f.raw"), words(flat(depth), depth, false));
    writeFile(path("picture"), picture);

    const ZorffcRun expected = compute(dump + QStringList{"-o", "f.ffc"});
    QVERIFY2(expected.exitCode == 0, qPrintable(expected.transcript()));
    const QByteArray gains = readFile(path("f.ffc"));
    const ZorffcRun computed = compute({"picture", "-o", "f.ffc"});
    QVERIFY2(computed.out.contains(QString("Format           %1 (depth from %2), brought to Mono%3\n")
                                       .arg(format, source)
                                       .arg(depth)),
             qPrintable(computed.transcript()));
    QCOMPARE(figures(computed), figures(expected));
    QCOMPARE(computed.err, QString(expected.err).replace("f.raw", "picture"));
    QCOMPARE(tables(readFile(path("f.ffc"))), tables(gains));
    QVERIFY(tables(gains).count('\n') > Width + Height);

    const QStringList reported{"--ffc", "f.ffc", "-o", "f.png"};
    QCOMPARE(figures(run(QStringList{"report", "picture"} + reported)),
             figures(run(QStringList{"report"} + dump + reported)));

    QCOMPARE(run(QStringList{"convert"} + dump + QStringList{"f.pgm"}).exitCode, 0);
    const QByteArray luma = readFile(path("f.pgm"));
    QCOMPARE(run({"convert", "picture", "f.pgm"}).exitCode, 0);
    QCOMPARE(readFile(path("f.pgm")), luma);
    QVERIFY(luma.startsWith("P5\n13 7\n"));
}

void TestZorffcColour::warningsAreAboutTheLuma()
{
    // Red is at its limit everywhere; a pixel of four is white.
    Samples samples;
    for (int i = 0; i < 4 * Width; ++i)
        samples << 255 << (i % 4 == 0 ? 255 : 100) << (i % 4 == 0 ? 255 : 100);
    writeFile(path("f.ppm"), ppm(samples, 8));
    const ZorffcRun done = compute({"f.ppm", "-o", "f.ffc", "--mean"});
    QVERIFY2(done.exitCode == 0, qPrintable(done.transcript()));
    QVERIFY2(done.err.contains("25.0 % of the pixels are saturated"), qPrintable(done.transcript()));
}

void TestZorffcColour::anAskedDepthOverrides()
{
    writeFile(path("f.ppm"), ppm(flat(8), 8));
    const ZorffcRun done = compute({"f.ppm", "-o", "f.ffc", "--depth", "12"});
    QVERIFY2(done.out.contains("Format           RGB12 (depth from --depth 12), brought to Mono12\n"),
             qPrintable(done.transcript()));
}

QTEST_GUILESS_MAIN(TestZorffcColour)
#include "tst_zorffc_colour.moc"
