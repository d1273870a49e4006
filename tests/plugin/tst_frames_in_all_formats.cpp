#include "host/frames/encode/EncodeFrame.h"
#include "image/PixelTypeCode.h"
#include "tests/plugin/HostedDialog.h"
#include "tests/reference/PixelFormats.h"

#include "image/ZorImage.h"

#include <QTest>

#include <memory>
#include <random>

namespace {

/// Odd, and no multiple of a colour cell.
constexpr std::uint32_t Width = 13;
constexpr std::uint32_t Height = 7;
constexpr std::uint32_t Padding = 3;
constexpr std::uint8_t Poison = 0xA5;

struct Target
{
    std::uint32_t code;
    std::uint32_t bits;
};

/// What the dialog brings a frame to, by the depth of its format.
Target targetOf(const reference::PixelFormat& format)
{
    // The one format whose depth is less than the bits that its samples hold.
    const std::uint32_t depth = format.name == "Mono12p" ? 10 : format.heldBits;
    switch (depth) {
    case 10:
        return {zor::Mono10, 10};
    case 12:
        return {zor::Mono12, 12};
    case 16:
        return {zor::Mono16, 16};
    default:
        return {zor::Mono8, 8};
    }
}

bool hasColourFilters(const reference::PixelFormat& format)
{
    return format.family == reference::Bayer || format.family == reference::TrueSense;
}

} // namespace

/// Frames as cameras send them, handed to the built plug-in: the upper view gets their grey.
class TestFramesInAllFormats : public QObject
{
    Q_OBJECT

private slots:
    // One dialog for all, as in a host whose operator switches the camera's format.
    void initTestCase() { m_host = std::make_unique<HostedDialog>(); }
    void cleanupTestCase() { m_host.reset(); }
    void everyFormatIsTakenAndShown_data();
    void everyFormatIsTakenAndShown();

private:
    std::unique_ptr<HostedDialog> m_host;
};

void TestFramesInAllFormats::everyFormatIsTakenAndShown_data()
{
    QTest::addColumn<int>("format");
    for (int i = 0; i < int(reference::pixelFormats().size()); ++i)
        QTest::newRow(reference::pixelFormats()[std::size_t(i)].name.c_str()) << i;
}

/// Through colour filters a grey of one level, everywhere else one of its own for each pixel.
void TestFramesInAllFormats::everyFormatIsTakenAndShown()
{
    QFETCH(int, format);
    const reference::PixelFormat& source = reference::pixelFormats()[std::size_t(format)];
    std::mt19937 random(source.code);
    const std::uint32_t fullScale = (1U << source.heldBits) - 1;
    const std::uint32_t level = fullScale / 5 * 3 + 1;
    zor::SampleImage scene = {Width, Height, 1, {}};
    for (std::uint32_t i = 0; i < Width * Height; ++i)
        scene.samples.push_back(
            std::uint16_t(hasColourFilters(source) ? level : std::uint32_t(random()) & fullScale));
    const zor::Frame frame = zor::encodeFrame(scene, source.code, {source.rowBytes(Width) + Padding, Poison});

    _ZorImage record = frame.record();
    m_host->plugIn().SetImage(&record);
    m_host->plugIn().Update();
    QCoreApplication::processEvents();

    const QWidget* upper = m_host->find("gVUp");
    const Target target = targetOf(source);
    QVERIFY(ViewerTap::imageIn(upper));
    QCOMPARE(ViewerTap::imageIn(upper)->pixelType, target.code);
    const std::vector<unsigned> shown = ViewerTap::pixelsIn(upper);
    QCOMPARE(shown.size(), scene.samples.size());
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const std::uint32_t expected =
            reference::depthChanged(scene.samples[i], source.heldBits, target.bits);
        QVERIFY2(shown[i] == expected, qPrintable(QString("column %1, row %2: sample %3, expected %4, got %5")
                                                      .arg(i % Width)
                                                      .arg(i / Width)
                                                      .arg(scene.samples[i])
                                                      .arg(expected)
                                                      .arg(shown[i])));
    }
}

QTEST_MAIN(TestFramesInAllFormats)
#include "tst_frames_in_all_formats.moc"
