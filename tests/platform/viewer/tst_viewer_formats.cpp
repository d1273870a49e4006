#include "display/DisplaySettings.h"
#include "display/DisplayStage.h"
#include "host/frames/encode/EncodeFrame.h"
#include "image/HighLightProcessor.h"
#include "image/Pitch.h"
#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"
#include "platform/viewer/picture/PixelNumbers.h"
#include "tests/platform/GuardedFrame.h"
#include "tests/platform/viewer/ViewerTools.h"
#include "tests/support/FormatCodes.h"
#include "tests/support/RecordOf.h"

#include <QTest>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

/// What is seen of an image in each of the formats: greys and colours, the numbers in its pixels, refusals.
class TestViewerFormats : public QObject
{
    Q_OBJECT

private slots:
    // One viewer for all: an OpenGL one takes longer to make than an image to show.
    void initTestCase() { m_shown = std::make_unique<ShownViewer>(QSize(160, 120)); }
    void init();
    void cleanupTestCase() { m_shown.reset(); }
    void everyFormatIsShown_data();
    void everyFormatIsShown();
    void everyFormatsNumbersAreThoseOfAPlainOne_data();
    void everyFormatsNumbersAreThoseOfAPlainOne();
    void numbersAreNativeCodes_data();
    void numbersAreNativeCodes();
    void packedMonoKeepsItsNativeValues_data();
    void packedMonoKeepsItsNativeValues();
    void theFourthChannelIsNotSeen();
    void highlightsReadNothingOutside_data();
    void highlightsReadNothingOutside();
    void formatsOutsideTheTableAreRefused_data();
    void formatsOutsideTheTableAreRefused();
    void badRecordsOfEveryFormatLeaveThePicture_data();
    void badRecordsOfEveryFormatLeaveThePicture();

private:
    std::unique_ptr<ShownViewer> m_shown;
};

namespace {
constexpr int Argument = 7;
constexpr int Format = 10;
constexpr double MostScale = 30.0; ///< below the grid's
constexpr QRgb Background = qRgb(0x30, 0x30, 0x30);

const reference::PixelFormat& formatOf(std::uint32_t code)
{
    return reference::pixelFormats()[zor::pixelTypeNumber(code) - 1];
}

bool isColour(std::uint32_t code)
{
    return zor::pixelTypeFamily(code) == zor::PixelFamily::Rgb;
}

/// Samples of the depth; mono formats have the first one alone.
using PixelSamples = std::array<std::uint16_t, 3>;

zor::Frame flatFrame(std::uint32_t code, const QSize& size, const PixelSamples& colour,
                     std::uint32_t padding = 0)
{
    zor::SampleImage scene;
    scene.width = static_cast<std::uint32_t>(size.width());
    scene.height = static_cast<std::uint32_t>(size.height());
    scene.channels = isColour(code) ? 3 : 1;
    for (int i = 0; i < size.width() * size.height(); ++i)
        scene.samples.insert(scene.samples.end(), colour.begin(), colour.begin() + scene.channels);
    zor::EncodeLayout layout;
    layout.pitch = static_cast<std::uint32_t>(zor::tightPitch(code, scene.width)) + padding;
    layout.padding = 0xA5;
    return zor::encodeFrame(scene, code, layout);
}

void addEveryFormat()
{
    QTest::addColumn<quint32>("code");
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable)
        QTest::newRow(row.name) << row.code;
}

} // namespace

void TestViewerFormats::init()
{
    m_shown->show(TestImage(zor::Mono8, 40, 30, [](int, int, int) { return 77; }));
    m_shown->run("cmd.display.view.fit", {{"mode", "1"}});
    m_shown->listener.heard.clear();
}

void TestViewerFormats::everyFormatIsShown_data()
{
    addEveryFormat();
}

