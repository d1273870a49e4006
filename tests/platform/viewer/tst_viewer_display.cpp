#include "display/DisplayStage.h"
#include "display/ZorDisplayQt.h"
#include "image/PixelTypeCode.h"
#include "image/ZorImageApi.h"
#include "tests/platform/viewer/ViewerTools.h"
#include "tests/support/FormatCodes.h"

#include <QTest>

#include <cstring>
#include <limits>
#include <thread>

/// What `display`, `displayPair` and `configure` take, what is seen of it, and what becomes of bad records.
class TestViewerDisplay : public QObject
{
    Q_OBJECT

private slots:
    void plainFormats_data();
    void plainFormats();
    void badRecordsLeaveThePicture_data();
    void badRecordsLeaveThePicture();
    void nothingOfTheCallersBufferIsReadLater();
    void theStageHoldsACopy();
    void itsOwnStageImageCanBeShown();
    void configureJudgesHeaders_data();
    void configureJudgesHeaders();
    void colorationChangesMonoOnly();
    void pairsAreSideBySide();
    void aPairOfTwoSizesIsShownWhole();
    void aBadPairChangesNothing();
    void displayFromAnotherThread();
    void nullsAndCrossedDeletion();
    void theHostMayDestroyItsWidgetFirst();
};

namespace {
constexpr int Grey = 0x30; ///< of the background

int fullScale(int depth)
{
    return (1 << depth) - 1;
}
} // namespace

void TestViewerDisplay::plainFormats_data()
{
    QTest::addColumn<quint32>("pixelType");
    QTest::addColumn<int>("depth");
    QTest::addColumn<bool>("blueFirst");
    QTest::newRow("Mono8") << zor::Mono8 << 8 << false;
    QTest::newRow("Mono10") << zor::Mono10 << 10 << false;
    QTest::newRow("Mono12") << zor::Mono12 << 12 << false;
    QTest::newRow("Mono14") << Mono14Code << 14 << false;
    QTest::newRow("Mono16") << zor::Mono16 << 16 << false;
    QTest::newRow("RGB8") << Rgb8Code << 8 << false;
    QTest::newRow("BGR8") << Bgr8Code << 8 << true;
    QTest::newRow("RGB10") << codeOf("RGB10") << 10 << false;
    QTest::newRow("BGR10") << codeOf("BGR10") << 10 << true;
    QTest::newRow("RGB12") << Rgb12Code << 12 << false;
    QTest::newRow("BGR12") << codeOf("BGR12") << 12 << true;
    QTest::newRow("RGB14") << codeOf("RGB14") << 14 << false;
    QTest::newRow("BGR14") << codeOf("BGR14") << 14 << true;
    QTest::newRow("RGB16") << codeOf("RGB16") << 16 << false;
    QTest::newRow("BGR16") << Bgr16Code << 16 << true;
}

void TestViewerDisplay::plainFormats()
{
    QFETCH(quint32, pixelType);
    QFETCH(int, depth);
    QFETCH(bool, blueFirst);
    ShownViewer shown(QSize(40, 30));
    const auto value = [depth](int x, int y, int c) {
        return (x * 613 + y * 211 + c * 1777) % (fullScale(depth) + 1);
    };
    for (const int padding : {0, 3, 5}) {
        const TestImage image(pixelType, 40, 30, value, padding);
        QCOMPARE(shown.show(image), 0);
        shown.setScale(1.0);
        shown.lookAt(0.5, 0.5);
        const QImage picture = shown.grab();
        const QPoint corner((picture.width() - 40) / 2, (picture.height() - 30) / 2);
        const bool isColour = zor::pixelTypeFamily(pixelType) == zor::PixelFamily::Rgb;
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 40; ++x) {
                const auto level = [&](int c) { return value(x, y, isColour ? c : 0) >> (depth - 8); };
                const QRgb expected =
                    blueFirst ? qRgb(level(2), level(1), level(0)) : qRgb(level(0), level(1), level(2));
                QCOMPARE(picture.pixel(corner + QPoint(x, y)), expected);
            }
    }
}

