#include "host/zorbench/PlugIn.h"
#include "tests/support/FormatCodes.h"

#include <QSignalSpy>
#include <QStringList>
#include <QtTest>

#include <functional>

namespace {

/// A plug-in that notes what is asked of it and notifies as its window would.
class NotedPlugIn : public ZBKInterfacePlugIn
{
public:
    NotedPlugIn() { m_name = QStringLiteral("Noted"); }

    int Init(ZBKHostCallback callback, void* context) override
    {
        calls.append("Init");
        m_callback = callback;
        m_context = context;
        return 0;
    }
    int Release() override
    {
        calls.append("Release");
        m_isOpen = false;
        return 0;
    }
    int Show(bool visible) override
    {
        calls.append(visible ? "Show" : "Hide");
        if (visible && !std::exchange(m_isOpen, true))
            m_callback(m_context, ZBKEventDialogOpened, this);
        work("Show");
        return 0;
    }
    int SetImage(_ZorImage* image) override
    {
        calls.append(QStringLiteral("SetImage %1").arg(image->width));
        return 0;
    }
    int Update() override
    {
        calls.append("Update");
        work("Update");
        return 0;
    }
    int GetResult(void**) override { return 0; }
    bool HasResult() override { return false; }
    void Reset() override { calls.append("Reset"); }

    /// The operator closes the window.
    void close()
    {
        m_isOpen = false;
        m_callback(m_context, ZBKEventDialogClosed, this);
    }

    /// What was called since the last question.
    QStringList taken() { return std::exchange(calls, {}); }

    QStringList calls;
    QString when;                 ///< the operation within which `within` runs, once
    std::function<void()> within; ///< as in an event loop of the plug-in

private:
    void work(const char* operation)
    {
        if (within && when == QLatin1String(operation))
            std::exchange(within, {})();
    }

    ZBKHostCallback m_callback = nullptr;
    void* m_context = nullptr;
    bool m_isOpen = false;
};

std::shared_ptr<const zor::Frame> frameOf(std::uint32_t width)
{
    auto frame = std::make_shared<zor::Frame>();
    frame->width = width;
    frame->height = 1;
    frame->pitch = width;
    frame->pixelType = codeOf("Mono8");
    frame->pixels.resize(width);
    return frame;
}

} // namespace

/// How the workbench drives a plug-in.
class TestPlugIn : public QObject
{
    Q_OBJECT

private slots:
    void theWindowOpensOnTheCurrentFrame();
    void anOpenWindowFollows();
    void anOfferedFrameWaitsUntilItIsAskedFor_data();
    void anOfferedFrameWaitsUntilItIsAskedFor();
    void aFrameThatIsOfferedWithinAnOperationIsNotFollowed_data();
    void aFrameThatIsOfferedWithinAnOperationIsNotFollowed();
    void anUnknownNotificationIsPassedOver();
    void aFrameWithinAnOperationComesAfterIt_data();
    void aFrameWithinAnOperationComesAfterIt();
    void theEndReleasesOnce();
    void releaseWithinAnOperationIsTheLastThing_data();
    void releaseWithinAnOperationIsTheLastThing();
    void openWithinAnOperationIsDropped();
};

void TestPlugIn::theWindowOpensOnTheCurrentFrame()
{
    NotedPlugIn noted;
    zor::PlugIn plugIn(noted);
    QCOMPARE(plugIn.name(), QString("Noted"));
    plugIn.setFrame(frameOf(3));
    plugIn.setFrame(frameOf(4));
    QVERIFY(!plugIn.isOpen());
    QCOMPARE(noted.taken(), QStringList("Init"));
    plugIn.open();
    QVERIFY(plugIn.isOpen());
    QCOMPARE(noted.taken(), (QStringList{"Show", "SetImage 4"}));
    // Hidden without being closed, it is only shown.
    plugIn.open();
    QCOMPARE(noted.taken(), QStringList("Show"));
}

void TestPlugIn::anOpenWindowFollows()
{
    NotedPlugIn noted;
    zor::PlugIn plugIn(noted);
    QSignalSpy changes(&plugIn, &zor::PlugIn::openChanged);
    plugIn.open();
    QCOMPARE(noted.taken(), (QStringList{"Init", "Show"}));
    plugIn.setFrame(frameOf(5));
    QCOMPARE(noted.taken(), (QStringList{"SetImage 5", "Update"}));
    noted.close();
    QVERIFY(!plugIn.isOpen());
    plugIn.setFrame(frameOf(6));
    QCOMPARE(noted.taken(), QStringList());
    plugIn.open();
    QCOMPARE(noted.taken(), (QStringList{"Show", "SetImage 6"}));
    QCOMPARE(changes, (QList<QVariantList>{{true}, {false}, {true}}));
}

void TestPlugIn::anOfferedFrameWaitsUntilItIsAskedFor_data()
{
    QTest::addColumn<QString>("by");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("by the next one that is to be followed") << "frame" << QStringList{"SetImage 7", "Update"};
    QTest::newRow("by catching up") << "catch up" << QStringList{"SetImage 6", "Update"};
    QTest::newRow("by choosing the open window") << "open" << QStringList{"Show", "SetImage 6", "Update"};
    QTest::newRow("by opening the closed window") << "close, open" << QStringList{"Show", "SetImage 6"};
    QTest::newRow("by nobody while it is closed") << "close, catch up" << QStringList{};
}

