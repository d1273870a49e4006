#include "host/frames/Png.h"
#include "host/frames/Pnm.h"
#include "host/frames/Tiff.h"
#include "host/frames/encode/EncodeFrame.h"
#include "tests/host/frames/FrameFiles.h"
#include "tests/support/FormatCodes.h"

#include <QImage>
#include <QtTest>

#include <tiffio.h>

/// Pictures in colour as PPM, PNG and TIFF files: the bytes, and what other readers make of them.
class TestFramesWritersColour : public QObject
{
    Q_OBJECT

private slots:
    void aPpmIsItsHeaderAndItsSamples_data();
    void aPpmIsItsHeaderAndItsSamples();
    void anotherPngReaderSeesTheColours_data();
    void anotherPngReaderSeesTheColours();
    void aPngTellsItsDepthAbove8Bits_data();
    void aPngTellsItsDepthAbove8Bits();
    void aTiffIsPlainRgb_data();
    void aTiffIsPlainRgb();

private:
    FrameFiles m_files;
};

namespace {

using Samples = QList<int>;

zor::Frame picture(const QString& format, quint32 width, const Samples& samples)
{
    zor::SampleImage scene{width, quint32(samples.size()) / 3 / width, 3, {}};
    for (const int sample : samples)
        scene.samples.push_back(std::uint16_t(sample));
    return zor::encodeFrame(scene, codeOf(format.toStdString()));
}

Samples many(int depth)
{
    Samples samples;
    for (int i = 0; i < 67 * 41 * 3; ++i)
        samples.append(i * 7919 % (1 << depth));
    return samples;
}

QByteArray bytesOf(const std::string& text)
{
    return {text.data(), int(text.size())};
}

void addFormats()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<int>("depth");
    for (const char* order : {"RGB", "BGR"}) {
        for (const int depth : {8, 10, 12, 14, 16})
            QTest::addRow("%s%d", order, depth) << order + QString::number(depth) << depth;
    }
}

} // namespace

void TestFramesWritersColour::aPpmIsItsHeaderAndItsSamples_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<Samples>("samples");
    QTest::addColumn<QByteArray>("bytes");
    const auto add = [](const char* format, const Samples& samples, const QByteArray& bytes) {
        QTest::newRow(format) << QString(format) << samples << bytes;
    };
    add("RGB8", {0, 1, 254, 255, 3, 2}, QByteArray("P6\n2 1\n255\n\x00\x01\xFE\xFF\x03\x02", 17));
    add("BGR8", {0, 1, 254, 255, 3, 2}, QByteArray("P6\n2 1\n255\n\x00\x01\xFE\xFF\x03\x02", 17));
    add("RGB10", {0, 1, 1023}, QByteArray("P6\n1 1\n1023\n\x00\x00\x00\x01\x03\xFF", 18));
    add("RGB12", {0, 1, 4095}, QByteArray("P6\n1 1\n4095\n\x00\x00\x00\x01\x0F\xFF", 18));
    add("RGB14", {0, 1, 16383}, QByteArray("P6\n1 1\n16383\n\x00\x00\x00\x01\x3F\xFF", 19));
    add("RGB16", {0, 1, 65535}, QByteArray("P6\n1 1\n65535\n\x00\x00\x00\x01\xFF\xFF", 19));
}

void TestFramesWritersColour::aPpmIsItsHeaderAndItsSamples()
{
    QFETCH(QString, format);
    QFETCH(Samples, samples);
    QFETCH(QByteArray, bytes);
    const zor::Frame frame = picture(format, quint32(samples.size()) / 3, samples);
    QCOMPARE(bytesOf(zor::pnmBytes(frame.record())).toHex(' '), bytes.toHex(' '));
}

void TestFramesWritersColour::anotherPngReaderSeesTheColours_data()
{
    addFormats();
}