void TestViewerDisplay::badRecordsLeaveThePicture_data()
{
    QTest::addColumn<int>("fault");
    QTest::newRow("null record") << 0;
    QTest::newRow("null pixels") << 1;
    QTest::newRow("a width of 0") << 2;
    QTest::newRow("a height of 0") << 3;
    QTest::newRow("a pitch below the row") << 4;
    QTest::newRow("a buffer shorter than its rows") << 5;
    QTest::newRow("a pitch that makes the last row stick out") << 6;
    QTest::newRow("a width beyond all memory") << 7;
    QTest::newRow("signed samples") << 8;
    QTest::newRow("a depth of 0") << 9;
    QTest::newRow("a depth above its samples") << 10;
    QTest::newRow("pixel bits of another format") << 11;
    QTest::newRow("three channels of mono") << 12;
}

void TestViewerDisplay::badRecordsLeaveThePicture()
{
    QFETCH(int, fault);
    TestImage image = flat(10);
    _ZorImage& record = image.change();
    const std::function<void()> faults[] = {
        [] {},
        [&] { record.data = nullptr; },
        [&] { record.width = 0; },
        [&] { record.height = 0; },
        [&] { record.pitch = 39; },
        [&] { record.imageSize -= 1; },
        [&] { record.pitch = 41; },
        [&] { record.width = std::numeric_limits<std::uint32_t>::max(); },
        [&] { record.isSigned = 1; },
        [&] { record.depth = 0; },
        [&] { record.depth = 9; },
        [&] { record.pixelBits = 16; },
        [&] { record.channels = 3; },
    };
    faults[fault]();
    ShownViewer shown(QSize(40, 30));
    shown.show(flat(77));
    const QImage before = shown.grab();
    QVERIFY((shown.viewer->display(fault == 0 ? nullptr : &record) & 0xFFFF) != 0);
    QCOMPARE(shown.grab(), before);
    QCOMPARE(shown.listener.count("processed"), 1);
    QCOMPARE(int(*shown.viewer->stage()->image(0)->data), 77);
}

void TestViewerDisplay::nothingOfTheCallersBufferIsReadLater()
{
    ShownViewer shown(QSize(80, 60));
    TestImage image(zor::Mono12, 80, 60, [](int x, int y, int) { return x * 50 + y; });
    shown.show(image);
    const QImage before = shown.grab();
    image.poison();
    shown.setScale(5.0);
    shown.grab();
    shown.run("cmd.image.rebuild");
    shown.run("cmd.display.view.fit", {{"mode", "1"}});
    QCOMPARE(shown.grab(), before);
}

void TestViewerDisplay::theStageHoldsACopy()
{
    ShownViewer shown(QSize(80, 60));
    const TestImage image(
        zor::Mono12, 50, 40, [](int x, int y, int) { return x * 50 + y; }, 6);
    shown.show(image);
    const _ZorImage* copy = shown.viewer->stage()->image(0);
    QVERIFY(copy && copy->data != image.record()->data);
    QCOMPARE(copy->width, 50u);
    QCOMPARE(copy->pitch, image.record()->pitch);
    QCOMPARE(std::memcmp(copy->data, image.record()->data, copy->imageSize), 0);
    QCOMPARE(shown.viewer->stage()->value(), std::int64_t{40} << 32 | 50);
    QVERIFY(!shown.viewer->stage()->image(1));
    QVERIFY(!shown.viewer->stage()->image(255));
}

void TestViewerDisplay::itsOwnStageImageCanBeShown()
{
    ShownViewer shown(QSize(80, 60));
    shown.show(TestImage(zor::Mono8, 80, 60, [](int x, int y, int) { return x + y; }));
    const QImage before = shown.grab();
    QCOMPARE(shown.viewer->display(shown.viewer->stage()->image(0)), 0);
    QCOMPARE(shown.grab(), before);
    // The lower half of it, in a record of somebody's own.
    _ZorImage part = *shown.viewer->stage()->image(0);
    part.data += 30 * part.pitch;
    part.height = 30;
    part.imageSize = 30 * part.pitch;
    QCOMPARE(shown.viewer->display(&part), 0);
    QCOMPARE(int(*shown.viewer->stage()->image(0)->data), 30);
    QCOMPARE(shown.viewer->stage()->image(0)->height, 30u);
}

