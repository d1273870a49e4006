#include "image/ZorImageApi.h"
#include "image/ZorImageConverter.h"
#include "tests/platform/EncodedImage.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

#include <cstring>
#include <random>

/// The converter from the twelve mono formats to the four targets.
class TestConvert : public QObject
{
    Q_OBJECT

private slots:
    void everySampleIsAsTheFormatsSay_data();
    void everySampleIsAsTheFormatsSay();
    void knownBytesGiveKnownSamples_data();
    void knownBytesGiveKnownSamples();
    void depthChangesKeepBlackAndFullScale_data();
    void depthChangesKeepBlackAndFullScale();
    void theResultRecordIsComplete_data();
    void theResultRecordIsComplete();
    void theSourceStaysAsItWas();

private:
    void compare(const reference::PixelFormat& format, const MonoTarget& target, std::uint32_t width,
                 std::uint32_t height, std::uint32_t padding, int filling);
    std::mt19937 m_random{4711};
};

void TestConvert::everySampleIsAsTheFormatsSay_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<int>("target");
    for (int format = 0; format < reference::MonoFormatCount; ++format) {
        for (int target = 0; target < 4; ++target)
            QTest::addRow("%s to %s", reference::pixelFormats()[std::size_t(format)].name.c_str(),
                          MonoTargets[target].name)
                << format << target;
    }
}

void TestConvert::everySampleIsAsTheFormatsSay()
{
    QFETCH(int, format);
    QFETCH(int, target);
    const reference::PixelFormat& source = reference::pixelFormats()[std::size_t(format)];
    constexpr std::uint32_t Widths[] = {1, 2, 3, 4, 5, 7, 8, 9, 15, 63, 1023, 1024, 1025, 2049};
    for (const std::uint32_t width : Widths) {
        for (const std::uint32_t height : {1U, 2U, 5U}) {
            for (const std::uint32_t padding : {0U, 1U, 7U}) {
                for (int filling = 0; filling < 4; ++filling) {
                    compare(source, MonoTargets[target], width, height, padding, filling);
                    if (QTest::currentTestFailed())
                        return;
                }
            }
        }
    }
}

