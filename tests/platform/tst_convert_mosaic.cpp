#include "tests/platform/EncodedImage.h"
#include "tests/reference/Rec601.h"
#include "tests/support/FormatCodes.h"

#include <QDir>
#include <QtTest>

#include <random>
#include <vector>

using reference::PixelFormat;

/// Formats with a colour filter on each pixel: Bayer and TrueSense.
class TestConvertMosaic : public QObject
{
    Q_OBJECT

private slots:
    void aBayerCellIsAsItsNameSays_data();
    void aBayerCellIsAsItsNameSays();
    void bayerAgreesWithBilinearMeans_data() { addRows(reference::Bayer); }
    void bayerAgreesWithBilinearMeans();
    void aMissingColourHasNoShare_data();
    void aMissingColourHasNoShare();
    void trueSenseKeepsPanchromaticSamplesAndFillsBetween_data() { addRows(reference::TrueSense); }
    void trueSenseKeepsPanchromaticSamplesAndFillsBetween();
    void trueSenseDoesNotLookAtColours_data() { addRows(reference::TrueSense); }
    void trueSenseDoesNotLookAtColours();
    void aPhaseEntersTheCellAtItsColumnAndRow_data();
    void aPhaseEntersTheCellAtItsColumnAndRow();
    void largeImagesStartNoThread();

private:
    static void addRows(std::uint32_t family);
    EncodedImage::Scene noise(const PixelFormat& format);
    std::mt19937 m_random{2026};
};

namespace {

const PixelFormat& formatAt(int index)
{
    return reference::pixelFormats()[std::size_t(index)];
}

int indexOf(const std::string& name)
{
    for (std::size_t i = 0; i < reference::pixelFormats().size(); ++i) {
        if (formatAt(int(i)).name == name)
            return int(i);
    }
    return -1;
}

/// The target of the format's own depth; 16 bits for 14.
const MonoTarget& ownTarget(const PixelFormat& format)
{
    for (const MonoTarget& target : MonoTargets) {
        if (target.bits >= format.heldBits)
            return target;
    }
    return MonoTargets[3];
}

/// One code of the format at its own target.
double ownCode(const PixelFormat& format)
{
    return double((1U << ownTarget(format).bits) - 1) / ((1U << format.heldBits) - 1);
}

} // namespace

void TestConvertMosaic::addRows(std::uint32_t family)
{
    QTest::addColumn<int>("format");
    for (int i = 0; i < int(reference::pixelFormats().size()); ++i) {
        if (formatAt(i).family == family)
            QTest::newRow(formatAt(i).name.c_str()) << i;
    }
}

EncodedImage::Scene TestConvertMosaic::noise(const PixelFormat& format)
{
    return [this, &format](char, std::uint32_t, std::uint32_t) {
        return m_random() & ((1U << format.heldBits) - 1);
    };
}

void TestConvertMosaic::aBayerCellIsAsItsNameSays_data()
{
    QTest::addColumn<QByteArray>("pixels");
    QTest::addColumn<quint32>("code");
    QTest::addColumn<int>("luma");
    // A sensor that sees nothing but one colour: its share of the luma at every pixel.
    const auto add = [](const char* name, quint32 code, const char* red, const char* blue) {
        QTest::addRow("%s sees red", name) << QByteArray::fromHex(red) << code << 60;
        QTest::addRow("%s sees blue", name) << QByteArray::fromHex(blue) << code << 23;
    };
    add("BayerGR8", codeOf("BayerGR8"), "00C80000", "0000C800");
    add("BayerRG8", codeOf("BayerRG8"), "C8000000", "000000C8");
    add("BayerGB8", codeOf("BayerGB8"), "0000C800", "00C80000");
    add("BayerBG8", codeOf("BayerBG8"), "000000C8", "C8000000");
}

void TestConvertMosaic::aBayerCellIsAsItsNameSays()
{
    QFETCH(QByteArray, pixels);
    QFETCH(quint32, code);
    QFETCH(int, luma);
    constexpr std::uint32_t Size = 8;
    for (const std::uint32_t size : {2U, Size}) {
        QByteArray image;
        for (std::uint32_t y = 0; y < size; ++y) {
            for (std::uint32_t x = 0; x < size; ++x)
                image.append(pixels[int(y % 2 * 2 + x % 2)]);
        }
        const Converted result(
            recordFor(code, size, size, size, size * size, reinterpret_cast<std::uint8_t*>(image.data())),
            MonoTargets[0].code);
        QVERIFY(result.isDone());
        for (std::uint32_t i = 0; i < size * size; ++i)
            QCOMPARE(int(result.sample(i % size, i / size)), luma);
    }
}

