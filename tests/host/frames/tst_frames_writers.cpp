#include "host/frames/Png.h"
#include "host/frames/Pnm.h"
#include "host/frames/Tiff.h"
#include "image/MonoTarget.h"
#include "image/Pitch.h"
#include "tests/host/frames/FrameFiles.h"

#include <QImage>
#include <QtTest>

#include <cstring>
#include <tiffio.h>

/// Pictures as PGM, PNG and TIFF files: the bytes, what our own readers and others make of them.
class TestFramesWriters : public QObject
{
    Q_OBJECT

private slots:
    void aPgmIsItsHeaderAndItsSamples_data();
    void aPgmIsItsHeaderAndItsSamples();
    void readingBackGivesSamplesAndDepth_data();
    void readingBackGivesSamplesAndDepth();
    void anotherPngReaderSeesTheSamples_data();
    void anotherPngReaderSeesTheSamples();
    void aPngTellsItsDepthAbove8Bits_data();
    void aPngTellsItsDepthAbove8Bits();
    void aTiffIsPlainGrey_data();
    void aTiffIsPlainGrey();

private:
    FrameFiles m_files;
};

namespace {

using Samples = QList<int>;

/// A frame in the plain mono format of the depth; the bytes after a row's pixels are 0xEE.
zor::Frame picture(std::uint32_t depth, std::uint32_t width, const Samples& samples,
                   std::uint32_t padding = 0)
{
    zor::Frame frame;
    frame.width = width;
    frame.height = std::uint32_t(samples.size()) / width;
    frame.pixelType = zor::computeFormat(depth);
    frame.pitch = std::uint32_t(zor::tightPitch(frame.pixelType, width)) + padding;
    frame.pixels.assign(std::size_t{frame.pitch} * frame.height, 0xEE);
    for (int i = 0; i < samples.size(); ++i) {
        const auto x = std::uint32_t(i) % width;
        std::uint8_t* line = frame.pixels.data() + std::uint32_t(i) / width * frame.pitch;
        const std::uint16_t sample = std::uint16_t(samples[i]);
        if (depth == 8)
            line[x] = std::uint8_t(sample);
        else
            std::memcpy(line + 2 * x, &sample, 2);
    }
    return frame;
}

/// Shapes and samples of every depth.
void addPictures()
{
    QTest::addColumn<quint32>("depth");
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint32>("padding");
    QTest::addColumn<Samples>("samples");
    for (const quint32 depth : {8U, 10U, 12U, 16U}) {
        const int full = (1 << depth) - 1;
        QTest::addRow("%u bits, one pixel", depth) << depth << 1U << 0U << Samples{full};
        QTest::addRow("%u bits, nothing but black", depth) << depth << 2U << 0U << Samples{0, 0, 0, 0};
        QTest::addRow("%u bits, small samples alone", depth) << depth << 3U << 0U << Samples{1, 2, 3};
        QTest::addRow("%u bits, from 0 to full scale, padded rows", depth)
            << depth << 3U << 4U << Samples{0, 1, full / 2, full - 1, full, full / 3};
        Samples many;
        for (int i = 0; i < 67 * 41; ++i)
            many.append(i * 7919 % (full + 1));
        QTest::addRow("%u bits, 67 x 41", depth) << depth << 67U << 1U << many;
    }
}

QByteArray bytesOf(const std::string& text)
{
    return {text.data(), int(text.size())};
}

QByteArray fileOf(const QString& kind, const zor::Frame& frame)
{
    if (kind == "PGM")
        return bytesOf(zor::pnmBytes(frame.record()));
    return bytesOf(kind == "PNG" ? zor::pngBytes(frame.record()) : zor::tiffBytes(frame.record()));
}

} // namespace

void TestFramesWriters::aPgmIsItsHeaderAndItsSamples_data()
{
    QTest::addColumn<quint32>("depth");
    QTest::addColumn<Samples>("samples");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("8 bits") << 8U << Samples{0, 1, 254, 255}
                            << QByteArray("P5\n2 2\n255\n\x00\x01\xFE\xFF", 15);
    QTest::newRow("10 bits") << 10U << Samples{0, 1, 0x3FE, 0x3FF}
                             << QByteArray("P5\n2 2\n1023\n\x00\x00\x00\x01\x03\xFE\x03\xFF", 20);
    QTest::newRow("12 bits") << 12U << Samples{0, 1, 0xFFE, 0xFFF}
                             << QByteArray("P5\n2 2\n4095\n\x00\x00\x00\x01\x0F\xFE\x0F\xFF", 20);
    QTest::newRow("16 bits") << 16U << Samples{0, 1, 0xFFFE, 0xFFFF}
                             << QByteArray("P5\n2 2\n65535\n\x00\x00\x00\x01\xFF\xFE\xFF\xFF", 21);
}

void TestFramesWriters::aPgmIsItsHeaderAndItsSamples()
{
    QFETCH(quint32, depth);
    QFETCH(Samples, samples);
    QFETCH(QByteArray, bytes);
    QCOMPARE(fileOf("PGM", picture(depth, 2, samples)), bytes);
    QCOMPARE(fileOf("PGM", picture(depth, 2, samples, 3)), bytes);
}

void TestFramesWriters::readingBackGivesSamplesAndDepth_data()
{
    addPictures();
}

