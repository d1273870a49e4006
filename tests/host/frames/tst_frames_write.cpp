#include "host/frames/WriteFrame.h"
#include "host/frames/encode/EncodeFrame.h"
#include "image/Pitch.h"
#include "image/unpack/UnpackRow.h"
#include "tests/host/frames/FrameFiles.h"
#include "tests/support/FormatCodes.h"

#include <QRandomGenerator>
#include <QtTest>

#include <cstring>

/// Frames of every pixel format as files of every kind, and back.
class TestFramesWrite : public QObject
{
    Q_OBJECT

private slots:
    void everyFormatHasItsEndings_data();
    void everyFormatHasItsEndings();
    void everyFrameComesBackFromEveryKind_data();
    void everyFrameComesBackFromEveryKind();
    void theEndingTellsTheKind_data();
    void theEndingTellsTheKind();
    void aKindThatTheFormatDoesNotGoIntoIsRefused_data();
    void aKindThatTheFormatDoesNotGoIntoIsRefused();
    void aSampleAboveTheDepthGoesIntoADumpAlone();
    void aCodeThatNoFormatHasIsRefused();

private:
    FrameFiles m_files;
};

namespace {

const QStringList GreyEndings{".pgm", ".png", ".tiff", ".tif", ".raw", ".bin"};
const QStringList ColourEndings{".ppm", ".png", ".tiff", ".tif", ".raw", ".bin"};
const QStringList RawEndings{".raw", ".bin"};

/// What a frame in the format goes into, by the format's name.
QStringList endingsOf(const QString& format)
{
    if (format.startsWith("YUV") || format.startsWith("YCbCr") || format.contains("a8"))
        return RawEndings;
    return format.startsWith("RGB") || format.startsWith("BGR") ? ColourEndings : GreyEndings;
}

QStringList listOf(const std::vector<std::string>& texts)
{
    QStringList list;
    for (const std::string& text : texts)
        list.append(QString::fromStdString(text));
    return list;
}

QByteArray bytesOf(const std::string& text)
{
    return {text.data(), int(text.size())};
}

/// A scene of random samples, one of them 0 and one full scale where it has two.
zor::SampleImage randomScene(QRandomGenerator& random, quint32 channels, quint32 depth)
{
    zor::SampleImage scene;
    scene.width = random.bounded(1U, 24U);
    scene.height = random.bounded(1U, 12U);
    scene.channels = channels;
    for (quint32 i = 0; i < scene.width * scene.height * channels; ++i)
        scene.samples.push_back(std::uint16_t(random.bounded(1U << depth)));
    scene.samples.front() = 0;
    scene.samples.back() = std::uint16_t((1U << depth) - 1);
    return scene;
}

} // namespace

void TestFramesWrite::everyFormatHasItsEndings_data()
{
    QTest::addColumn<quint32>("pixelType");
    QTest::addColumn<QStringList>("endings");
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable)
        QTest::newRow(row.name) << row.code << endingsOf(row.name);
    QTest::newRow("no format") << 0x12345678U << QStringList();
}

void TestFramesWrite::everyFormatHasItsEndings()
{
    QFETCH(quint32, pixelType);
    QTEST(listOf(zor::frameFileEndings(pixelType)), "endings");
}

void TestFramesWrite::everyFrameComesBackFromEveryKind_data()
{
    QTest::addColumn<quint32>("pixelType");
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable)
        QTest::newRow(row.name) << row.code;
}

void TestFramesWrite::everyFrameComesBackFromEveryKind()
{
    QFETCH(quint32, pixelType);
    const ZorPixelTypeRow& row = *zor::exactPixelTypeRow(pixelType);
    const QString name = row.name;
    const bool colour = name.startsWith("RGB") || name.startsWith("BGR");
    const quint32 depth = zor::pixelTypeSampleBits(pixelType);
    QRandomGenerator random(pixelType);
    for (int turn = 0; turn < 3; ++turn) {
        const zor::SampleImage scene = randomScene(random, colour ? 3 : 1, depth);
        const auto tight = quint32(zor::tightPitch(pixelType, scene.width));
        const zor::Frame tightFrame = zor::encodeFrame(scene, pixelType);
        const zor::Frame frame = zor::encodeFrame(scene, pixelType, {tight + turn, 0xEE});
        for (const QString& ending : endingsOf(name)) {
            const QString at = QString("turn %1, %2").arg(turn).arg(ending);
            const QByteArray bytes =
                bytesOf(zor::frameFileBytes(("f" + ending).toStdString(), frame.record()));
            zor::FrameOptions options;
            if (RawEndings.contains(ending))
                options.raw = zor::RawLayout{row.name, scene.width, scene.height, {}, false};
            const zor::Frame back = m_files.read(bytes, options);
            QVERIFY2(back.width == scene.width && back.height == scene.height, qPrintable(at));
            if (options.raw) {
                QVERIFY2(back.pixels == tightFrame.pixels, qPrintable(at));
                continue;
            }
            const QString format = (colour ? "RGB" : "Mono") + QString::number(depth == 14 ? 16 : depth);
            QVERIFY2(back.pixelType == codeOf(format.toStdString()), qPrintable(at));
            const QList<int> samples(scene.samples.begin(), scene.samples.end());
            QVERIFY2(samplesOf(back) == samples, qPrintable(at));
            // What was read is written as the same bytes, 14 bits excepted, which are 16 then.
            if (depth != 14)
                QVERIFY2(bytesOf(zor::frameFileBytes(("f" + ending).toStdString(), back.record())) == bytes,
                         qPrintable(at));
        }
    }
}