/// Noise is the hardest scene: each missing colour is the mean of its nearest samples, one row or column
/// away. The larger image is converted in pieces, whose seams must not show.
void TestConvertMosaic::bayerAgreesWithBilinearMeans()
{
    QFETCH(int, format);
    const PixelFormat& source = formatAt(format);
    for (const QSize size : {QSize(23, 18), QSize(1030, 66)}) {
        const auto width = std::uint32_t(size.width());
        const auto height = std::uint32_t(size.height());
        std::vector<std::uint32_t> samples(std::size_t{width} * height);
        for (std::uint32_t& sample : samples)
            sample = m_random() & ((1U << source.heldBits) - 1);
        const auto sample = [&](std::uint32_t x, std::uint32_t y) {
            return samples[std::size_t{y} * width + x];
        };
        const EncodedImage image(
            source, width, height, [&](char, std::uint32_t x, std::uint32_t y) { return sample(x, y); }, 2);
        const auto mean = [&](char colour, std::uint32_t x, std::uint32_t y) {
            if (source.component(x, y) == colour)
                return double(sample(x, y));
            double sum = 0;
            int count = 0;
            for (std::uint32_t v = y - 1; v <= y + 1; ++v) {
                for (std::uint32_t u = x - 1; u <= x + 1; ++u) {
                    if (source.component(u, v) == colour) {
                        sum += sample(u, v);
                        ++count;
                    }
                }
            }
            return sum / count;
        };
        const QString wrong = differences(
            image, ownTarget(source),
            [&](std::uint32_t x, std::uint32_t y) {
                return reference::luma({mean('R', x, y), mean('G', x, y), mean('B', x, y)}) * ownCode(source);
            },
            (1 + (1U << source.heldBits) / 8192.0) * ownCode(source), 1);
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    }
}

void TestConvertMosaic::aMissingColourHasNoShare_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<quint32>("width");
    QTest::addColumn<QVector<int>>("samples");
    QTest::addColumn<QVector<int>>("luma");
    const auto red = [](int r, int g) { return int((299 * r + 587 * g) / 886.0 + 0.5); };
    QTest::newRow("a row of red and green")
        << indexOf("BayerRG8") << 4U << QVector<int>{100, 200, 60, 20}
        << QVector<int>{red(100, 200), red(80, 200), red(60, 110), red(60, 20)};
    const auto blue = [](int b, int g) { return int((114 * b + 587 * g) / 701.0 + 0.5); };
    QTest::newRow("a column of green and blue")
        << indexOf("BayerGR8") << 1U << QVector<int>{100, 200, 60, 20}
        << QVector<int>{blue(200, 100), blue(200, 80), blue(110, 60), blue(20, 60)};
    QTest::newRow("one pixel of green")
        << indexOf("BayerGR8") << 1U << QVector<int>{100} << QVector<int>{100};
    QTest::newRow("one pixel of blue")
        << indexOf("BayerBG16") << 1U << QVector<int>{4711} << QVector<int>{4711};
}