void TestPlugIn::anOfferedFrameWaitsUntilItIsAskedFor()
{
    QFETCH(QString, by);
    QFETCH(QStringList, expected);
    NotedPlugIn noted;
    zor::PlugIn plugIn(noted);
    plugIn.setFrame(frameOf(4));
    plugIn.open();
    QCOMPARE(noted.taken(), (QStringList{"Init", "Show", "SetImage 4"}));
    plugIn.offerFrame(frameOf(5));
    plugIn.offerFrame(frameOf(6));
    QCOMPARE(noted.taken(), QStringList());
    if (by.startsWith("close"))
        noted.close();
    if (by == "frame")
        plugIn.setFrame(frameOf(7));
    else if (by.endsWith("catch up"))
        plugIn.catchUp();
    else
        plugIn.open();
    QCOMPARE(noted.taken(), expected);
    // It is up to date.
    if (plugIn.isOpen())
        plugIn.catchUp();
    QCOMPARE(noted.taken(), QStringList());
}

void TestPlugIn::aFrameThatIsOfferedWithinAnOperationIsNotFollowed_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("while the window opens") << "Show" << QStringList{"Show", "SetImage 4"};
    QTest::newRow("while another frame is computed")
        << "Update" << QStringList{"Show", "SetImage 4", "SetImage 7", "Update"};
}

void TestPlugIn::aFrameThatIsOfferedWithinAnOperationIsNotFollowed()
{
    QFETCH(QString, operation);
    QFETCH(QStringList, expected);
    NotedPlugIn noted;
    zor::PlugIn plugIn(noted);
    plugIn.setFrame(frameOf(4));
    noted.taken();
    noted.when = operation;
    noted.within = [&] { plugIn.offerFrame(frameOf(5)); };
    plugIn.open();
    if (operation == "Update")
        plugIn.setFrame(frameOf(7));
    QCOMPARE(noted.taken(), expected);
    plugIn.catchUp();
    QCOMPARE(noted.taken(), (QStringList{"SetImage 5", "Update"}));
}

void TestPlugIn::anUnknownNotificationIsPassedOver()
{
    class Odd : public NotedPlugIn
    {
    public:
        int Init(ZBKHostCallback callback, void* context) override
        {
            callback(context, 0x4004, this);
            return NotedPlugIn::Init(callback, context);
        }
    } odd;
    const zor::PlugIn plugIn(odd);
    QVERIFY(!plugIn.isOpen());
    QCOMPARE(odd.calls, QStringList("Init"));
}

void TestPlugIn::aFrameWithinAnOperationComesAfterIt_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("while the window opens") << "Show" << QStringList{"Show", "SetImage 8", "Update"};
    QTest::newRow("while another frame is computed")
        << "Update" << QStringList{"Show", "SetImage 7", "Update", "SetImage 8", "Update"};
}

void TestPlugIn::aFrameWithinAnOperationComesAfterIt()
{
    QFETCH(QString, operation);
    QFETCH(QStringList, expected);
    NotedPlugIn noted;
    zor::PlugIn plugIn(noted);
    noted.taken();
    noted.when = operation;
    bool wasIdle = false;
    noted.within = [&] {
        const int before = noted.calls.size();
        plugIn.setFrame(frameOf(9));
        plugIn.setFrame(frameOf(8));
        wasIdle = noted.calls.size() == before;
    };
    plugIn.open();
    if (operation == "Update")
        plugIn.setFrame(frameOf(7));
    QVERIFY(wasIdle);
    QCOMPARE(noted.taken(), expected);
}

void TestPlugIn::theEndReleasesOnce()
{
    NotedPlugIn noted;
    {
        zor::PlugIn plugIn(noted);
        plugIn.open();
        QSignalSpy changes(&plugIn, &zor::PlugIn::openChanged);
        plugIn.release();
        QCOMPARE(changes, (QList<QVariantList>{{false}}));
        plugIn.open();
        plugIn.setFrame(frameOf(5));
    }
    QCOMPARE(noted.taken(), (QStringList{"Init", "Show", "Release"}));
    {
        const zor::PlugIn plugIn(noted);
    }
    QCOMPARE(noted.taken(), (QStringList{"Init", "Release"}));
}

void TestPlugIn::releaseWithinAnOperationIsTheLastThing_data()
{
    QTest::addColumn<QString>("operation");
    QTest::newRow("while the window opens") << "Show";
    QTest::newRow("while a frame is computed") << "Update";
}

void TestPlugIn::releaseWithinAnOperationIsTheLastThing()
{
    QFETCH(QString, operation);
    NotedPlugIn noted;
    zor::PlugIn plugIn(noted);
    noted.when = operation;
    noted.within = [&] {
        plugIn.setFrame(frameOf(8));
        plugIn.release();
    };
    plugIn.open();
    plugIn.setFrame(frameOf(7));
    QCOMPARE(noted.calls.last(), QString("Release"));
    QCOMPARE(noted.calls.count("Release"), 1);
}

void TestPlugIn::openWithinAnOperationIsDropped()
{
    NotedPlugIn noted;
    zor::PlugIn plugIn(noted);
    noted.when = "Show";
    noted.within = [&] { plugIn.open(); };
    plugIn.open();
    QCOMPARE(noted.taken(), (QStringList{"Init", "Show"}));
    plugIn.open();
    QCOMPARE(noted.taken(), QStringList("Show"));
}

QTEST_APPLESS_MAIN(TestPlugIn)
#include "tst_plug_in.moc"
