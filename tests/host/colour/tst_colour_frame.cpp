#include "host/colour/ColourFrame.h"
#include "image/Pitch.h"
#include "tests/platform/GuardedBytes.h"
#include "tests/reference/PixelFormats.h"
#include "tests/support/FormatCodes.h"
#include "tests/support/RecordOf.h"

#include <QtTest>

#include <array>
#include <cmath>
#include <random>

/// Bayer and YUV frames in colour, against the plain definition.
class TestColourFrame : public QObject
{
    Q_OBJECT

private slots:
    void bayerAndYuvHoldColour();
    void everyPixelIsAsTheDefinitionSays_data();
    void everyPixelIsAsTheDefinitionSays();
    void aColourOverABayerFilterIsThatColour_data();
    void aColourOverABayerFilterIsThatColour();
    void knownYuvGivesKnownColours_data();
    void knownYuvGivesKnownColours();
    void whatHasNoColourGivesNone_data();
    void whatHasNoColourGivesNone();

private:
    std::mt19937 m_random{20};
};

namespace {

constexpr std::uint32_t Bayer = 3;
constexpr std::uint32_t Yuv = 5;

using Rgb = std::array<double, 3>;

int placeOf(char letter)
{
    return letter == 'R' ? 0 : letter == 'G' ? 1 : 2;
}

/// A place beyond an edge is mirrored at the pixel of the edge.
std::int64_t mirrored(std::int64_t place, std::int64_t size)
{
    return place < 0 ? -place : place >= size ? 2 * (size - 1) - place : place;
}

struct Image
{
    const reference::PixelFormat& format;
    const _ZorImage& record;

    std::uint32_t at(std::int64_t x, std::int64_t y, std::uint32_t sample = 0) const
    {
        return format.value(record.data + std::size_t(y) * record.pitch, std::uint64_t(x), sample);
    }
    std::uint32_t mirroredAt(std::int64_t x, std::int64_t y) const
    {
        return at(mirrored(x, record.width), mirrored(y, record.height));
    }
};

/// The pixel's own sample, and the rounded mean of the nearest ones of each other colour: among the four
/// beside it when they have the colour, else among the four at its corners.
Rgb bayerColour(const Image& image, std::int64_t x, std::int64_t y)
{
    Rgb colour = {-1, -1, -1};
    const auto letterAt = [&](std::int64_t u, std::int64_t v) {
        return image.format.component(std::uint32_t(mirrored(u, image.record.width)),
                                      std::uint32_t(mirrored(v, image.record.height)));
    };
    colour[std::size_t(placeOf(letterAt(x, y)))] = image.at(x, y);
    constexpr int Beside[4][2] = {{-1, 0}, {1, 0}, {0, -1}, {0, 1}};
    constexpr int Corners[4][2] = {{-1, -1}, {1, -1}, {-1, 1}, {1, 1}};
    for (const auto& places : {Beside, Corners}) {
        for (const char letter : {'R', 'G', 'B'}) {
            double& sample = colour[std::size_t(placeOf(letter))];
            if (sample >= 0)
                continue;
            double sum = 0;
            int count = 0;
            for (int i = 0; i < 4; ++i) {
                if (letterAt(x + places[i][0], y + places[i][1]) != letter)
                    continue;
                sum += image.mirroredAt(x + places[i][0], y + places[i][1]);
                ++count;
            }
            if (count > 0)
                sample = std::floor(sum / count + 0.5);
        }
    }
    return colour;
}

/// The inverse of the luma of Rec. 601 at full range, not rounded.
Rgb yuvColour(const Image& image, std::int64_t x, std::int64_t y)
{
    double luma = 0;
    double u = std::ldexp(1.0, int(image.format.heldBits) - 1);
    double v = u;
    // Two pixels share their differences; those of the pair before serve where the pair has no second one.
    const std::int64_t pair = x / 2 * 2;
    const bool shares = image.format.samplesPerPixel == 2;
    for (std::int64_t from = shares ? std::max<std::int64_t>(0, pair - 2) : x;
         from < (shares ? std::min<std::int64_t>(pair + 2, image.record.width) : x + 1); ++from) {
        for (std::uint32_t i = 0; i < image.format.samplesPerPixel; ++i) {
            const char letter = image.format.component(std::uint32_t(from), 0, i);
            if (letter == 'Y' && from == x)
                luma = image.at(from, y, i);
            else if (letter == 'U')
                u = image.at(from, y, i);
            else if (letter == 'V')
                v = image.at(from, y, i);
        }
    }
    const double full = std::ldexp(1.0, int(image.format.heldBits)) - 1;
    const double middle = std::ldexp(1.0, int(image.format.heldBits) - 1);
    const double red = luma + 2 * (1 - 0.299) * (v - middle);
    const double blue = luma + 2 * (1 - 0.114) * (u - middle);
    const double green = (luma - 0.299 * red - 0.114 * blue) / 0.587;
    return {std::clamp(red, 0.0, full), std::clamp(green, 0.0, full), std::clamp(blue, 0.0, full)};
}

double sampleOf(const zor::Frame& frame, std::uint32_t x, std::uint32_t y, std::uint32_t channel)
{
    const std::uint8_t* row = frame.pixels.data() + std::size_t{y} * frame.pitch;
    const std::size_t place = std::size_t{x} * 3 + channel;
    return zor::pixelTypeBits(frame.pixelType) == 24 ? row[place] : row[2 * place] + 256 * row[2 * place + 1];
}

/// The first sample that is farther than `tolerance` from what `expected` gives.
template <typename Expected>
QString differences(const zor::Frame& frame, double tolerance, const Expected& expected)
{
    for (std::uint32_t y = 0; y < frame.height; ++y) {
        for (std::uint32_t x = 0; x < frame.width; ++x) {
            const Rgb colour = expected(x, y);
            for (std::uint32_t channel = 0; channel < 3; ++channel) {
                const double actual = sampleOf(frame, x, y, channel);
                if (!(std::abs(actual - colour[channel]) <= tolerance))
                    return QString("%1 x %2, pixel (%3, %4), channel %5: %6 instead of %7")
                        .arg(frame.width)
                        .arg(frame.height)
                        .arg(x)
                        .arg(y)
                        .arg(channel)
                        .arg(actual)
                        .arg(colour[channel]);
            }
        }
    }
    return {};
}

} // namespace