void TestViewerDisplay::configureJudgesHeaders_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<quint32>("pixelType");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("mono") << 10 << zor::Mono12 << true;
    QTest::newRow("packed mono") << 10 << Mono12Packed << true;
    QTest::newRow("colour") << 10 << Rgb8Code << true;
    QTest::newRow("a width of 0") << 0 << zor::Mono8 << false;
    QTest::newRow("no row of the table") << 10 << 0x010801FFu << false;
}

void TestViewerDisplay::configureJudgesHeaders()
{
    QFETCH(int, width);
    QFETCH(quint32, pixelType);
    QFETCH(bool, isTaken);
    ShownViewer shown(QSize(80, 60));
    _ZorImage* header = nullptr;
    ZorCreateImageHeader(&header, std::uint64_t{5} << 32 | static_cast<std::uint32_t>(width), pixelType, 0, 0,
                         0);
    QCOMPARE((shown.viewer->configure(header) & 0xFFFF) == 0, isTaken);
    ZorReleaseImageHeader(&header);
    QCOMPARE(shown.viewer->configure(nullptr), 0);
}

void TestViewerDisplay::colorationChangesMonoOnly()
{
    ShownViewer shown(QSize(40, 30));
    DisplayStageItem* coloration = shown.viewer->stage()->find("image.coloration");
    QVERIFY(coloration);
    QCOMPARE(coloration->value(), std::int64_t{0});
    shown.show(flat(51));
    QCOMPARE(shown.pixel(5, 5), QRgb(qRgb(51, 51, 51)));
    coloration->setValue(1);
    shown.run("cmd.image.rebuild");
    QCOMPARE(coloration->value(), std::int64_t{1});
    QCOMPARE(shown.pixel(5, 5), QRgb(qRgb(0, 0, 255)));
    shown.show(TestImage(Rgb8Code, 40, 30, [](int, int, int c) { return 20 + c; }));
    QCOMPARE(shown.pixel(5, 5), QRgb(qRgb(20, 21, 22)));
    coloration->setValue(0);
    shown.show(flat(51));
    QCOMPARE(shown.pixel(5, 5), QRgb(qRgb(51, 51, 51)));
}

void TestViewerDisplay::pairsAreSideBySide()
{
    ShownViewer shown(QSize(202, 100));
    QCOMPARE(shown.viewer->displayPair(flat(50, 100, 100).record(), flat(200, 100, 100).record()), 1);
    const double ratio = shown.view.devicePixelRatioF();
    QImage picture = shown.grab();
    QCOMPARE(picture.width(), static_cast<int>(202 * ratio));
    QCOMPARE(qRed(picture.pixel(0, 50)), 50);
    QCOMPARE(qRed(picture.pixel(picture.width() / 2 - 3, 50)), 50);
    QCOMPARE(qRed(picture.pixel(picture.width() / 2, 50)), Grey);
    QCOMPARE(qRed(picture.pixel(picture.width() / 2 + 3, 50)), 200);
    QCOMPARE(qRed(picture.pixel(picture.width() - 1, 50)), 200);
    QCOMPARE(int(*shown.viewer->stage()->image(0)->data), 50);
    QCOMPARE(int(*shown.viewer->stage()->image(1)->data), 200);
    // Both panes name the same image pixel.
    for (const int x : {10, 112}) {
        shown.move(QPoint(x, 20), Qt::NoButton);
        QCOMPARE(numberIn(shown.listener.last("mouse.move"), "img.x"), 10);
    }
    shown.show(flat(90, 100, 100));
    picture = shown.grab();
    QCOMPARE(qRed(picture.pixel(picture.width() / 2, 50)), 90);
    QVERIFY(!shown.viewer->stage()->image(1));
}

