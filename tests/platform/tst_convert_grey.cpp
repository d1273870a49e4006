#include "tests/platform/EncodedImage.h"

#include <QtTest>

using reference::PixelFormat;

/// What is grey in front of a colour filter, or in colours, is the same grey after the converter, in every
/// format.
class TestConvertGrey : public QObject
{
    Q_OBJECT

private slots:
    void aUniformGreyStaysExactAtAnySize_data() { everyFormat(); }
    void aUniformGreyStaysExactAtAnySize();
    void everyGreyOf16BitsStaysExact_data();
    void everyGreyOf16BitsStaysExact();
    void aGreyRiseInColoursIsExact_data();
    void aGreyRiseInColoursIsExact();
    void bitsAboveTheDepthAreFullScale_data();
    void bitsAboveTheDepthAreFullScale();

private:
    static void everyFormat();
};

namespace {

const PixelFormat& formatAt(int index)
{
    return reference::pixelFormats()[std::size_t(index)];
}

void addRows(const std::function<bool(const PixelFormat&)>& isWanted)
{
    QTest::addColumn<int>("format");
    for (int i = 0; i < int(reference::pixelFormats().size()); ++i) {
        if (isWanted(formatAt(i)))
            QTest::newRow(formatAt(i).name.c_str()) << i;
    }
}

/// Grey of one level; colour differences at their middle, alpha something else.
EncodedImage::Scene uniform(const PixelFormat& format, std::uint32_t level)
{
    return [&format, level](char component, std::uint32_t, std::uint32_t) {
        if (component == 'U' || component == 'V')
            return 1U << (format.heldBits - 1);
        return component == 'A' ? 0x55U : level;
    };
}

} // namespace

void TestConvertGrey::everyFormat()
{
    addRows([](const PixelFormat&) { return true; });
}

/// The larger sizes are such that a row or the image is converted in several pieces.
void TestConvertGrey::aUniformGreyStaysExactAtAnySize()
{
    QFETCH(int, format);
    const PixelFormat& source = formatAt(format);
    const std::uint32_t fullScale = (1U << source.heldBits) - 1;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> sizes = {{9, 9},    {31, 17},   {64, 48},
                                                                  {1025, 3}, {1030, 67}, {2049, 2}};
    for (std::uint32_t size = 0; size < 36; ++size)
        sizes.emplace_back(size % 6 + 1, size / 6 + 1);
    for (const auto& [width, height] : sizes) {
        for (const std::uint32_t level : {0U, 1U, fullScale / 3, fullScale / 2, fullScale - 1, fullScale}) {
            if (width > 1000 && level != fullScale / 3)
                continue;
            const EncodedImage image(source, width, height, uniform(source, level), width % 3);
            for (const MonoTarget& target : MonoTargets) {
                const double expected = reference::depthChanged(level, source.heldBits, target.bits);
                const QString wrong = differences(
                    image, target, [expected](std::uint32_t, std::uint32_t) { return expected; }, 0);
                QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
            }
        }
    }
}

void TestConvertGrey::everyGreyOf16BitsStaysExact_data()
{
    addRows(
        [](const PixelFormat& format) { return format.heldBits == 16 && format.family != reference::Mono; });
}

/// Bayer: images of one level, one after the other; RGB: all levels in one image.
void TestConvertGrey::everyGreyOf16BitsStaysExact()
{
    QFETCH(int, format);
    const PixelFormat& source = formatAt(format);
    if (source.family == reference::Rgb) {
        const auto level = [](std::uint32_t x, std::uint32_t y) { return x + 1024 * y; };
        const EncodedImage image(source, 1024, 64,
                                 [level](char, std::uint32_t x, std::uint32_t y) { return level(x, y); });
        const QString wrong = differences(image, MonoTargets[3], level, 0);
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
        return;
    }
    for (std::uint32_t level = 0; level <= 0xFFFF; level += level > 0xFF00 || level < 0x100 ? 1 : 61) {
        const EncodedImage image(source, 5, 4, uniform(source, level));
        const QString wrong = differences(
            image, MonoTargets[3], [level](std::uint32_t, std::uint32_t) { return level; }, 0);
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    }
}

void TestConvertGrey::aGreyRiseInColoursIsExact_data()
{
    addRows([](const PixelFormat& format) {
        return format.family == reference::Rgb || format.family == reference::Yuv;
    });
}

void TestConvertGrey::aGreyRiseInColoursIsExact()
{
    QFETCH(int, format);
    const PixelFormat& source = formatAt(format);
    const std::uint32_t levels = 1U << source.heldBits;
    for (const std::uint32_t width : {1U, 2U, 3U, 63U, 256U, 2047U, 2049U, 4100U}) {
        const auto level = [&](std::uint32_t x, std::uint32_t y) { return (x * 17 + y * 4099) % levels; };
        const auto scene = [&](char component, std::uint32_t x, std::uint32_t y) {
            return component == 'U' || component == 'V' || component == 'A' ? (x * 7 + y) % levels
                                                                            : level(x, y);
        };
        const EncodedImage image(source, width, 3, scene, width % 4);
        for (const MonoTarget& target : MonoTargets) {
            const QString wrong = differences(
                image, target,
                [&](std::uint32_t x, std::uint32_t y) {
                    return reference::depthChanged(level(x, y), source.heldBits, target.bits);
                },
                0);
            QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
        }
    }
}

void TestConvertGrey::bitsAboveTheDepthAreFullScale_data()
{
    addRows([](const PixelFormat& format) { return format.storedBits > format.heldBits; });
}

void TestConvertGrey::bitsAboveTheDepthAreFullScale()
{
    QFETCH(int, format);
    const PixelFormat& source = formatAt(format);
    const EncodedImage image(source, 5, 4,
                             [&](char, std::uint32_t, std::uint32_t) { return 1U << source.heldBits; });
    for (const MonoTarget& target : MonoTargets) {
        const double white = (1U << target.bits) - 1;
        const QString wrong = differences(
            image, target, [white](std::uint32_t, std::uint32_t) { return white; }, 0);
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    }
}

QTEST_APPLESS_MAIN(TestConvertGrey)
#include "tst_convert_grey.moc"
