#include "dialog/LocalRecord.h"
#include "tests/fakes/FakeConverter.h"
#include "tests/fakes/FakeViewer.h"
#include "tests/support/Cursors.h"
#include "tests/support/DialogProbe.h"

#include <QCheckBox>
#include <QTest>

#include <algorithm>

namespace {

constexpr int HostWidth = 7;
constexpr int HostHeight = 5;

} // namespace

/// Converted records that do not cover the size that the host gives. No stage reads past the frame's block
/// and no refresh writes past an image's, which the address sanitizer watches; what the record lacks counts
/// as black.
class TestFrameBlock : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void runTakesTheMissingPixelsAsBlack_data();
    void runTakesTheMissingPixelsAsBlack();
    void blockCoversTheLargerOfBothSizes_data();
    void blockCoversTheLargerOfBothSizes();
};

void TestFrameBlock::cleanup()
{
    fakeConverter = FakeConverter();
    FakeViewer::reset();
    restoreAllCursors();
}

void TestFrameBlock::runTakesTheMissingPixelsAsBlack_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("pitch"); // in pixels
    QTest::addColumn<int>("size");  // in pixels
    for (const int depth : {8, 10, 12, 16}) {
        QTest::addRow("%d bits, the host's size", depth) << depth << 7 << 35;
        QTest::addRow("%d bits, 4x2 pixels", depth) << depth << 4 << 8;
        QTest::addRow("%d bits, no pixels", depth) << depth << 7 << 0;
        QTest::addRow("%d bits, last row without padding", depth) << depth << 8 << 39;
        QTest::addRow("%d bits, last row cut off", depth) << depth << 8 << 33;
        QTest::addRow("%d bits, larger than the host's", depth) << depth << 12 << 96;
        QTest::addRow("%d bits, pitch 0", depth) << depth << 0 << 7;
        QTest::addRow("%d bits, pitch 0, one pixel", depth) << depth << 0 << 1;
    }
}

void TestFrameBlock::runTakesTheMissingPixelsAsBlack()
{
    QFETCH(int, depth);
    QFETCH(int, pitch);
    QFETCH(int, size);
    const int pixelBytes = depth == 8 ? 1 : 2;
    const auto value = [](int pixel) { return 40 + 3 * pixel; };
    std::vector<std::uint8_t> pixels;
    for (int pixel = 0; pixel < size; ++pixel) {
        pixels.push_back(static_cast<std::uint8_t>(value(pixel) & 0xFF));
        if (depth != 8)
            pixels.push_back(static_cast<std::uint8_t>(value(pixel) >> 8));
    }
    TestFrame host = TestFrame::even(HostWidth, HostHeight, depth, 1);
    _ZorImage record = host.record();
    record.width = static_cast<std::uint32_t>(pitch);
    record.pitch = static_cast<std::uint32_t>(pitch * pixelBytes);
    fakeConverter.deliver(record, pixels);
    DialogProbe d;
    d.ui.chBShowY->setChecked(true);
    d.show();
    d.take(host);

    QCOMPARE(d.m_width, HostWidth);
    QCOMPARE(d.m_height, HostHeight);
    QCOMPARE(d.m_depth, depth);
    QCOMPARE(d.m_step, pitch * pixelBytes);
    QCOMPARE(d.m_imageBytes, static_cast<std::uint64_t>(size * pixelBytes));
    for (int y = 0; y < HostHeight; ++y) {
        for (int x = 0; x < HostWidth; ++x) {
            const int pixel = y * pitch + x;
            const std::uint8_t* bytes = d.m_image + pixel * pixelBytes;
            const int expected = pixel < size ? value(pixel) & (depth == 8 ? 0xFF : 0xFFFF) : 0;
            const int actual = depth == 8 ? bytes[0] : bytes[0] + 256 * bytes[1];
            QVERIFY2(actual == expected, qPrintable(QStringLiteral("pixel (%1, %2): %3, expected %4")
                                                        .arg(x)
                                                        .arg(y)
                                                        .arg(actual)
                                                        .arg(expected)));
        }
    }

    QVERIFY(d.RunCorrection());
    for (int x = 0; x < HostWidth; ++x) {
        int sum = 0;
        for (int y = 0; y < HostHeight; ++y) {
            const int pixel = y * pitch + x;
            sum += pixel < size ? value(pixel) & (depth == 8 ? 0xFF : 0xFFFF) : 0;
        }
        QCOMPARE(int(d.m_columnMean[x]), sum / HostHeight);
        QCOMPARE(int(d.m_columnLine[x]), sum / HostHeight);
    }
    QVERIFY(d.m_flatY && d.m_flatRowLine);
    QCOMPARE(d.m_rangeXMax, HostWidth);

    FakeViewer::calls().clear();
    d.ShowAll();
    const std::vector<ViewerCall> shown = FakeViewer::callsOf("display");
    QCOMPARE(shown.size(), std::size_t{2});
    const std::vector<std::uint8_t>& lower = shown.at(1).pixels;
    QCOMPARE(lower.size(), std::size_t(size * pixelBytes));
    // Rows that overlap hold no picture, and one block copy goes by the working image's step.
    for (int y = 0; y < HostHeight && depth == 8 && pitch >= HostWidth; ++y) {
        for (int x = 0; x < HostWidth && y * pitch + x < size; ++x) {
            const int cell = d.m_flatY[y * d.m_flatYStep / 2 + x];
            QCOMPARE(int(lower.at(std::size_t(y * pitch + x))), std::min(cell, 255));
        }
    }
}

void TestFrameBlock::blockCoversTheLargerOfBothSizes_data()
{
    QTest::addColumn<quint32>("depth");
    QTest::addColumn<quint32>("imageSize");
    QTest::addColumn<quint32>("height");
    QTest::addColumn<quint64>("bytes");
    QTest::newRow("a host without rows still has a row's pixels") << 12U << 0U << 0U << quint64(14);
    QTest::newRow("without rows in 8 bits") << 8U << 0U << 0U << quint64(7);
    QTest::newRow("the record's size, larger than no rows") << 12U << 40U << 0U << quint64(40);
    QTest::newRow("one row without its padding") << 12U << 0U << 1U << quint64(14);
    QTest::newRow("three rows, the last one without its padding") << 12U << 0U << 3U << quint64(54);
    QTest::newRow("three rows in 8 bits") << 8U << 0U << 3U << quint64(47);
    QTest::newRow("the record's size, larger than three rows") << 12U << 55U << 3U << quint64(55);
}

void TestFrameBlock::blockCoversTheLargerOfBothSizes()
{
    QFETCH(quint32, depth);
    QFETCH(quint32, imageSize);
    QFETCH(quint32, height);
    _ZorImage record{};
    record.depth = depth;
    record.imageSize = imageSize;
    record.pitch = 20;
    QTEST(quint64(zor::coveringBytes(record, HostWidth, height)), "bytes");
}

QTEST_MAIN(TestFrameBlock)
#include "tst_frame_block.moc"