void TestViewerDisplay::aPairOfTwoSizesIsShownWhole()
{
    ShownViewer shown(QSize(202, 160));
    const TestImage wide = flat(200, 100, 80);
    const TestImage high = flat(90, 50, 160);
    QCOMPARE(shown.viewer->displayPair(wide.record(), high.record()), 1);
    const int ratio = static_cast<int>(shown.view.devicePixelRatioF());
    QCOMPARE(shown.scale(), 1.0 * ratio);
    const QImage picture = shown.grab();
    const auto grey = [&](int x, int y) { return qRed(picture.pixel(x * ratio, y * ratio)); };
    const QList<int> first{grey(0, 0), grey(99, 79), grey(0, 80), grey(99, 159)};
    QCOMPARE(first, (QList<int>{200, 200, Grey, Grey}));
    const QList<int> second{grey(102, 0), grey(151, 159), grey(152, 0), grey(201, 159)};
    QCOMPARE(second, (QList<int>{90, 90, Grey, Grey}));
}

void TestViewerDisplay::aBadPairChangesNothing()
{
    ShownViewer shown(QSize(202, 100));
    shown.show(flat(77));
    const QImage before = shown.grab();
    const TestImage good = flat(10);
    TestImage bad = flat(20);
    bad.change().width = 0;
    QCOMPARE(shown.viewer->displayPair(good.record(), bad.record()), 0);
    QCOMPARE(shown.viewer->displayPair(bad.record(), good.record()), 0);
    QCOMPARE(shown.viewer->displayPair(nullptr, good.record()), 0);
    QCOMPARE(shown.viewer->displayPair(good.record(), nullptr), 0);
    QCOMPARE(shown.grab(), before);
    QCOMPARE(int(*shown.viewer->stage()->image(0)->data), 77);
}

void TestViewerDisplay::displayFromAnotherThread()
{
    ShownViewer shown(QSize(40, 30));
    std::thread::id heardOn;
    shown.listener.act = [&](const Listener::Heard&) { heardOn = std::this_thread::get_id(); };
    int status = -1;
    int place = -1;
    std::atomic<bool> done{false};
    std::thread other([&] {
        status = shown.show(flat(66));
        place = shown.run("cmd.display.view.at", {{"pos.x", "0.1"}, {"pos.y", "0.1"}});
        done = true;
    });
    QTRY_VERIFY(done);
    other.join();
    QCOMPARE(status, 0);
    QCOMPARE(place, 1);
    QVERIFY(heardOn == std::this_thread::get_id());
    QCOMPARE(int(*shown.viewer->stage()->image(0)->data), 66);
}

void TestViewerDisplay::nullsAndCrossedDeletion()
{
    QVERIFY(!ZorDisplayCPU::CreateComponent(nullptr));
    QVERIFY(!ZorDisplayQGL::CreateComponent(nullptr));
    ZorDisplayCPU::DeleteComponent(nullptr);
    ZorDisplayQGL::DeleteComponent(nullptr);
    QWidget plain;
    plain.resize(40, 30);
    ZorDisplayProcessor* viewer = ZorDisplayCPU::CreateComponent(&plain);
    QVERIFY(viewer);
    QCOMPARE(viewer->display(flat(99).record()), 0);
    QCOMPARE(qRed(plain.grab().toImage().pixel(3, 3)), 99);
    ZorDisplayQGL::DeleteComponent(viewer);
    QVERIFY(plain.findChildren<QWidget*>().isEmpty());
    if (QGuiApplication::platformName() == "offscreen")
        QVERIFY2(!ZorDisplayQGL::CreateComponent(&plain), "no OpenGL can be had here");
}

void TestViewerDisplay::theHostMayDestroyItsWidgetFirst()
{
    auto* view = new QGraphicsView;
    view->show();
    ZorDisplayProcessor* viewer =
        wantsGpu() ? ZorDisplayQGL::CreateComponent(view) : ZorDisplayCPU::CreateComponent(view);
    viewer->display(flat(99).record());
    view->grab();
    ParameterMap map;
    QCOMPARE(viewer->command("cmd.system.menu.create", &map), 1);
    delete view;
    QCOMPARE(viewer->display(flat(11).record()), 0);
    QCOMPARE(viewer->command("cmd.display.view.zoom.in", nullptr), 1);
    QCOMPARE(viewer->command("cmd.system.menu.exec", &map), 0);
    QCOMPARE(viewer->command("cmd.system.menu.create", &map), 0);
    ZorDisplayCPU::DeleteComponent(viewer);
}

QTEST_MAIN(TestViewerDisplay)
#include "tst_viewer_display.moc"