void TestConvertMosaic::aMissingColourHasNoShare()
{
    QFETCH(int, format);
    QFETCH(quint32, width);
    QFETCH(QVector<int>, samples);
    QFETCH(QVector<int>, luma);
    const EncodedImage image(
        formatAt(format), width, std::uint32_t(samples.size()) / width,
        [&](char, std::uint32_t x, std::uint32_t y) { return std::uint32_t(samples[int(y * width + x)]); });
    const QString wrong = differences(
        image, ownTarget(formatAt(format)),
        [&](std::uint32_t x, std::uint32_t y) { return luma[int(y * width + x)]; }, 0);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

void TestConvertMosaic::trueSenseKeepsPanchromaticSamplesAndFillsBetween()
{
    QFETCH(int, format);
    const PixelFormat& source = formatAt(format);
    for (const QSize size : {QSize(1, 1), QSize(1, 2), QSize(2, 1), QSize(1, 7), QSize(7, 1), QSize(2, 2),
                             QSize(3, 2), QSize(2, 5), QSize(3, 3), QSize(12, 9), QSize(1026, 66)}) {
        const auto width = std::uint32_t(size.width());
        const auto height = std::uint32_t(size.height());
        const EncodedImage image(source, width, height, noise(source), 1);
        const auto expected = [&](std::uint32_t x, std::uint32_t y) {
            if (source.component(x, y) == 'W')
                return reference::depthChanged(image.sample(x, y), source.heldBits, ownTarget(source).bits);
            std::vector<std::uint32_t> besides;
            std::vector<std::uint32_t> across;
            if (x > 0)
                besides.push_back(image.sample(x - 1, y));
            if (x + 1 < width)
                besides.push_back(image.sample(x + 1, y));
            if (y > 0)
                across.push_back(image.sample(x, y - 1));
            if (y + 1 < height)
                across.push_back(image.sample(x, y + 1));
            // A whole pair alone, where the border takes half of the other.
            if (besides.size() == 2 && across.size() < 2)
                across.clear();
            else if (across.size() == 2 && besides.size() < 2)
                besides.clear();
            besides.insert(besides.end(), across.begin(), across.end());
            if (besides.empty())
                besides.push_back(image.sample(x, y));
            std::size_t sum = besides.size() / 2;
            for (const std::uint32_t sample : besides)
                sum += sample;
            return reference::depthChanged(std::uint32_t(sum / besides.size()), source.heldBits,
                                           ownTarget(source).bits);
        };
        const QString wrong = differences(image, ownTarget(source), expected, 0);
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    }
}

void TestConvertMosaic::trueSenseDoesNotLookAtColours()
{
    QFETCH(int, format);
    const PixelFormat& source = formatAt(format);
    const std::uint32_t fullScale = (1U << source.heldBits) - 1;
    const EncodedImage image(source, 9, 10, [&](char component, std::uint32_t x, std::uint32_t y) {
        return component == 'W' ? fullScale / 2 : (x * 31 + y * 57) % fullScale;
    });
    const double grey = reference::depthChanged(fullScale / 2, source.heldBits, 16);
    const QString wrong = differences(
        image, MonoTargets[3], [grey](std::uint32_t, std::uint32_t) { return grey; }, 0);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

void TestConvertMosaic::aPhaseEntersTheCellAtItsColumnAndRow_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<QVector<int>>("luma");
    // Pixels 10 20 over 30 40.
    QTest::newRow("phase 0: panchromatic, colour")
        << codeOf("TrueSense_BGGR_WBBW_0_8") << QVector<int>{10, 25, 25, 40};
    QTest::newRow("phase 1: colour, panchromatic")
        << codeOf("TrueSense_BGGR_WBBW_1_8") << QVector<int>{25, 20, 30, 25};
    QTest::newRow("phase 2: colour, panchromatic")
        << codeOf("TrueSense_BGGR_WBBW_2_8") << QVector<int>{25, 20, 30, 25};
    QTest::newRow("phase 3: panchromatic, colour")
        << codeOf("TrueSense_BGGR_WBBW_3_8") << QVector<int>{10, 25, 25, 40};
}

void TestConvertMosaic::aPhaseEntersTheCellAtItsColumnAndRow()
{
    QFETCH(quint32, code);
    QFETCH(QVector<int>, luma);
    const PixelFormat& source = formatAt(int(code & 0xFF) - 1);
    const EncodedImage image(source, 2, 2,
                             [](char, std::uint32_t x, std::uint32_t y) { return 10 + 10 * x + 20 * y; });
    const QString wrong = differences(
        image, MonoTargets[0], [&](std::uint32_t x, std::uint32_t y) { return luma[int(2 * y + x)]; }, 0);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

/// A converter that brings a pool of threads along would do so into every process that loads the plug-in.
void TestConvertMosaic::largeImagesStartNoThread()
{
    const auto threads = [] {
        return QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
    };
    const int before = threads();
    QVERIFY(before > 0);
    for (const char* name : {"BayerRG8", "BayerGB12Packed", "RGB16", "TrueSense_RGGB_WRRW_1_12"}) {
        const PixelFormat& source = formatAt(indexOf(name));
        std::vector<std::uint8_t> pixels(std::size_t{4000} * 500 * source.pixelBits / 8);
        const EncodedImage small(source, 4, 4, noise(source));
        _ZorImage record = small.record();
        record.width = 4000;
        record.height = 500;
        record.pitch = 4000 * source.pixelBits / 8;
        record.imageSize = std::uint32_t(pixels.size());
        record.data = pixels.data();
        QVERIFY(Converted(record, MonoTargets[3].code).isDone());
        QCOMPARE(threads(), before);
    }
}

QTEST_APPLESS_MAIN(TestConvertMosaic)
#include "tst_convert_mosaic.moc"
