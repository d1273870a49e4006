#include "host/quality/RegionFigures.h"
#include "tests/host/RandomFrame.h"
#include "tests/support/FormatCodes.h"
#include "tests/support/RecordOf.h"

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>

using namespace zor;

Q_DECLARE_METATYPE(std::function<void(_ZorImage&)>)
Q_DECLARE_METATYPE(zor::PixelRegion)

namespace zor {

inline bool operator==(const PixelRegion& one, const PixelRegion& other)
{
    return one.x == other.x && one.y == other.y && one.width == other.width && one.height == other.height;
}

inline char* toString(const PixelRegion& region)
{
    return qstrdup(qPrintable(
        QString("%1 x %2 at %3, %4").arg(region.width).arg(region.height).arg(region.x).arg(region.y)));
}

} // namespace zor

/// Mean, extremes and deviation of the native codes of a region.
class TestRegionFigures : public QObject
{
    Q_OBJECT

private slots:
    void channelsAreInOrder_data();
    void channelsAreInOrder();
    void knownCodesGiveKnownFigures_data();
    void knownCodesGiveKnownFigures();
    void regionsAreClipped_data();
    void regionsAreClipped();
    void figuresAreThoseOfTheSamples_data();
    void figuresAreThoseOfTheSamples();
    void longRowsCountWhole_data();
    void longRowsCountWhole();
    void largeCodesThatDifferALittleKeepTheirDeviation();
    void whatCannotBeReadHasNoChannels_data();
    void whatCannotBeReadHasNoChannels();
};

namespace {

constexpr std::int32_t Least = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t Most = std::numeric_limits<std::int32_t>::max();

QString lettersOf(const RegionFigures& figures)
{
    QString letters;
    for (const ChannelFigures& channel : figures.channels)
        letters += channel.channel;
    return letters;
}

bool sameNumber(double one, double other)
{
    return std::isnan(one) ? std::isnan(other) : std::abs(one - other) <= 1e-10 * std::abs(other);
}

/// In two passes over all samples.
ChannelFigures plainFigures(char letter, const std::vector<std::uint32_t>& samples)
{
    if (samples.empty())
        return {letter, 0, 0, 0, std::nan(""), std::nan("")};
    long double mean = 0;
    for (const std::uint32_t sample : samples)
        mean += static_cast<long double>(sample) / samples.size();
    long double squares = 0;
    for (const std::uint32_t sample : samples)
        squares += (sample - mean) * (sample - mean);
    const auto [least, most] = std::minmax_element(samples.begin(), samples.end());
    return {letter,
            samples.size(),
            static_cast<std::uint16_t>(*least),
            static_cast<std::uint16_t>(*most),
            static_cast<double>(mean),
            static_cast<double>(std::sqrt(squares / samples.size()))};
}

QString textOf(const ChannelFigures& figures)
{
    return QString("%1: %2 samples from %3 to %4, mean %5, deviation %6")
        .arg(figures.channel)
        .arg(figures.count)
        .arg(figures.minimum)
        .arg(figures.maximum)
        .arg(figures.mean, 0, 'g', 15)
        .arg(figures.deviation, 0, 'g', 15);
}

/// What differs from the plain figures of the same samples; nothing when all are the same.
QString difference(const RandomFrame& frame, const PixelRegion& region)
{
    const RegionFigures found = regionFigures(frame.record(), region);
    const auto samples = frame.samplesOf(region);
    if (found.channels.size() != samples.size())
        return "channels " + lettersOf(found);
    for (const ChannelFigures& channel : found.channels) {
        const auto own = samples.find(channel.channel);
        if (own == samples.end())
            return "channels " + lettersOf(found);
        const ChannelFigures expected = plainFigures(channel.channel, own->second);
        if (channel.count != expected.count || channel.minimum != expected.minimum ||
            channel.maximum != expected.maximum || !sameNumber(channel.mean, expected.mean) ||
            !sameNumber(channel.deviation, expected.deviation))
            return textOf(channel) + "; expected " + textOf(expected);
    }
    return {};
}

QString placeOf(const RandomFrame& frame, const PixelRegion& region)
{
    return QString("%1 x %2 with pitch %3, region %4: ")
        .arg(frame.record().width)
        .arg(frame.record().height)
        .arg(frame.record().pitch)
        .arg(std::unique_ptr<char[]>(toString(region)).get());
}

} // namespace

