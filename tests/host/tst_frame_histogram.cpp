#include "host/quality/FrameHistogram.h"
#include "tests/host/RandomFrame.h"
#include "tests/support/FormatCodes.h"
#include "tests/support/RecordOf.h"

#include <QtTest>

#include <numeric>
#include <random>

using namespace zor;

/// How often each native code comes.
class TestFrameHistogram : public QObject
{
    Q_OBJECT

private slots:
    void codesFallIntoTheirBins_data();
    void codesFallIntoTheirBins();
    void countsAreThoseOfTheSamples_data();
    void countsAreThoseOfTheSamples();
    void longRowsCountWhole();
    void whatCannotBeReadHasNoChannels();
};

namespace {

/// The number of the sample's bin.
std::size_t binOf(std::uint32_t code, std::uint32_t bits)
{
    const double fullScale = std::pow(2.0, bits);
    return std::size_t(std::min(255.0, std::floor(code / fullScale * 256.0)));
}

QString difference(const RandomFrame& frame, const reference::PixelFormat& format)
{
    const FrameHistogram found = frameHistogram(frame.record());
    const auto width = static_cast<std::int32_t>(frame.record().width);
    const auto height = static_cast<std::int32_t>(frame.record().height);
    const auto samples = frame.samplesOf({0, 0, width, height});
    QString letters;
    for (const FrameHistogram::Channel& channel : found.channels)
        letters += channel.letter;
    if (found.channels.size() != samples.size())
        return "channels " + letters;
    for (const FrameHistogram::Channel& channel : found.channels) {
        const auto own = samples.find(channel.letter);
        if (own == samples.end())
            return "channels " + letters;
        std::array<std::uint64_t, 256> expected{};
        for (const std::uint32_t code : own->second)
            ++expected[binOf(code, format.heldBits)];
        if (channel.counts != expected)
            return QString("counts of ") + channel.letter;
    }
    return {};
}

} // namespace

void TestFrameHistogram::codesFallIntoTheirBins_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<uint>("codesPerBin");
    QTest::addColumn<QList<int>>("codes");
    QTest::addColumn<QList<int>>("bins");
    QTest::newRow("8 bits: a bin for each")
        << codeOf("Mono8") << 1u << QList<int>{0, 1, 255} << QList<int>{0, 1, 255};
    QTest::newRow("10 bits: four share one")
        << codeOf("Mono10") << 4u << QList<int>{0, 3, 4, 1019, 1020, 1023}
        << QList<int>{0, 0, 1, 254, 255, 255};
    QTest::newRow("12 bits") << codeOf("Mono12") << 16u << QList<int>{15, 16, 4080} << QList<int>{0, 1, 255};
    QTest::newRow("14 bits") << codeOf("Mono14") << 64u << QList<int>{63, 64, 16319} << QList<int>{0, 1, 254};
    QTest::newRow("16 bits") << codeOf("Mono16") << 256u << QList<int>{255, 256, 65535}
                             << QList<int>{0, 1, 255};
    QTest::newRow("codes above full scale are in the last one")
        << codeOf("Mono10") << 4u << QList<int>{1024, 65535} << QList<int>{255, 255};
}

void TestFrameHistogram::codesFallIntoTheirBins()
{
    QFETCH(quint32, code);
    QFETCH(QList<int>, codes);
    QFETCH(QList<int>, bins);
    const std::uint32_t sampleBytes = pixelTypeBits(code) / 8;
    std::vector<std::uint8_t> bytes;
    for (const int value : codes)
        for (std::uint32_t i = 0; i < sampleBytes; ++i)
            bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    const FrameHistogram found =
        frameHistogram(recordOf(code, codes.size(), 1, bytes.size(), bytes.data(), bytes.size()));
    QTEST(found.codesPerBin, "codesPerBin");
    QCOMPARE(found.channels.size(), std::size_t(1));
    QCOMPARE(found.channels.front().letter, 'Y');
    std::array<std::uint64_t, 256> expected{};
    for (const int bin : bins)
        ++expected[std::size_t(bin)];
    QCOMPARE(found.channels.front().counts, expected);
}

void TestFrameHistogram::countsAreThoseOfTheSamples_data()
{
    QTest::addColumn<int>("row");
    for (std::size_t row = 0; row < reference::pixelFormats().size(); ++row)
        QTest::newRow(reference::pixelFormats()[row].name.c_str()) << int(row);
}

void TestFrameHistogram::countsAreThoseOfTheSamples()
{
    QFETCH(int, row);
    const reference::PixelFormat& format = reference::pixelFormats()[std::size_t(row)];
    std::mt19937 random(static_cast<unsigned>(row));
    for (unsigned i = 0; i < 20; ++i) {
        const RandomFrame frame(format, 1 + random() % 60, 1 + random() % 11, random() % 6, i);
        const QString wrong = difference(frame, format);
        QVERIFY2(wrong.isEmpty(), qPrintable(QString("%1 x %2 with pitch %3: %4")
                                                 .arg(frame.record().width)
                                                 .arg(frame.record().height)
                                                 .arg(frame.record().pitch)
                                                 .arg(wrong)));
    }
}

void TestFrameHistogram::longRowsCountWhole()
{
    for (const reference::PixelFormat& format : reference::pixelFormats()) {
        if (format.name != "BayerGB12p" && format.name != "RGB12" && format.name != "YUV422_10")
            continue;
        const QString wrong = difference(RandomFrame(format, 3101, 3, 1, 1), format);
        QVERIFY2(wrong.isEmpty(), qPrintable(QString::fromStdString(format.name) + ": " + wrong));
    }
}

void TestFrameHistogram::whatCannotBeReadHasNoChannels()
{
    std::vector<std::uint8_t> bytes(40);
    QCOMPARE(frameHistogram(recordOf(Mono10, 5, 4, 10, bytes.data(), 39)).channels.size(), std::size_t(0));
    QCOMPARE(frameHistogram(recordOf(Mono10, 5, 4, 10, bytes.data(), 40)).channels.size(), std::size_t(1));
}

QTEST_APPLESS_MAIN(TestFrameHistogram)
#include "tst_frame_histogram.moc"
