#include "plugin/HostedDialog.h"

#include "image/MonoTarget.h"

#include <QTest>

namespace {

/// A frame with stripes both ways, so that the two passes of the correction differ.
TestFrame striped(int width, int height, int depth)
{
    const unsigned full = (1u << depth) - 1;
    return TestFrame(width, height, depth, [full](int x, int y) {
        return full / 3 + static_cast<unsigned>(x * 7 % 31) * full / 200 +
               static_cast<unsigned>(y * 5 % 17) * full / 150;
    });
}

} // namespace

/// The dialog of the built plug-in with the real viewer, driven as a host and an operator do.
class WholeDialog : public QObject
{
    Q_OBJECT

private slots:
    void upperViewShowsTheFrame_data();
    void upperViewShowsTheFrame();
};

void WholeDialog::upperViewShowsTheFrame_data()
{
    QTest::addColumn<int>("depth");
    for (const int depth : {8, 10, 12, 16})
        QTest::addRow("%d bits", depth) << depth;
}

void WholeDialog::upperViewShowsTheFrame()
{
    QFETCH(int, depth);
    HostedDialog host;
    const TestFrame frame = striped(61, 37, depth);
    host.show(frame);
    QWidget* upper = host.find("gVUp");
    const _ZorImage* image = ViewerTap::imageIn(upper);
    QVERIFY(image);
    QCOMPARE(image->pixelType, monoTargetForDepth(static_cast<std::uint32_t>(depth)));
    QVERIFY(ViewerTap::scaleOf(upper) > 1.0);
    const std::vector<unsigned> pixels = ViewerTap::pixelsIn(upper);
    QCOMPARE(pixels.size(), std::size_t{61 * 37});
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        unsigned expected = frame.bytes[i];
        if (depth != 8)
            expected = frame.bytes[2 * i] + 256u * frame.bytes[2 * i + 1];
        QVERIFY2(pixels[i] == expected,
                 qPrintable(QString("pixel %1: %2, expected %3").arg(i).arg(pixels[i]).arg(expected)));
    }
}

QTEST_MAIN(WholeDialog)
#include "tst_whole_dialog.moc"