void TestRegionFigures::channelsAreInOrder_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<QString>("letters");
    QTest::newRow("mono") << codeOf("Mono12p") << "Y";
    QTest::newRow("Bayer: both greens are one") << codeOf("BayerGB12Packed") << "RGB";
    QTest::newRow("TrueSense") << codeOf("TrueSense_GRBG_WGGW_2_10") << "RGBW";
    QTest::newRow("RGB") << codeOf("RGB8") << "RGB";
    QTest::newRow("BGR in the same order") << codeOf("BGR16") << "RGB";
    QTest::newRow("BGR with alpha") << codeOf("BGRa8") << "RGBA";
    QTest::newRow("YUV") << codeOf("YUV422_8_UYVY") << "YUV";
    QTest::newRow("YCbCr has the letters of YUV") << codeOf("YCbCr422_8") << "YUV";
    QTest::newRow("YUV with a fourth channel") << codeOf("YUV444_8") << "YUVA";
}

void TestRegionFigures::channelsAreInOrder()
{
    QFETCH(quint32, code);
    std::vector<std::uint8_t> bytes(1000);
    const _ZorImage image = recordOf(code, 4, 4, 24, bytes.data(), bytes.size());
    QTEST(lettersOf(regionFigures(image, {0, 0, 4, 4})), "letters");
    QTEST(lettersOf(regionFigures(image, {0, 0, 0, 0})), "letters");
}

void TestRegionFigures::knownCodesGiveKnownFigures_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<PixelRegion>("region");
    QTest::addColumn<QString>("figures");
    const auto bytes = [](const char* hex) { return QByteArray::fromHex(hex); };
    QTest::newRow("the deviation is the population's")
        << codeOf("Mono8") << bytes("0204040405050709") << PixelRegion{0, 0, 8, 1}
        << "Y: 8 samples from 2 to 9, mean 5, deviation 2";
    QTest::newRow("a part of the row")
        << codeOf("Mono8") << bytes("FF04060000000000") << PixelRegion{1, 0, 2, 1}
        << "Y: 2 samples from 4 to 6, mean 5, deviation 1";
    QTest::newRow("bits above the depth count")
        << codeOf("Mono10") << bytes("01FC010002000200") << PixelRegion{0, 0, 1, 1}
        << "Y: 1 samples from 64513 to 64513, mean 64513, deviation 0";
    QTest::newRow("a channel without a sample")
        << codeOf("BayerRG8") << bytes("07FF010002000200") << PixelRegion{0, 0, 1, 1}
        << "R: 1 samples from 7 to 7, mean 7, deviation 0 / G: 0 samples from 0 to 0, mean nan, deviation "
           "nan "
           "/ B: 0 samples from 0 to 0, mean nan, deviation nan";
    QTest::newRow("4:2:2 from an odd pixel on: its luma and V, then luma and U")
        << codeOf("YUV422_8") << bytes("0A0B0C0D0E0F1011") << PixelRegion{1, 0, 2, 1}
        << "Y: 2 samples from 12 to 14, mean 13, deviation 1 / U: 1 samples from 15 to 15, mean 15, "
           "deviation 0 "
           "/ V: 1 samples from 13 to 13, mean 13, deviation 0";
    QTest::newRow("an empty region") << codeOf("Mono8") << bytes("FF04060000000000")
                                     << PixelRegion{1, 0, 0, 1}
                                     << "Y: 0 samples from 0 to 0, mean nan, deviation nan";
}