void TestFramesWriters::readingBackGivesSamplesAndDepth()
{
    QFETCH(quint32, depth);
    QFETCH(quint32, width);
    QFETCH(quint32, padding);
    QFETCH(Samples, samples);
    const zor::Frame written = picture(depth, width, samples, padding);
    for (const QString kind : {"PGM", "PNG", "TIFF"}) {
        const zor::Frame frame = m_files.read(fileOf(kind, written));
        const QByteArray which = (kind + ", depth from " + frame.depthSource.c_str()).toUtf8();
        QVERIFY2(frame.width == width && frame.height == written.height, which.constData());
        QVERIFY2(frame.pixelType == written.pixelType, which.constData());
        QVERIFY2(samplesOf(frame) == samples, which.constData());
    }
}

void TestFramesWriters::anotherPngReaderSeesTheSamples_data()
{
    addPictures();
}

void TestFramesWriters::anotherPngReaderSeesTheSamples()
{
    QFETCH(quint32, depth);
    QFETCH(quint32, width);
    QFETCH(quint32, padding);
    QFETCH(Samples, samples);
    const QImage image = QImage::fromData(fileOf("PNG", picture(depth, width, samples, padding)), "PNG");
    QCOMPARE(image.format(), depth == 8 ? QImage::Format_Grayscale8 : QImage::Format_Grayscale16);
    QCOMPARE(image.width(), int(width));
    Samples seen;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            seen.append(depth == 8 ? image.constScanLine(y)[x]
                                   : reinterpret_cast<const quint16*>(image.constScanLine(y))[x]);
    }
    QCOMPARE(seen, samples);
}

void TestFramesWriters::aPngTellsItsDepthAbove8Bits_data()
{
    QTest::addColumn<quint32>("depth");
    QTest::addColumn<QByteArray>("entry"); // length, name and value of the entry; empty: none
    QTest::newRow("8 bits") << 8U << QByteArray();
    QTest::newRow("10 bits") << 10U << QByteArray("\0\0\0\1sBIT\x0A", 9);
    QTest::newRow("12 bits") << 12U << QByteArray("\0\0\0\1sBIT\x0C", 9);
    QTest::newRow("16 bits") << 16U << QByteArray("\0\0\0\1sBIT\x10", 9);
}

void TestFramesWriters::aPngTellsItsDepthAbove8Bits()
{
    QFETCH(quint32, depth);
    QFETCH(QByteArray, entry);
    const QByteArray bytes = fileOf("PNG", picture(depth, 1, {5}));
    QCOMPARE(bytes.contains("sBIT"), !entry.isEmpty());
    QVERIFY2(bytes.contains(entry), bytes.toHex(' ').constData());
}

void TestFramesWriters::aTiffIsPlainGrey_data()
{
    addPictures();
}

void TestFramesWriters::aTiffIsPlainGrey()
{
    QFETCH(quint32, depth);
    QFETCH(quint32, width);
    QFETCH(quint32, padding);
    QFETCH(Samples, samples);
    const QByteArray bytes = fileOf("TIFF", picture(depth, width, samples, padding));
    QVERIFY(bytes.startsWith(QByteArray("II*\0", 4)));
    // PlanarConfiguration, which libtiff fills in by itself when it reads: one SHORT of 1.
    QVERIFY(bytes.contains(QByteArray::fromHex("1C01 0300 01000000 0100")));
    TIFF* tiff = TIFFOpen(m_files.write(bytes).c_str(), "r");
    QVERIFY(tiff != nullptr);
    const auto tag = [tiff](ttag_t name) {
        std::uint16_t value = 0xBAD;
        TIFFGetField(tiff, name, &value);
        return int(value);
    };
    QCOMPARE(tag(TIFFTAG_BITSPERSAMPLE), depth == 8 ? 8 : 16);
    QCOMPARE(tag(TIFFTAG_SAMPLESPERPIXEL), 1);
    QCOMPARE(tag(TIFFTAG_PHOTOMETRIC), PHOTOMETRIC_MINISBLACK);
    QCOMPARE(tag(TIFFTAG_COMPRESSION), COMPRESSION_NONE);
    QCOMPARE(tag(TIFFTAG_MAXSAMPLEVALUE), (1 << depth) - 1);
    // Strips of 8 KiB at most, as TIFF recommends, and not a strip a row.
    const quint32 rowBytes = width * (depth == 8 ? 1 : 2);
    const quint32 perStrip = 8192 / rowBytes;
    const quint32 lines = quint32(samples.size()) / width;
    QCOMPARE(TIFFNumberOfStrips(tiff), (lines + perStrip - 1) / perStrip);
    Samples seen;
    std::vector<std::uint8_t> line(std::size_t(TIFFScanlineSize(tiff)));
    for (int y = 0; y < samples.size() / int(width); ++y) {
        QCOMPARE(TIFFReadScanline(tiff, line.data(), std::uint32_t(y), 0), 1);
        for (std::size_t x = 0; x < width; ++x)
            seen.append(depth == 8 ? line[x] : line[2 * x] + 256 * line[2 * x + 1]);
    }
    TIFFClose(tiff);
    QCOMPARE(seen, samples);
}

QTEST_GUILESS_MAIN(TestFramesWriters)
#include "tst_frames_writers.moc"