void TestColourFrame::bayerAndYuvHoldColour()
{
    for (const reference::PixelFormat& format : reference::pixelFormats())
        QVERIFY2(zor::hasHiddenColour(format.code) == (format.family == Bayer || format.family == Yuv),
                 format.name.c_str());
    QVERIFY(!zor::hasHiddenColour(codeOf("BayerRG8") ^ 0x01000000));
    QVERIFY(!zor::hasHiddenColour(0));
}

void TestColourFrame::everyPixelIsAsTheDefinitionSays_data()
{
    QTest::addColumn<int>("format");
    for (int i = 0; i < int(reference::pixelFormats().size()); ++i) {
        const reference::PixelFormat& format = reference::pixelFormats()[std::size_t(i)];
        if (format.family == Bayer || format.family == Yuv)
            QTest::newRow(format.name.c_str()) << i;
    }
}

/// Random bytes at the end of their memory, with and without bytes between the rows.
void TestColourFrame::everyPixelIsAsTheDefinitionSays()
{
    QFETCH(int, format);
    const reference::PixelFormat& source = reference::pixelFormats()[std::size_t(format)];
    const std::uint32_t smallest = source.family == Bayer ? 2 : 1;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> sizes = {{37, 9}, {64, 3}, {130, 2}};
    for (std::uint32_t width = smallest; width < 8; ++width) {
        for (std::uint32_t height = smallest; height < 6; ++height)
            sizes.emplace_back(width, height);
    }
    for (const auto& [width, height] : sizes) {
        for (const std::uint32_t padding : {0U, 3U}) {
            const std::uint32_t pitch = source.rowBytes(width) + padding;
            const GuardedBytes bytes(std::size_t{height - 1} * pitch + source.rowBytes(width));
            for (std::size_t i = 0; i < bytes.size(); ++i)
                bytes.data()[i] = std::uint8_t(m_random());
            const _ZorImage record =
                recordOf(source.code, width, height, pitch, bytes.data(), std::uint32_t(bytes.size()));
            const std::optional<zor::Frame> frame = zor::colourFrame(record);
            QVERIFY(frame);
            QCOMPARE(frame->width, width);
            QCOMPARE(frame->height, height);
            QCOMPARE(frame->pixelType,
                     codeOf(QByteArray("RGB" + QByteArray::number(source.heldBits)).constData()));
            QCOMPARE(frame->pitch, std::uint32_t(zor::tightPitch(frame->pixelType, width)));
            QCOMPARE(frame->pixels.size(), std::size_t{frame->pitch} * height);
            const Image image = {source, record};
            const bool isBayer = source.family == Bayer;
            const QString wrong =
                differences(*frame, isBayer ? 0 : 0.6, [&](std::uint32_t x, std::uint32_t y) {
                    return isBayer ? bayerColour(image, x, y) : yuvColour(image, x, y);
                });
            QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
        }
    }
}