/// `filling` 0 is all zero, 1 all ones, others random. The source ends right after the last row's last pixel
/// and at the end of its memory.
void TestConvert::compare(const reference::PixelFormat& format, const MonoTarget& target, std::uint32_t width,
                          std::uint32_t height, std::uint32_t padding, int filling)
{
    const std::uint32_t pitch = format.rowBytes(width) + padding;
    const GuardedBytes bytes(std::size_t{height - 1} * pitch + format.rowBytes(width));
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes.data()[i] = filling == 0 ? 0 : filling == 1 ? 0xFF : std::uint8_t(m_random());

    const _ZorImage source =
        recordFor(format.code, width, height, pitch, std::uint32_t(bytes.size()), bytes.data());
    const auto expected = [&](std::uint32_t x, std::uint32_t y) {
        const std::uint32_t sample = format.value(bytes.data() + std::size_t{y} * pitch, x);
        return reference::depthChanged(sample, format.heldBits, target.bits);
    };
    const QString wrong = differences(format, source, target, expected, 0);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

void TestConvert::knownBytesGiveKnownSamples_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<quint32>("target");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QList<int>>("samples");
    const auto bytes = [](const char* hex) { return QByteArray::fromHex(hex); };
    QTest::newRow("Mono12Packed: even low bits in the middle byte's high nibble")
        << Mono12Packed << zor::Mono12 << bytes("AB1278") << QList<int>{0xAB1, 0x782};
    QTest::newRow("Mono12Packed of odd width ends with two bytes")
        << Mono12Packed << zor::Mono12 << bytes("AB1278 5690") << QList<int>{0xAB1, 0x782, 0x569};
    QTest::newRow("Mono10Packed: two low bits at the foot of each nibble")
        << Mono10Packed << zor::Mono10 << bytes("FF3180") << QList<int>{0x3FF, 0x201};
    QTest::newRow("Mono10Packed: the other bits of the nibbles mean nothing")
        << Mono10Packed << zor::Mono10 << bytes("00CC00") << QList<int>{0, 0};
    QTest::newRow("Mono12p: a stream from the low bit")
        << Mono12p << zor::Mono12 << bytes("123456") << QList<int>{0x412, 0x563};
    QTest::newRow("Mono12p holds 12 bits and comes to Mono10 by a shift of 2")
        << Mono12p << zor::Mono10 << bytes("FF0F80") << QList<int>{0xFFF >> 2, 0x800 >> 2};
    QTest::newRow("Mono10p: four samples in five bytes")
        << Mono10p << zor::Mono10 << bytes("FF03F03F00") << QList<int>{0x3FF, 0, 0x3FF, 0};
    QTest::newRow("Mono10_FLExPacked: fields of 12 bits")
        << codeOf("Mono10_FLExPacked") << zor::Mono10 << bytes("FF1300") << QList<int>{0x3FF, 0x001};
    QTest::newRow("Mono12_FLExPacked")
        << codeOf("Mono12_FLExPacked") << zor::Mono12 << bytes("123456") << QList<int>{0x412, 0x563};
    QTest::newRow("Mono16 is little-endian")
        << zor::Mono16 << zor::Mono16 << bytes("34127856") << QList<int>{0x1234, 0x5678};
    QTest::newRow("Mono14 comes down to Mono8 by a shift of 6")
        << codeOf("Mono14") << zor::Mono8 << bytes("FF3F 0020") << QList<int>{0xFF, 0x80};
    QTest::newRow("Mono14 comes up to Mono16")
        << codeOf("Mono14") << zor::Mono16 << bytes("0120") << QList<int>{0x8006};
    QTest::newRow("Mono8 comes up to Mono10")
        << zor::Mono8 << zor::Mono10 << bytes("0180C0") << QList<int>{4, 0x202, 0x303};
    QTest::newRow("Mono8 comes up to Mono16")
        << zor::Mono8 << zor::Mono16 << bytes("12") << QList<int>{0x1212};
    QTest::newRow("Mono10 comes up to Mono12")
        << zor::Mono10 << zor::Mono12 << bytes("0103") << QList<int>{0xC07};
    QTest::newRow("Mono12 comes up to Mono16")
        << zor::Mono12 << zor::Mono16 << bytes("BC0A") << QList<int>{0xABCA};
    QTest::newRow("Mono10 with bits above its depth is full scale")
        << zor::Mono10 << zor::Mono10 << bytes("0004 00FF FF03") << QList<int>{0x3FF, 0x3FF, 0x3FF};
    QTest::newRow("Mono10_FLExPacked: the upper two bits of a field mean nothing")
        << codeOf("Mono10_FLExPacked") << zor::Mono10 << bytes("004CE0 FF0F80")
        << QList<int>{0x000, 0x204, 0x3FF, 0x000};
}

void TestConvert::knownBytesGiveKnownSamples()
{
    QFETCH(quint32, code);
    QFETCH(quint32, target);
    QFETCH(QByteArray, bytes);
    QFETCH(QList<int>, samples);
    const auto size = std::uint32_t(bytes.size());
    const _ZorImage source = recordFor(code, std::uint32_t(samples.size()), 1, size, size,
                                       reinterpret_cast<std::uint8_t*>(bytes.data()));
    const Converted result(source, target);
    QVERIFY(result.isDone());
    QList<int> actual;
    for (std::uint32_t x = 0; x < source.width; ++x)
        actual.append(int(result.sample(x, 0)));
    QCOMPARE(actual, samples);
}

void TestConvert::depthChangesKeepBlackAndFullScale_data()
{
    everySampleIsAsTheFormatsSay_data();
}