/// Every pixel of uniform images, seen whole.
void TestViewerFormats::everyFormatIsShown()
{
    QFETCH(quint32, code);
    const std::uint32_t depth = zor::pixelTypeSampleBits(code);
    const PixelSamples colour{static_cast<std::uint16_t>(0xB7 << (depth - 8) | 1),
                              static_cast<std::uint16_t>(0x4C << (depth - 8)),
                              static_cast<std::uint16_t>(0x13 << (depth - 8))};
    const QRgb expected = isColour(code) ? qRgb(0xB7, 0x4C, 0x13) : qRgb(0xB7, 0xB7, 0xB7);
    const std::pair<QSize, std::uint32_t> shapes[] = {{{1, 1}, 0}, {{2, 2}, 0},   {{3, 5}, 1},
                                                      {{7, 2}, 6}, {{40, 30}, 0}, {{41, 31}, 3}};
    for (const auto& [size, padding] : shapes) {
        const GuardedFrame image(flatFrame(code, size, colour, padding), formatOf(code));
        const _ZorImage& record = image.record();
        QCOMPARE(m_shown->viewer->display(&record), 0);
        m_shown->run("cmd.display.view.fit", {{"mode", "1"}});
        if (m_shown->scale() > MostScale)
            m_shown->setScale(MostScale);
        const QImage picture = m_shown->grab();
        int seen = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) {
                const QRgb found = picture.pixel(x, y);
                if (found != expected && found != Background)
                    QFAIL(qPrintable(QString("%1 x %2, padding %3, at %4, %5: expected %6, got %7")
                                         .arg(size.width())
                                         .arg(size.height())
                                         .arg(padding)
                                         .arg(x)
                                         .arg(y)
                                         .arg(expected, 0, 16)
                                         .arg(found, 0, 16)));
                seen += found == expected;
            }
        const double scale = m_shown->scale();
        QVERIFY(seen >= static_cast<int>((size.width() * scale - 1) * (size.height() * scale - 1)));
    }
}

void TestViewerFormats::everyFormatsNumbersAreThoseOfAPlainOne_data()
{
    addEveryFormat();
}

/// Grid, greys and numbers are the same as those of a plain format of the same depth with the same codes. In
/// YUV grey of the middle is the same number three times.
void TestViewerFormats::everyFormatsNumbersAreThoseOfAPlainOne()
{
    QFETCH(quint32, code);
    const std::uint32_t bits = zor::pixelTypeSampleBits(code);
    const bool isYuv = zor::pixelTypeFamily(code) == zor::PixelFamily::Yuv;
    const auto middle = static_cast<std::uint16_t>(1u << (bits - 1));
    const PixelSamples colour = isYuv ? PixelSamples{middle, middle, middle}
                                      : PixelSamples{static_cast<std::uint16_t>(0xD7 << (bits - 8)),
                                                     static_cast<std::uint16_t>(0x4C << (bits - 8) | 1),
                                                     static_cast<std::uint16_t>(0x12 << (bits - 8) | 1)};
    const std::uint32_t plainMono[] = {zor::Mono8, zor::Mono10, zor::Mono12, Mono14Code, zor::Mono16};
    const std::uint32_t plainColour[] = {Rgb8Code, codeOf("RGB10"), Rgb12Code, codeOf("RGB14"),
                                         codeOf("RGB16")};
    const std::uint32_t place = (bits - 8) / 2;
    const QSize size(8, 6);
    const auto pictureOf = [&](std::uint32_t pixelType) {
        const GuardedFrame image(flatFrame(pixelType, size, colour), formatOf(pixelType));
        const _ZorImage& record = image.record();
        if (m_shown->viewer->display(&record) != 0)
            return QImage();
        m_shown->setScale(48.0);
        m_shown->lookAt(0.5, 0.5);
        return m_shown->grab();
    };
    const QImage found = pictureOf(code);
    const QImage expected = pictureOf(isYuv || isColour(code) ? plainColour[place] : plainMono[place]);
    QVERIFY(!expected.isNull());
    QCOMPARE(found, expected);
}

