#include "tests/display/AdapterFixture.h"

#include <QtTest>

/// When an image counts as changed, and the header record that the viewer is then configured with.
class TestImageHeader : public QObject, private AdapterFixture
{
    Q_OBJECT

private slots:
    void init() { setUp(); }
    void cleanup() { tearDown(); }
    void configureGetsTheHeader();
    void anUnchangedImageSendsNothing();
    void aChangedImageStartsAgain_data();
    void aChangedImageStartsAgain();
    void anEmptyImageStartsAtEveryFrame_data();
    void anEmptyImageStartsAtEveryFrame();
    void anEmptyFirstImageStartsTheViewer();
    void aHeaderThatCannotBeMadeStaysNull();
    void forceKeepsTheHeader();
    void withoutAViewTheGeometryIsRemembered();
};

void TestImageHeader::configureGetsTheHeader()
{
    start(false, 13);
    const _ZorImage* header = FakeImageHeaders::last();
    QCOMPARE(FakeViewer::callsOf("configure").at(0).argument, static_cast<const void*>(header));
    QCOMPARE(header->width, 64u);
    QCOMPARE(header->height, 48u);
    QCOMPARE(header->pixelType, zor::Mono8);
}

void TestImageHeader::anUnchangedImageSendsNothing()
{
    start(false, 13);
    FakeViewer::calls().clear();
    leaveOldError(*adapter);
    // Only these three fields are compared.
    _ZorImage second = imageOf(64, 48);
    second.depth = 5;
    second.pitch = 1000;
    QVERIFY(!prepare(second));
    QCOMPARE(adapter->lastError(), 0u);
    QCOMPARE(calledNames(), QStringList());
    QCOMPARE(FakeImageHeaders::created(), 1);
    QCOMPARE(FakeImageHeaders::released(), 0);
}

void TestImageHeader::aChangedImageStartsAgain_data()
{
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint32>("height");
    QTest::addColumn<quint32>("pixelType");
    QTest::newRow("another width") << 65u << 48u << zor::Mono8;
    QTest::newRow("another height") << 64u << 47u << zor::Mono8;
    QTest::newRow("another pixel type") << 64u << 48u << zor::Mono12;
    QTest::newRow("width and height exchanged") << 48u << 64u << zor::Mono8;
    QTest::newRow("a width of all bits") << 0xFFFFFFFFu << 48u << zor::Mono8;
}

void TestImageHeader::aChangedImageStartsAgain()
{
    QFETCH(quint32, width);
    QFETCH(quint32, height);
    QFETCH(quint32, pixelType);
    start(false, 0);
    const ViewerCall firstAdd = FakeViewer::callsOf("cmd.system.notification.add").at(0);
    FakeViewer::calls().clear();
    QVERIFY(prepare(imageOf(width, height, pixelType)));
    const QStringList expected = {"message Initializing CPU viewer...", "configure",
                                  "cmd.system.notification.add", "message "};
    QCOMPARE(calledNames(), expected);
    // The same listener again.
    QCOMPARE(FakeViewer::callsOf("cmd.system.notification.add").at(0).before.at("proc"),
             firstAdd.before.at("proc"));
    QCOMPARE(FakeImageHeaders::released(), 1);
    QCOMPARE(FakeImageHeaders::last()->width, width);
    QCOMPARE(FakeImageHeaders::last()->height, height);
    QCOMPARE(FakeImageHeaders::last()->pixelType, pixelType);
    QVERIFY(!prepare(imageOf(width, height, pixelType)));
}

void TestImageHeader::anEmptyImageStartsAtEveryFrame_data()
{
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint32>("height");
    QTest::addColumn<quint32>("pixelType");
    QTest::newRow("width 0") << 0u << 48u << zor::Mono8;
    QTest::newRow("height 0") << 64u << 0u << zor::Mono8;
    QTest::newRow("pixel type 0") << 64u << 48u << 0u;
}

void TestImageHeader::anEmptyImageStartsAtEveryFrame()
{
    QFETCH(quint32, width);
    QFETCH(quint32, height);
    QFETCH(quint32, pixelType);
    start(false, 0);
    for (int frame = 0; frame < 3; ++frame) {
        FakeViewer::calls().clear();
        QVERIFY(prepare(imageOf(width, height, pixelType)));
        const auto configured = FakeViewer::callsOf("configure");
        QCOMPARE(configured.size(), std::size_t(1));
        QVERIFY(!configured[0].argument);
    }
    // The old header went at the first one.
    QCOMPARE(FakeImageHeaders::released(), 1);
    QCOMPARE(FakeImageHeaders::created(), 1);
}

void TestImageHeader::anEmptyFirstImageStartsTheViewer()
{
    adapter = std::make_unique<DisplayAdapterQT>(view.get(), false, 13);
    QStringList expected = {"create CPU",
                            "message Initializing CPU viewer...",
                            "configure",
                            "cmd.system.notification.add",
                            "cmd.display.view.nofication",
                            "cmd.parameter.set",
                            "message "};
    for (int frame = 0; frame < 3; ++frame) {
        FakeViewer::calls().clear();
        QVERIFY(prepare(imageOf(0, 48)));
        QCOMPARE(calledNames(), expected);
        QVERIFY(!FakeViewer::callsOf("configure").at(0).argument);
        QCOMPARE(adapter->lastError(), 0u);
        // The one viewer stays.
        expected.removeAll("create CPU");
    }
    QCOMPARE(FakeImageHeaders::created(), 0);
    QCOMPARE(FakeImageHeaders::released(), 0);
}

void TestImageHeader::aHeaderThatCannotBeMadeStaysNull()
{
    FakeImageHeaders::failFromNowOn();
    start(false, 0);
    QVERIFY(!FakeViewer::callsOf("configure").at(0).argument);
    QVERIFY(prepare(imageOf(64, 48)));
    QCOMPARE(FakeImageHeaders::released(), 0);
    QCOMPARE(FakeViewer::callsOf("configure").size(), std::size_t(2));
}

void TestImageHeader::forceKeepsTheHeader()
{
    start(false, 13);
    FakeViewer::calls().clear();
    QVERIFY(!prepare(imageOf(64, 48), true));
    const QStringList expected = {
        "message Initializing CPU viewer...", "configure",         "cmd.system.notification.add",
        "cmd.display.view.nofication",        "cmd.parameter.set", "message "};
    QCOMPARE(calledNames(), expected);
    QCOMPARE(FakeViewer::callsOf("configure").at(0).argument,
             static_cast<const void*>(FakeImageHeaders::last()));
    QCOMPARE(FakeImageHeaders::created(), 1);
    QCOMPARE(FakeImageHeaders::released(), 0);
    QVERIFY(prepare(imageOf(64, 47), true));
}

void TestImageHeader::withoutAViewTheGeometryIsRemembered()
{
    adapter = std::make_unique<DisplayAdapterQT>(nullptr, false, 13);
    QVERIFY(prepare(imageOf(64, 48)));
    QCOMPARE(FakeImageHeaders::created(), 1);
    QCOMPARE(calledNames(), QStringList());
    QVERIFY(!prepare(imageOf(64, 48)));
    QVERIFY(!adapter->hasViewer());
    QCOMPARE(adapter->lastError(), 0u);
}

ZOR_DISPLAY_TEST_MAIN(TestImageHeader)
#include "tst_image_header.moc"