void TestColourFrame::aColourOverABayerFilterIsThatColour_data()
{
    QTest::addColumn<QByteArray>("format");
    for (const char* name : {"BayerRG8", "BayerGR8", "BayerGB8", "BayerBG8"})
        QTest::newRow(name) << QByteArray(name);
}

void TestColourFrame::aColourOverABayerFilterIsThatColour()
{
    QFETCH(QByteArray, format);
    const std::uint32_t code = codeOf(format.constData());
    std::vector<std::uint8_t> bytes(5 * 4);
    for (std::uint32_t y = 0; y < 4; ++y) {
        for (std::uint32_t x = 0; x < 5; ++x) {
            // The name is the two letters of an even row; those of an odd row follow from them.
            const char even[2] = {format[5], format[6]};
            const bool isGreenFirst = even[0] == 'G';
            const char other = (isGreenFirst ? even[1] : even[0]) == 'R' ? 'B' : 'R';
            const char odd[2] = {isGreenFirst ? other : 'G', isGreenFirst ? 'G' : other};
            const char* letters = y % 2 == 0 ? even : odd;
            const char letter = letters[x % 2];
            bytes[y * 5 + x] = letter == 'R' ? 200 : letter == 'G' ? 100 : 50;
        }
    }
    const std::optional<zor::Frame> frame =
        zor::colourFrame(recordOf(code, 5, 4, 5, bytes.data(), std::uint32_t(bytes.size())));
    QVERIFY(frame);
    const QString wrong = differences(*frame, 0, [](std::uint32_t, std::uint32_t) {
        return Rgb{200, 100, 50};
    });
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

void TestColourFrame::knownYuvGivesKnownColours_data()
{
    QTest::addColumn<QVector<int>>("yuv");
    QTest::addColumn<QVector<int>>("rgb");
    QTest::newRow("black") << QVector<int>{0, 128, 128} << QVector<int>{0, 0, 0};
    QTest::newRow("white") << QVector<int>{255, 128, 128} << QVector<int>{255, 255, 255};
    QTest::newRow("red") << QVector<int>{76, 85, 255} << QVector<int>{254, 0, 0};
    QTest::newRow("green") << QVector<int>{150, 44, 21} << QVector<int>{0, 255, 1};
    QTest::newRow("blue") << QVector<int>{29, 255, 107} << QVector<int>{0, 0, 254};
}

void TestColourFrame::knownYuvGivesKnownColours()
{
    QFETCH(QVector<int>, yuv);
    QFETCH(QVector<int>, rgb);
    const auto byte = [](int value) { return std::uint8_t(value); };
    std::vector<std::uint8_t> bytes = {byte(yuv[0]), byte(yuv[1]), byte(yuv[0]), byte(yuv[2])};
    const std::optional<zor::Frame> frame =
        zor::colourFrame(recordOf(codeOf("YUV422_8"), 2, 1, 4, bytes.data(), 4));
    QVERIFY(frame);
    const QString wrong = differences(*frame, 1, [&](std::uint32_t, std::uint32_t) {
        return Rgb{double(rgb[0]), double(rgb[1]), double(rgb[2])};
    });
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

void TestColourFrame::whatHasNoColourGivesNone_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint32>("height");
    QTest::addColumn<quint32>("size");
    QTest::newRow("mono") << QByteArray("Mono8") << 4U << 4U << 16U;
    QTest::newRow("colour already") << QByteArray("RGB8") << 4U << 1U << 12U;
    QTest::newRow("a sensor with unfiltered pixels")
        << QByteArray("TrueSense_BGGR_WBBW_0_8") << 4U << 4U << 16U;
    QTest::newRow("Bayer of one column") << QByteArray("BayerRG8") << 1U << 4U << 16U;
    QTest::newRow("Bayer of one row") << QByteArray("BayerRG8") << 4U << 1U << 16U;
    QTest::newRow("Bayer that ends too early") << QByteArray("BayerRG8") << 4U << 4U << 15U;
    QTest::newRow("YUV without rows") << QByteArray("YUV422_8") << 2U << 0U << 16U;
}

void TestColourFrame::whatHasNoColourGivesNone()
{
    QFETCH(QByteArray, format);
    QFETCH(quint32, width);
    QFETCH(quint32, height);
    QFETCH(quint32, size);
    std::vector<std::uint8_t> bytes(16);
    const auto pitch = std::uint32_t(zor::tightPitch(codeOf(format.constData()), width));
    QVERIFY(
        !zor::colourFrame(recordOf(codeOf(format.constData()), width, height, pitch, bytes.data(), size)));
}

QTEST_APPLESS_MAIN(TestColourFrame)
#include "tst_colour_frame.moc"