void TestRegionFigures::knownCodesGiveKnownFigures()
{
    QFETCH(quint32, code);
    QFETCH(QByteArray, row);
    QFETCH(PixelRegion, region);
    QFETCH(QString, figures);
    const _ZorImage image = recordOf(code, row.size() * 8 / pixelTypeBits(code), 1, row.size(),
                                     reinterpret_cast<std::uint8_t*>(row.data()), row.size());
    QStringList found;
    for (const ChannelFigures& channel : regionFigures(image, region).channels)
        found.append(textOf(channel));
    QCOMPARE(found.join(" / "), figures);
}

void TestRegionFigures::regionsAreClipped_data()
{
    QTest::addColumn<PixelRegion>("region");
    QTest::addColumn<PixelRegion>("clipped");
    const PixelRegion nothing;
    QTest::newRow("inside") << PixelRegion{2, 3, 4, 5} << PixelRegion{2, 3, 4, 5};
    QTest::newRow("the whole image") << PixelRegion{0, 0, 20, 10} << PixelRegion{0, 0, 20, 10};
    QTest::newRow("over the left and upper side") << PixelRegion{-2, -3, 4, 5} << PixelRegion{0, 0, 2, 2};
    QTest::newRow("over the right and lower side") << PixelRegion{19, 8, 4, 5} << PixelRegion{19, 8, 1, 2};
    QTest::newRow("larger than all numbers") << PixelRegion{Least, Least, Most, Most} << nothing;
    QTest::newRow("as large as can be") << PixelRegion{1, 1, Most, Most} << PixelRegion{1, 1, 19, 9};
    QTest::newRow("left of the image") << PixelRegion{-4, 0, 4, 5} << nothing;
    QTest::newRow("right of it") << PixelRegion{20, 0, 4, 5} << nothing;
    QTest::newRow("above it") << PixelRegion{0, -5, 4, 5} << nothing;
    QTest::newRow("below it") << PixelRegion{0, 10, 4, 5} << nothing;
    QTest::newRow("no width") << PixelRegion{2, 3, 0, 5} << nothing;
    QTest::newRow("no height") << PixelRegion{2, 3, 4, 0} << nothing;
    QTest::newRow("a negative width") << PixelRegion{5, 3, -2, 5} << nothing;
    QTest::newRow("a negative height") << PixelRegion{5, 3, 2, Least} << nothing;
}

void TestRegionFigures::regionsAreClipped()
{
    QFETCH(PixelRegion, region);
    QFETCH(PixelRegion, clipped);
    std::vector<std::uint8_t> bytes(200);
    const RegionFigures figures =
        regionFigures(recordOf(Mono8, 20, 10, 20, bytes.data(), bytes.size()), region);
    QCOMPARE(figures.region, clipped);
    QCOMPARE(figures.channels.front().count, std::uint64_t(clipped.width) * std::uint64_t(clipped.height));
}

void TestRegionFigures::figuresAreThoseOfTheSamples_data()
{
    QTest::addColumn<int>("row");
    for (std::size_t row = 0; row < reference::pixelFormats().size(); ++row)
        QTest::newRow(reference::pixelFormats()[row].name.c_str()) << int(row);
}

/// Random sizes, pitches and regions that reach over the sides.
void TestRegionFigures::figuresAreThoseOfTheSamples()
{
    QFETCH(int, row);
    std::mt19937 random(static_cast<unsigned>(row));
    const auto from = [&random](int least, int most) {
        return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
    };
    for (int i = 0; i < 25; ++i) {
        const int width = from(1, 60);
        const int height = from(1, 11);
        const RandomFrame frame(reference::pixelFormats()[std::size_t(row)], unsigned(width),
                                unsigned(height), unsigned(from(0, 5)), unsigned(i));
        const PixelRegion region{from(-3, width), from(-3, height), from(0, width + 6), from(0, height + 6)};
        const QString wrong = difference(frame, region);
        QVERIFY2(wrong.isEmpty(), qPrintable(placeOf(frame, region) + wrong));
    }
}