void TestViewerFormats::numbersAreNativeCodes_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<int>("lines");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QVector<QVector<int>>>("pixels");
    using Pixels = QVector<QVector<int>>;
    const auto bytes = [](const char* hex) { return QByteArray::fromHex(hex); };
    QTest::newRow("Mono12Packed: 12 bits, not the byte of single-sample access")
        << Mono12Packed << 1 << bytes("AB1278 5690") << Pixels{{0xAB1}, {0x782}, {0x569}};
    QTest::newRow("Mono12p: 12 bits, although its depth is 10")
        << Mono12p << 1 << bytes("23C1AB") << Pixels{{0x123}, {0xABC}};
    QTest::newRow("Mono10 with bits above its depth")
        << zor::Mono10 << 1 << bytes("34F2") << Pixels{{0xF234}};
    QTest::newRow("Mono10_FLExPacked: without the spare bits of its fields")
        << codeOf("Mono10_FLExPacked") << 1 << bytes("004CE0") << Pixels{{0x000}, {0x204}};
    QTest::newRow("BayerRG10p: the sites, not the luma")
        << codeOf("BayerRG10p") << 1 << bytes("0108300001") << Pixels{{1}, {2}, {3}, {4}};
    QTest::newRow("TrueSense of 14 bits: the sites at their own depth")
        << codeOf("TrueSense_RGGB_WRRW_3_14") << 1 << bytes("FF3F 0100") << Pixels{{16383}, {1}};
    QTest::newRow("BGR8: red first") << Bgr8Code << 3 << bytes("010203 FF0080")
                                     << Pixels{{3, 2, 1}, {128, 0, 255}};
    QTest::newRow("BGRa8: red first, no alpha")
        << codeOf("BGRa8") << 3 << bytes("01020304") << Pixels{{3, 2, 1}};
    QTest::newRow("RGB_10_FLEX_Packed")
        << codeOf("RGB_10_FLEX_Packed") << 3 << bytes("010830C0") << Pixels{{1, 2, 3}};
    QTest::newRow("RGB_12_FLEX_Packed") << codeOf("RGB_12_FLEX_Packed") << 3 << bytes("BC4A12 785634 AB9CDE")
                                        << Pixels{{0xABC, 0x124, 0x678}, {0x345, 0xCAB, 0xDE9}};
    QTest::newRow("YUV422_8_UYVY: Y U V, the odd last pixel without V")
        << codeOf("YUV422_8_UYVY") << 3 << bytes("10203040 5060")
        << Pixels{{0x20, 0x10, 0x30}, {0x40, 0x10, 0x30}, {0x60, 0x50}};
    QTest::newRow("YUV422_10_PACKED: Y U V")
        << codeOf("YUV422_10_PACKED") << 3 << bytes("0108300001") << Pixels{{1, 2, 4}, {3, 2, 4}};
    QTest::newRow("YCbCr422_8: Y Cb Cr")
        << codeOf("YCbCr422_8") << 3 << bytes("10203040") << Pixels{{16, 32, 64}, {48, 32, 64}};
    QTest::newRow("YUV444_8: Y U V, no fourth")
        << codeOf("YUV444_8") << 3 << bytes("10203040") << Pixels{{16, 32, 48}};
}

void TestViewerFormats::numbersAreNativeCodes()
{
    QFETCH(quint32, code);
    QFETCH(int, lines);
    QFETCH(QByteArray, bytes);
    QFETCH(QVector<QVector<int>>, pixels);
    std::vector<std::uint8_t> memory(bytes.begin(), bytes.end());
    const _ZorImage record = recordOf(code, static_cast<std::uint32_t>(pixels.size()), 1, memory);
    const zor::viewer::PixelNumbers numbers(record);
    QCOMPARE(numbers.count(), lines);
    QVector<QVector<int>> found;
    for (int x = 0; x < pixels.size(); ++x) {
        const zor::viewer::PixelNumbers::Numbers at = numbers.at(x, 0);
        found.append(QVector<int>(at.values.begin(), at.values.begin() + at.count));
    }
    QCOMPARE(found, pixels);
    QCOMPARE(numbers.at(-1, 0).count, 0);
    QCOMPARE(numbers.at(0, 1).count, 0);
}

void TestViewerFormats::packedMonoKeepsItsNativeValues_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<QByteArray>("bytes");
    // Two pixels 0x123 and 0xABC in three bytes.
    QTest::newRow("Mono12Packed, the even pixel's low bits in the high nibble")
        << Mono12Packed << QByteArray("\x12\x3C\xAB", 3);
    QTest::newRow("Mono12p, one stream from the low bit") << Mono12p << QByteArray("\x23\xC1\xAB", 3);
}

void TestViewerFormats::packedMonoKeepsItsNativeValues()
{
    QFETCH(quint32, code);
    QFETCH(QByteArray, bytes);
    std::vector<std::uint8_t> memory(bytes.begin(), bytes.end());
    const _ZorImage record = recordOf(code, 2, 1, memory);
    QCOMPARE(m_shown->viewer->display(&record), 0);
    m_shown->setScale(16.0);
    m_shown->lookAt(0.5, 0.5);
    const QImage picture = m_shown->grab();
    const QPoint middle(picture.width() / 2, picture.height() / 2);
    QCOMPARE(qRed(picture.pixel(middle - QPoint(8, 0))), 0x12);
    QCOMPARE(qRed(picture.pixel(middle + QPoint(8, 0))), 0xAB);
    QCOMPARE(m_shown->viewer->stage()->image(0)->pixelType, code);
}

void TestViewerFormats::theFourthChannelIsNotSeen()
{
    for (const std::uint32_t code : {codeOf("RGBa8"), codeOf("BGRa8"), codeOf("YUV444_8")}) {
        const auto picture = [&](std::uint8_t fourth) {
            std::vector<std::uint8_t> memory;
            for (int i = 0; i < 8 * 4; ++i)
                memory.insert(memory.end(), {200, 100, 50, fourth});
            const _ZorImage record = recordOf(code, 8, 4, memory);
            m_shown->viewer->display(&record);
            m_shown->setScale(48.0);
            return m_shown->grab();
        };
        const QImage clear = picture(0);
        QCOMPARE(picture(255), clear);
    }
}