void TestFramesWritersColour::anotherPngReaderSeesTheColours()
{
    QFETCH(QString, format);
    QFETCH(int, depth);
    const Samples samples = many(depth);
    const zor::Frame frame = picture(format, 67, samples);
    const QImage image = QImage::fromData(bytesOf(zor::pngBytes(frame.record())), "PNG");
    QCOMPARE(image.depth(), depth == 8 ? 32 : 64);
    QCOMPARE(image.size(), QSize(67, 41));
    Samples seen;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgba64 colour = image.pixelColor(x, y).rgba64();
            if (depth == 8)
                seen << colour.red8() << colour.green8() << colour.blue8();
            else
                seen << colour.red() << colour.green() << colour.blue();
        }
    }
    QCOMPARE(seen, samples);
}

void TestFramesWritersColour::aPngTellsItsDepthAbove8Bits_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("entry"); // length, name and values of the entry; empty: none
    QTest::newRow("8 bits") << "RGB8" << QByteArray();
    QTest::newRow("10 bits") << "BGR10" << QByteArray("\0\0\0\3sBIT\x0A\x0A\x0A", 11);
    QTest::newRow("12 bits") << "RGB12" << QByteArray("\0\0\0\3sBIT\x0C\x0C\x0C", 11);
    QTest::newRow("16 bits") << "RGB16" << QByteArray("\0\0\0\3sBIT\x10\x10\x10", 11);
}

void TestFramesWritersColour::aPngTellsItsDepthAbove8Bits()
{
    QFETCH(QString, format);
    QFETCH(QByteArray, entry);
    const QByteArray bytes = bytesOf(zor::pngBytes(picture(format, 1, {1, 2, 3}).record()));
    QCOMPARE(bytes.contains("sBIT"), !entry.isEmpty());
    QVERIFY2(bytes.contains(entry), bytes.toHex(' ').constData());
}

void TestFramesWritersColour::aTiffIsPlainRgb_data()
{
    addFormats();
}

void TestFramesWritersColour::aTiffIsPlainRgb()
{
    QFETCH(QString, format);
    QFETCH(int, depth);
    const Samples samples = many(depth);
    const zor::Frame frame = picture(format, 67, samples);
    TIFF* tiff = TIFFOpen(m_files.write(bytesOf(zor::tiffBytes(frame.record()))).c_str(), "r");
    QVERIFY(tiff != nullptr);
    const auto tag = [tiff](ttag_t name) {
        std::uint16_t value = 0xBAD;
        TIFFGetField(tiff, name, &value);
        return int(value);
    };
    QCOMPARE(tag(TIFFTAG_BITSPERSAMPLE), depth == 8 ? 8 : 16);
    QCOMPARE(tag(TIFFTAG_SAMPLESPERPIXEL), 3);
    QCOMPARE(tag(TIFFTAG_PHOTOMETRIC), PHOTOMETRIC_RGB);
    QCOMPARE(tag(TIFFTAG_PLANARCONFIG), PLANARCONFIG_CONTIG);
    QCOMPARE(tag(TIFFTAG_COMPRESSION), COMPRESSION_NONE);
    QCOMPARE(tag(TIFFTAG_MAXSAMPLEVALUE), (1 << depth) - 1);
    // Strips of 8 KiB at most, as TIFF recommends.
    const int perStrip = 8192 / (67 * 3 * (depth == 8 ? 1 : 2));
    QCOMPARE(int(TIFFNumberOfStrips(tiff)), (41 + perStrip - 1) / perStrip);
    Samples seen;
    std::vector<std::uint8_t> line(std::size_t(TIFFScanlineSize(tiff)));
    for (std::uint32_t y = 0; y < 41; ++y) {
        QCOMPARE(TIFFReadScanline(tiff, line.data(), y, 0), 1);
        for (std::size_t i = 0; i < 67 * 3; ++i)
            seen.append(depth == 8 ? line[i] : line[2 * i] + 256 * line[2 * i + 1]);
    }
    TIFFClose(tiff);
    QCOMPARE(seen, samples);
}

QTEST_GUILESS_MAIN(TestFramesWritersColour)
#include "tst_frames_writers_colour.moc"