void TestRegionFigures::longRowsCountWhole_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"Mono12Packed", "BayerRG10p", "TrueSense_BGGR_WBBW_3_14", "RGB_12_FLEX_Packed",
                             "BGRa8", "YUV422_10_PACKED"})
        QTest::newRow(name) << name;
}

void TestRegionFigures::longRowsCountWhole()
{
    QFETCH(QString, name);
    const auto& formats = reference::pixelFormats();
    const auto format = std::find_if(formats.begin(), formats.end(), [&name](const auto& of) {
        return QString::fromStdString(of.name) == name;
    });
    for (const int width : {1535, 1536, 1537, 5003}) {
        const RandomFrame frame(*format, unsigned(width), 5, 3, unsigned(width));
        for (const PixelRegion& region :
             {PixelRegion{0, 0, width, 5}, PixelRegion{1, 1, width, 3}, PixelRegion{7, 2, width - 9, 3}}) {
            const QString wrong = difference(frame, region);
            QVERIFY2(wrong.isEmpty(), qPrintable(placeOf(frame, region) + wrong));
        }
    }
}

void TestRegionFigures::largeCodesThatDifferALittleKeepTheirDeviation()
{
    // One pixel of four million is one brighter than the others.
    constexpr std::uint32_t side = 2000;
    std::vector<std::uint16_t> pixels(std::size_t{side} * side, std::uint16_t{65534});
    pixels.back() = 65535;
    const _ZorImage image = recordOf(Mono16, side, side, side * 2,
                                     reinterpret_cast<std::uint8_t*>(pixels.data()), pixels.size() * 2);
    const ChannelFigures figures = regionFigures(image, {0, 0, side, side}).channels.front();
    const double share = 1.0 / 4e6;
    QVERIFY2(std::abs(figures.deviation - std::sqrt(share * (1 - share))) < 1e-12,
             qPrintable(textOf(figures)));
}

void TestRegionFigures::whatCannotBeReadHasNoChannels_data()
{
    using Fault = std::function<void(_ZorImage&)>;
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<bool>("isReadable");
    const auto row = [](const char* name, const Fault& fault, bool isReadable = false) {
        QTest::newRow(name) << fault << isReadable;
    };
    row(
        "nothing wrong", [](_ZorImage&) {}, true);
    row("no pixels", [](_ZorImage& image) { image.data = nullptr; });
    row("a format that is not in the table", [](_ZorImage& image) { image.pixelType = 0x01100286; });
    row("a row under other upper bytes", [](_ZorImage& image) { image.pixelType = 0x01100102; });
    row("signed samples", [](_ZorImage& image) { image.isSigned = 1; });
    row("a pitch below the row", [](_ZorImage& image) { image.pitch -= 1; });
    row("a buffer that ends within the last row", [](_ZorImage& image) { image.imageSize -= 1; });
    row("a width of 0", [](_ZorImage& image) { image.width = 0; });
    row("a height of 0", [](_ZorImage& image) { image.height = 0; });
}

void TestRegionFigures::whatCannotBeReadHasNoChannels()
{
    QFETCH(std::function<void(_ZorImage&)>, fault);
    QFETCH(bool, isReadable);
    std::vector<std::uint8_t> bytes(40);
    _ZorImage image = recordOf(Mono10, 5, 4, 10, bytes.data(), bytes.size());
    fault(image);
    const RegionFigures figures = regionFigures(image, {0, 0, 5, 4});
    QCOMPARE(figures.channels.size(), std::size_t(isReadable ? 1 : 0));
    QCOMPARE(figures.region, (isReadable ? PixelRegion{0, 0, 5, 4} : PixelRegion{}));
}

QTEST_APPLESS_MAIN(TestRegionFigures)
#include "tst_region_figures.moc"