void TestViewerFormats::highlightsReadNothingOutside_data()
{
    addEveryFormat();
}

/// White to the end of the memory, so that the last pixel is marked where the format can be.
void TestViewerFormats::highlightsReadNothingOutside()
{
    QFETCH(quint32, code);
    const auto value = static_cast<std::uint16_t>((1u << zor::pixelTypeSampleBits(code)) - 1);
    addProcessor(m_shown->viewer, new HighLightProcessor);
    for (const QSize& size : {QSize(2, 2), QSize(7, 5), QSize(8, 3)}) {
        const GuardedFrame image(flatFrame(code, size, {value, value, value}), formatOf(code));
        const _ZorImage& record = image.record();
        const std::vector<std::uint8_t> before(record.data, record.data + record.imageSize);
        QCOMPARE(m_shown->viewer->display(&record), 0);
        QVERIFY2(std::equal(before.begin(), before.end(), record.data), "a mark in the caller's image");
        const _ZorImage* copy = m_shown->viewer->stage()->image(0);
        QVERIFY2(std::equal(before.begin(), before.end(), copy->data), "a mark in the copy");
    }
    m_shown->viewer->settings()->run("processing.proc.del");
}

void TestViewerFormats::formatsOutsideTheTableAreRefused_data()
{
    QTest::addColumn<quint32>("code");
    QTest::newRow("code 0") << 0u;
    QTest::newRow("the row after the last") << (0x01080100u | (ZorPixelTypeCount + 1));
    QTest::newRow("row 255") << 0x010801FFu;
    QTest::newRow("a row under another family") << 0x03080101u;
    QTest::newRow("a row under other pixel bits") << 0x02180175u;
    QTest::newRow("a row under another packing byte") << 0x0218017Du;
}

void TestViewerFormats::formatsOutsideTheTableAreRefused()
{
    QFETCH(quint32, code);
    const QImage before = m_shown->grab();
    std::vector<std::uint8_t> memory(40 * 30 * 8);
    _ZorImage record = recordOf(code, 40, 30, memory);
    record.pixelType = code;
    record.packing = zor::pixelTypePacking(code);
    record.pixelBits = zor::pixelTypeBits(code);
    record.pitch = 40 * 8;
    QCOMPARE(m_shown->viewer->display(&record) & 0xFFFF, Format);
    QCOMPARE(m_shown->viewer->configure(&record) & 0xFFFF, Format);
    QCOMPARE(m_shown->grab(), before);
}

void TestViewerFormats::badRecordsOfEveryFormatLeaveThePicture_data()
{
    addEveryFormat();
}

void TestViewerFormats::badRecordsOfEveryFormatLeaveThePicture()
{
    QFETCH(quint32, code);
    const QImage before = m_shown->grab();
    const auto pitch = static_cast<std::uint32_t>(zor::tightPitch(code, 41));
    std::vector<std::uint8_t> memory(std::size_t{pitch} * 30);
    const _ZorImage good = recordOf(code, 41, 30, memory);
    std::vector<std::function<void(_ZorImage&)>> faults = {
        [](_ZorImage& record) { record.data = nullptr; },
        [](_ZorImage& record) { record.width = 0; },
        [](_ZorImage& record) { record.height = 0; },
        [](_ZorImage& record) { record.pitch -= 1; },
        [](_ZorImage& record) { record.imageSize -= 1; },
        [](_ZorImage& record) { record.pitch += 1; },
        [](_ZorImage& record) { record.height = 0x40000000; },
        [](_ZorImage& record) { record.pixelBits += 8; },
        [](_ZorImage& record) { record.packing ^= 0x1000; },
        [](_ZorImage& record) { record.depth = 0; },
        [](_ZorImage& record) { record.depth = 17; },
        [](_ZorImage& record) { record.depth = 32; },
    };
    if (zor::pixelTypeSampleBits(code) == 8)
        faults.push_back([](_ZorImage& record) { record.depth = 9; });
    if (isColour(code))
        faults.push_back([](_ZorImage& record) { record.channels -= 1; });
    for (std::size_t i = 0; i < faults.size(); ++i) {
        _ZorImage record = good;
        faults[i](record);
        if ((m_shown->viewer->display(&record) & 0xFFFF) != Argument)
            QFAIL(qPrintable(QString("fault %1 is taken").arg(i)));
    }
    _ZorImage record = good;
    record.isSigned = 1;
    QCOMPARE(m_shown->viewer->display(&record) & 0xFFFF, Format);
    QCOMPARE(m_shown->grab(), before);
    QCOMPARE(m_shown->listener.count("processed"), 0);
}

QTEST_MAIN(TestViewerFormats)
#include "tst_viewer_formats.moc"
