#include "display/DisplaySettings.h"
#include "image/HighLightProcessor.h"
#include "image/PixelTypeCode.h"
#include "tests/platform/viewer/ViewerTools.h"
#include "tests/support/RecordOf.h"

#include <QTest>

#include <vector>

namespace {

constexpr int Width = 40;
constexpr int Height = 30;

} // namespace

/// Marks on bright pixels in a viewer, in the formats that the dialog never hands over.
class TestViewerHighlights : public QObject
{
    Q_OBJECT

private slots:
    void marksOnColoursKeepTheFirstChannel_data();
    void marksOnColoursKeepTheFirstChannel();
    void packedImagesGetNoMarks();
    void marksGoWithTheProcessor();
};

void TestViewerHighlights::marksOnColoursKeepTheFirstChannel_data()
{
    QTest::addColumn<uint>("code");
    QTest::addColumn<QRgb>("bright");
    QTest::addColumn<QRgb>("dark");
    QTest::newRow("RGB8, pure red") << Rgb8Code << qRgb(200, 0, 0) << qRgb(100, 255, 250);
    QTest::newRow("BGR8, pure blue") << Bgr8Code << qRgb(0, 0, 200) << qRgb(250, 255, 100);
}

// The left half is bright in its first channel, the right one in the others alone.
void TestViewerHighlights::marksOnColoursKeepTheFirstChannel()
{
    QFETCH(uint, code);
    const TestImage image(code, Width, Height, [](int x, int, int channel) {
        const int bright[] = {200, 10, 20};
        const int dark[] = {100, 255, 250};
        return x < Width / 2 ? bright[channel] : dark[channel];
    });
    ShownViewer shown(QSize(Width, Height));
    QCOMPARE(addProcessor(shown.viewer, new HighLightProcessor), 1);
    QCOMPARE(shown.show(image), 0);
    shown.setScale(1.0);
    QTEST(shown.pixel(5, 5), "bright");
    QTEST(shown.pixel(Width / 2 - 1, 7), "bright");
    QTEST(shown.pixel(Width / 2, 7), "dark");
    QTEST(shown.pixel(Width - 3, 20), "dark");
}

void TestViewerHighlights::packedImagesGetNoMarks()
{
    // Every third group of two pixels is white.
    std::vector<std::uint8_t> bytes(Width * 3 / 2 * Height, 0);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = i / 3 % 3 == 0 ? 0xFF : 0x44;
    const _ZorImage record = recordOf(Mono12Packed, Width, Height, Width * 3 / 2, bytes.data(), bytes.size());
    ShownViewer shown(QSize(Width, Height));
    QCOMPARE(shown.viewer->display(&record), 0);
    shown.setScale(1.0);
    const QImage plain = shown.grab();
    QCOMPARE(qRed(plain.pixel(0, 0)), 0xFF);
    QCOMPARE(qRed(plain.pixel(2, 0)), 0x44);
    QCOMPARE(addProcessor(shown.viewer, new HighLightProcessor), 1);
    QCOMPARE(shown.viewer->display(&record), 0);
    QVERIFY(shown.grab() == plain);
}

void TestViewerHighlights::marksGoWithTheProcessor()
{
    const TestImage image(zor::Mono12, Width, Height,
                          [](int x, int, int) { return x % 10 == 4 ? 3000 : 112; });
    ShownViewer shown(QSize(Width, Height));
    shown.show(image);
    shown.setScale(1.0);
    const QImage plain = shown.grab();
    QCOMPARE(addProcessor(shown.viewer, new HighLightProcessor), 1);
    // A second one marks what the first one put out, where the marks are dark.
    QCOMPARE(addProcessor(shown.viewer, new HighLightProcessor), 1);
    shown.show(image);
    const auto greys = [&] {
        const QImage painted = shown.grab();
        QVector<int> row;
        for (int x = 12; x < 19; ++x)
            row.append(qRed(painted.pixel(x, 9)));
        return row;
    };
    QCOMPARE(greys(), (QVector<int>{7, 7, 187, 0, 0, 7, 7}));
    QCOMPARE(shown.viewer->settings()->run("processing.proc.del"), 1);
    shown.show(image);
    QVERIFY(shown.grab() == plain);
    QCOMPARE(greys(), (QVector<int>{7, 7, 187, 7, 7, 7, 7}));
}

QTEST_MAIN(TestViewerHighlights)
#include "tst_viewer_highlights.moc"