void TestFramesWrite::theEndingTellsTheKind_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("start");
    const QByteArray png("\x89PNG\r\n\x1a\n");
    const QByteArray tiff("II*\0", 4);
    QTest::newRow("PGM") << "a.pgm"
                         << "Mono8" << QByteArray("P5\n1 1\n255\n\x07");
    QTest::newRow("PPM") << "a.ppm"
                         << "RGB8" << QByteArray("P6\n1 1\n255\n\x07\x07\x07");
    QTest::newRow("PNG in capital letters") << "a.PNG"
                                            << "Mono8" << png;
    QTest::newRow("PNG in colour") << "a.png"
                                   << "BGR8" << png;
    QTest::newRow("TIFF") << "a.Tiff"
                          << "RGB12" << tiff;
    QTest::newRow("TIFF with three letters") << "a.tif"
                                             << "Mono12p" << tiff;
    QTest::newRow("a raw dump") << "a.raw"
                                << "Mono8" << QByteArray("\x07");
    QTest::newRow("a raw dump with its other ending") << "a.BIN"
                                                      << "YUV422_8" << QByteArray("\x07\x80");
    QTest::newRow("the last ending counts") << "folder.png/a.tif.pgm"
                                            << "Mono8" << QByteArray("P5");
    QTest::newRow("`Packed` pixels are as on the wire") << "a.raw"
                                                        << "Mono12Packed" << QByteArray("\0\x07", 2);
}

void TestFramesWrite::theEndingTellsTheKind()
{
    QFETCH(QString, path);
    QFETCH(QString, format);
    QFETCH(QByteArray, start);
    const zor::Frame frame = zor::encodeFrame({1, 1, 1, {7}}, codeOf(format.toStdString()));
    const QByteArray bytes = bytesOf(zor::frameFileBytes(path.toStdString(), frame.record()));
    QCOMPARE(bytes.left(start.size()).toHex(' '), start.toHex(' '));
}

void TestFramesWrite::aKindThatTheFormatDoesNotGoIntoIsRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("list");
    const QString grey = ".pgm, .png, .tiff, .tif, .raw or .bin";
    const QString colour = ".ppm, .png, .tiff, .tif, .raw or .bin";
    QTest::newRow("grey as PPM") << "a.ppm"
                                 << "Mono8" << grey;
    QTest::newRow("a colour filter as PPM") << "a.ppm"
                                            << "BayerRG8" << grey;
    QTest::newRow("colour as PGM") << "a.pgm"
                                   << "RGB8" << colour;
    QTest::newRow("a fourth channel") << "a.png"
                                      << "RGBa8"
                                      << ".raw or .bin";
    QTest::newRow("YUV of two samples a pixel") << "a.png"
                                                << "YUV422_8"
                                                << ".raw or .bin";
    QTest::newRow("YUV of four samples a pixel") << "a.tif"
                                                 << "YUV444_8"
                                                 << ".raw or .bin";
    QTest::newRow("another kind") << "a.jpg"
                                  << "Mono8" << grey;
    QTest::newRow("no ending") << "png"
                               << "RGB8" << colour;
    QTest::newRow("an ending alone") << ".png"
                                     << "RGB8" << colour;
    QTest::newRow("no name") << ""
                             << "Mono8" << grey;
}

void TestFramesWrite::aKindThatTheFormatDoesNotGoIntoIsRefused()
{
    QFETCH(QString, path);
    QFETCH(QString, format);
    QFETCH(QString, list);
    const zor::Frame frame = zor::encodeFrame({1, 1, 1, {7}}, codeOf(format.toStdString()));
    try {
        zor::frameFileBytes(path.toStdString(), frame.record());
        QFAIL("no error");
    } catch (const zor::FrameError& error) {
        QCOMPARE(QString(error.what()),
                 path + ": is no file for a frame in " + format + "; use a name that ends in " + list);
    }
}

void TestFramesWrite::aSampleAboveTheDepthGoesIntoADumpAlone()
{
    zor::Frame frame = zor::encodeFrame({2, 2, 3, std::vector<std::uint16_t>(12, 5)}, codeOf("RGB12"));
    const std::uint16_t sample = 4096;
    std::memcpy(frame.pixels.data() + 2 * 11, &sample, 2);
    for (const char* path : {"a.ppm", "a.png", "a.tif"}) {
        try {
            zor::frameFileBytes(path, frame.record());
            QFAIL("no error");
        } catch (const zor::FrameError& error) {
            QCOMPARE(QString(error.what()),
                     path +
                         QString(": the sample 4096 at column 1, row 1 (from 0) is above 4095, the limit of "
                                 "RGB12; write it as a raw dump, or take the frame in its true format"));
        }
    }
    const std::string dump = zor::frameFileBytes("a.raw", frame.record());
    QVERIFY(std::equal(frame.pixels.begin(), frame.pixels.end(), dump.begin(), dump.end(),
                       [](std::uint8_t a, char b) { return a == std::uint8_t(b); }));
}

void TestFramesWrite::aCodeThatNoFormatHasIsRefused()
{
    zor::Frame frame = zor::encodeFrame({1, 1, 1, {7}}, codeOf("Mono8"));
    frame.pixelType = 0x12345678;
    try {
        zor::frameFileBytes("a.raw", frame.record());
        QFAIL("no error");
    } catch (const zor::FrameError& error) {
        QCOMPARE(QString(error.what()),
                 QString("a.raw: the frame is in no known pixel format; take it in one "
                         "that zorffc formats lists"));
    }
}

QTEST_GUILESS_MAIN(TestFramesWrite)
#include "tst_frames_write.moc"