void TestConvert::depthChangesKeepBlackAndFullScale()
{
    QFETCH(int, format);
    QFETCH(int, target);
    const reference::PixelFormat& source = reference::pixelFormats()[std::size_t(format)];
    for (const std::uint8_t filling : {std::uint8_t(0x00), std::uint8_t(0xFF)}) {
        std::vector<std::uint8_t> bytes(6, filling);
        const _ZorImage record = recordFor(source.code, 3, 1, 6, 6, bytes.data());
        const Converted result(record, MonoTargets[target].code);
        QVERIFY(result.isDone());
        for (std::uint32_t x = 0; x < 3; ++x)
            QCOMPARE(result.sample(x, 0), filling == 0 ? 0U : (1U << MonoTargets[target].bits) - 1);
    }
}

void TestConvert::theResultRecordIsComplete_data()
{
    QTest::addColumn<quint32>("target");
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint32>("depth");
    QTest::addColumn<quint32>("packing");
    QTest::addColumn<quint32>("pixelBits");
    QTest::addColumn<quint32>("pitch");
    QTest::newRow("Mono8, a row of 5 is padded to 8") << zor::Mono8 << 5U << 8U << 0x0100U << 8U << 8U;
    QTest::newRow("Mono8, a row of 8 needs no padding") << zor::Mono8 << 8U << 8U << 0x0100U << 8U << 8U;
    QTest::newRow("Mono10, a row of 5 is padded to 12") << zor::Mono10 << 5U << 10U << 0x0200U << 16U << 12U;
    QTest::newRow("Mono12, a row of 1 is padded to 4") << zor::Mono12 << 1U << 12U << 0x0300U << 16U << 4U;
    QTest::newRow("Mono16, a row of 6 needs no padding") << zor::Mono16 << 6U << 16U << 0x0500U << 16U << 12U;
}

void TestConvert::theResultRecordIsComplete()
{
    QFETCH(quint32, target);
    QFETCH(quint32, width);
    std::vector<std::uint8_t> bytes(3 * 64, 0xFF);
    const _ZorImage source = recordFor(zor::Mono16, width, 3, 64, 3 * 64, bytes.data());
    _ZorImage* result = nullptr;
    QCOMPARE(ZimConvert(&source, target, &result), 0);
    QVERIFY(result != nullptr);
    QCOMPARE(result->recordSize, 96U);
    QCOMPARE(result->recordVersion, 0x20000U);
    QCOMPARE(result->pixelType, target);
    QTEST(result->depth, "depth");
    QTEST(result->packing, "packing");
    QTEST(result->pixelBits, "pixelBits");
    QTEST(result->pitch, "pitch");
    QCOMPARE(int(result->isSigned), 0);
    QCOMPARE(result->channels, 1U);
    QCOMPARE(result->width, width);
    QCOMPARE(result->height, 3U);
    QCOMPARE(result->imageSize, result->pitch * 3);
    QCOMPARE(result->reserved32, 0U);
    QCOMPARE(result->reserved56[0] | result->reserved56[1] | result->reserved56[2] | result->reserved88,
             std::uint64_t(0));
    const std::uint32_t used = width * result->pixelBits / 8;
    for (std::uint32_t y = 0; y < 3; ++y) {
        for (std::uint32_t i = used; i < result->pitch; ++i)
            QCOMPARE(int(result->data[y * result->pitch + i]), 0);
    }
    // Marks a little past the last pixel are allowed.
    for (std::uint32_t i = 0; i < 16; ++i) {
        QCOMPARE(int(result->data[result->imageSize + i]), 0);
        result->data[result->imageSize + i] = 0xAA;
    }
    QCOMPARE(ZorReleaseImage(&result), 0);
    QVERIFY(result == nullptr);
}

void TestConvert::theSourceStaysAsItWas()
{
    std::vector<std::uint8_t> bytes = {1, 2, 3, 4, 5, 6};
    const std::vector<std::uint8_t> before = bytes;
    const _ZorImage source = recordFor(zor::Mono16, 3, 1, 6, 6, bytes.data());
    const _ZorImage copy = source;
    const Converted result(source, zor::Mono8);
    QVERIFY(result.isDone());
    QVERIFY(result.record()->data != bytes.data());
    QVERIFY(bytes == before);
    QCOMPARE(std::memcmp(&source, &copy, sizeof(source)), 0);
}

QTEST_APPLESS_MAIN(TestConvert)
#include "tst_convert.moc"
