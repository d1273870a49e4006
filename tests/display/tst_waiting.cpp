#include "tests/display/AdapterFixture.h"

#include <QCursor>
#include <QSocketNotifier>
#include <QtTest>

#include <atomic>
#include <unistd.h>

namespace {

/// Reports its deletion.
class WatchedEvent : public QEvent
{
public:
    WatchedEvent(QEvent::Type type, int* deletions)
        : QEvent(type)
        , count(deletions)
    {
    }
    ~WatchedEvent() override { ++*count; }

private:
    int* count;
};

/// Counts the events of one type that come to an object.
class EventCounter : public QObject
{
public:
    EventCounter(QObject* watched, QEvent::Type which)
        : type(which)
    {
        watched->installEventFilter(this);
    }

    int count = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == type ? 1 : 0;
        return false;
    }

private:
    QEvent::Type type;
};

/// A thread that works while the test's thread, the view's own, delivers events.
class Worker
{
public:
    explicit Worker(const std::function<void()>& work)
        : thread([this, work] {
            work();
            done = true;
        })
    {
    }
    ~Worker() { finish(); }

    bool isDone() const { return done; }
    void finish()
    {
        while (!done)
            QCoreApplication::processEvents();
        if (thread.joinable())
            thread.join();
    }

private:
    std::atomic<bool> done{false};
    std::thread thread;
};

} // namespace

class TestWaiting : public QObject, private AdapterFixture
{
    Q_OBJECT

private slots:
    void init() { setUp(13); }
    void cleanup() { tearDown(); }
    void filtersItsOwnEventsOfItsView_data();
    void filtersItsOwnEventsOfItsView();
    void filtersNothingElse();
    void handledEvents_data();
    void handledEvents();
    void aReservedEventReachesTheView();
    void postingNeedsEventAndView();
    void postedEventsWaitTheirTurn();
    void pendingEventsArriveInsidePrepare();
    void otherEventsOfTheThreadArriveInsidePrepare_data();
    void otherEventsOfTheThreadArriveInsidePrepare();
    void anotherThreadWaitsForTheStart_data();
    void anotherThreadWaitsForTheStart();
    void anotherThreadShowsManyShapes();
    void anyHandledEventEndsTheWait_data();
    void anyHandledEventEndsTheWait();
    void anEventThatIsHandledBeforeTheWaitEndsIt();
    void anAdapterMadeElsewhereMovesToItsView();
};

void TestWaiting::filtersItsOwnEventsOfItsView_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("filtered");
    QTest::newRow("start") << int(DisplayEvStart) << true;
    QTest::newRow("context menu") << int(DisplayEvContextMenu) << true;
    QTest::newRow("reserved goes on to the view") << int(DisplayEvReserved) << false;
    QTest::newRow("view changed") << int(DisplayEvViewChanged) << false;
    QTest::newRow("mouse down") << int(DisplayEvMouseDown) << false;
    QTest::newRow("hex dump") << int(DisplayEvHexDump) << false;
    QTest::newRow("message") << int(DisplayEvMessage) << false;
    QTest::newRow("image processed") << int(DisplayEvImageProcessed) << false;
    QTest::newRow("none") << int(QEvent::None) << false;
    QTest::newRow("an event of Qt") << int(QEvent::Resize) << false;
}

void TestWaiting::filtersItsOwnEventsOfItsView()
{
    QFETCH(int, type);
    QFETCH(bool, filtered);
    QEvent event{static_cast<QEvent::Type>(type)};
    QCOMPARE(adapter->eventFilter(view.get(), &event), filtered);
    QCOMPARE(adapter->routeEvent(&event), filtered);
}

void TestWaiting::filtersNothingElse()
{
    QEvent start(DisplayEvStart);
    QVERIFY(!adapter->eventFilter(view->viewport(), &start));
    QVERIFY(!adapter->eventFilter(nullptr, &start));
    QVERIFY(!adapter->eventFilter(view.get(), nullptr));
    QVERIFY(!adapter->hasViewer());
    QVERIFY(QCoreApplication::sendEvent(view.get(), &start));
    QVERIFY(adapter->hasViewer());
}

void TestWaiting::handledEvents_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("handled");
    QTest::newRow("start") << int(DisplayEvStart) << true;
    QTest::newRow("context menu") << int(DisplayEvContextMenu) << true;
    QTest::newRow("reserved") << int(DisplayEvReserved) << false;
    QTest::newRow("view changed") << int(DisplayEvViewChanged) << false;
    QTest::newRow("an event of Qt") << int(QEvent::Resize) << false;
}

void TestWaiting::handledEvents()
{
    QFETCH(int, type);
    QFETCH(bool, handled);
    // Whatever the work itself came to.
    FakeViewer::script().canCreate = false;
    QEvent event{static_cast<QEvent::Type>(type)};
    QCOMPARE(adapter->handleDisplayEvent(&event), handled);
    QVERIFY(!adapter->handleDisplayEvent(nullptr));
    QCOMPARE(calledNames().contains("create CPU"), type == DisplayEvStart);
}

void TestWaiting::aReservedEventReachesTheView()
{
    QEvent reserved(DisplayEvReserved);
    QCoreApplication::sendEvent(view.get(), &reserved);
    QCOMPARE(view->seenTypes(), std::vector<int>{DisplayEvReserved});
    QCOMPARE(calledNames(), QStringList());
}

void TestWaiting::postingNeedsEventAndView()
{
    QVERIFY(!adapter->postToView(nullptr));
    QVERIFY(!adapter->postToViewAndWait(nullptr));
    int deletions = 0;
    QVERIFY(adapter->postToView(new WatchedEvent(DisplayEvViewChanged, &deletions)));
    QCOMPARE(deletions, 0);
    QVERIFY(view->seen.empty());
    QCoreApplication::sendPostedEvents();
    QCOMPARE(deletions, 1);
    QCOMPARE(view->seenTypes(), std::vector<int>{DisplayEvViewChanged});
    // On the view's own thread the wait delivers the event itself.
    QVERIFY(adapter->postToViewAndWait(new WatchedEvent(DisplayEvReserved, &deletions)));
    QCOMPARE(deletions, 2);

    DisplayAdapterQT viewless(nullptr, false, 13);
    QVERIFY(!viewless.postToView(nullptr));
    QVERIFY(!viewless.postToViewAndWait(nullptr));
    QVERIFY(!viewless.postToView(new WatchedEvent(DisplayEvViewChanged, &deletions)));
    QCOMPARE(deletions, 3);
    QVERIFY(!viewless.postToViewAndWait(new WatchedEvent(DisplayEvStart, &deletions)));
    QCOMPARE(deletions, 4);
}

void TestWaiting::postedEventsWaitTheirTurn()
{
    const auto postPlainly = [this] {
        QCoreApplication::postEvent(view.get(), new QEvent(DisplayEvHexDump), Qt::NormalEventPriority);
    };
    postPlainly();
    adapter->postToView(new QEvent(DisplayEvViewChanged));
    postPlainly();
    QCoreApplication::sendPostedEvents();
    const std::vector<int> expected = {DisplayEvHexDump, DisplayEvViewChanged, DisplayEvHexDump};
    QCOMPARE(view->seenTypes(), expected);
}

void TestWaiting::pendingEventsArriveInsidePrepare()
{
    adapter->postToView(new QEvent(DisplayEvViewChanged));
    const _ZorImage image = imageOf(64, 48);
    QVERIFY(adapter->prepareImage(&image, false));
    QCOMPARE(view->seenTypes(), std::vector<int>{DisplayEvViewChanged});
    adapter->postToView(new QEvent(DisplayEvViewChanged));
    // An unchanged frame lets them wait.
    QVERIFY(!adapter->prepareImage(&image, false));
    QCOMPARE(view->seen.size(), std::size_t(1));
}

void TestWaiting::otherEventsOfTheThreadArriveInsidePrepare_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("a posted event of another object") << "post";
    QTest::newRow("what the user does") << "user";
    QTest::newRow("a file that can be read") << "file";
}

void TestWaiting::otherEventsOfTheThreadArriveInsidePrepare()
{
    QFETCH(QString, source);
    QObject other;
    EventCounter posts(&other, QEvent::User);
    EventCounter moves(view->viewport(), QEvent::MouseMove);
    int ends[2];
    QCOMPARE(pipe(ends), 0);
    QSocketNotifier notifier(ends[0], QSocketNotifier::Read);
    EventCounter reads(&notifier, QEvent::SockAct);
    const EventCounter& expected = source == "post" ? posts : source == "user" ? moves : reads;
    view->setMouseTracking(true);
    view->setGeometry(100, 100, 200, 200);
    view->show();
    QVERIFY(QTest::qWaitForWindowExposed(view.get()));
    QCursor::setPos(view->mapToGlobal(QPoint(50, 50)));
    QCoreApplication::processEvents();
    const int before = expected.count;

    if (source == "post")
        QCoreApplication::postEvent(&other, new QEvent(QEvent::User));
    else if (source == "user")
        QCursor::setPos(view->mapToGlobal(QPoint(60, 60)));
    else
        QCOMPARE(write(ends[1], "", 1), ssize_t(1));
    QCOMPARE(expected.count, before);
    const _ZorImage image = imageOf(64, 48);
    QVERIFY(adapter->prepareImage(&image, false));
    QCOMPARE(expected.count, before + 1);
    close(ends[0]);
    close(ends[1]);
}

void TestWaiting::anotherThreadWaitsForTheStart_data()
{
    QTest::addColumn<bool>("canCreate");
    QTest::addColumn<int>("status");
    QTest::addColumn<quint32>("error");
    QTest::newRow("success") << true << 0 << 0u;
    QTest::newRow("failed creation") << false << 0 << 8u;
    QTest::newRow("failed configure") << true << 6 << 6u;
}

void TestWaiting::anotherThreadWaitsForTheStart()
{
    QFETCH(bool, canCreate);
    QFETCH(int, status);
    QFETCH(quint32, error);
    FakeViewer::script().canCreate = canCreate;
    FakeViewer::script().configureStatus = status;
    std::thread::id startThread;
    FakeViewer::script().answers["cmd.display.view.nofication"] = [&](ParameterMap*) {
        startThread = std::this_thread::get_id();
        return 1;
    };
    bool changed = false;
    std::uint32_t seenError = 77;
    bool displayed = false;
    Worker worker([&] {
        const _ZorImage image = imageOf(64, 48);
        changed = adapter->prepareImage(&image, false);
        seenError = adapter->lastError();
        displayed = adapter->displayImage(&image);
    });
    worker.finish();
    QVERIFY(changed);
    QCOMPARE(seenError, error);
    QCOMPARE(displayed, canCreate);
    QCOMPARE(adapter->hasViewer(), canCreate);
    // The start-up ran on the view's thread.
    QVERIFY(startThread == (canCreate ? std::this_thread::get_id() : std::thread::id()));
}

void TestWaiting::anotherThreadShowsManyShapes()
{
    int changes = 0;
    std::atomic<int> configured{0};
    FakeViewer::script().onConfigure = [&](QWidget*) { ++configured; };
    int early = 0;
    Worker worker([&] {
        for (std::uint32_t i = 0; i < 200; ++i) {
            const _ZorImage image = imageOf(64 + i / 2, 48);
            changes += adapter->prepareImage(&image, false) ? 1 : 0;
            early += configured == changes ? 0 : 1;
            adapter->displayImage(&image);
            ParameterMap move = {{"code", "mouse.move"}, {"img.x", std::to_string(i)}};
            FakeViewer::notify("notification.view", &move);
        }
    });
    worker.finish();
    QCoreApplication::sendPostedEvents();
    QCOMPARE(changes, 100);
    // Each shape waited for its own start.
    QCOMPARE(early, 0);
    QCOMPARE(FakeViewer::callsOf("configure").size(), std::size_t(100));
    QCOMPARE(FakeViewer::callsOf("display").size(), std::size_t(200));
    QCOMPARE(view->seen.size(), std::size_t(200));
    for (int i = 0; i < 200; ++i)
        QCOMPARE(view->seen[std::size_t(i)].imagePos.x(), i);
}

void TestWaiting::anyHandledEventEndsTheWait_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("none at all") << 0;
    QTest::newRow("start") << int(DisplayEvStart);
    QTest::newRow("context menu") << int(DisplayEvContextMenu);
    QTest::newRow("reserved") << int(DisplayEvReserved);
    QTest::newRow("one that the adapter has no use for") << int(QEvent::User);
}

void TestWaiting::anyHandledEventEndsTheWait()
{
    QFETCH(int, type);
    bool posted = false;
    Worker worker([&] {
        // The adapter does not handle this one, so nothing but another event ends the wait.
        posted = adapter->postToViewAndWait(new QEvent(DisplayEvViewChanged));
    });
    while (view->seen.empty())
        QCoreApplication::processEvents();
    QVERIFY(!worker.isDone());
    QEvent event{static_cast<QEvent::Type>(type)};
    adapter->handleDisplayEvent(type == 0 ? nullptr : &event);
    worker.finish();
    QVERIFY(posted);
}

void TestWaiting::anEventThatIsHandledBeforeTheWaitEndsIt()
{
    auto* application = static_cast<TsanApplication*>(QCoreApplication::instance());
    std::atomic<bool> posted{false};
    std::atomic<bool> handled{false};
    application->afterPost = [&] {
        posted = true;
        while (!handled)
            std::this_thread::yield();
    };
    Worker worker([&] {
        const _ZorImage image = imageOf(64, 48);
        adapter->prepareImage(&image, false);
    });
    while (!posted)
        std::this_thread::yield();
    QCoreApplication::sendPostedEvents();
    handled = true;
    for (int i = 0; i < 3000 && !worker.isDone(); ++i)
        QTest::qWait(10);
    const bool ended = worker.isDone();
    // A wait that missed its event ends now.
    adapter->handleDisplayEvent(nullptr);
    worker.finish();
    application->afterPost = nullptr;
    QVERIFY(ended);
    QVERIFY(adapter->hasViewer());
}

void TestWaiting::anAdapterMadeElsewhereMovesToItsView()
{
    adapter.reset();
    std::thread maker([this] { adapter = std::make_unique<DisplayAdapterQT>(view.get(), false, 13); });
    maker.join();
    QCOMPARE(adapter->thread(), view->thread());
    const _ZorImage image = imageOf(64, 48);
    QVERIFY(adapter->prepareImage(&image, false));
    QVERIFY(adapter->hasViewer());
    QCOMPARE(adapter->lastError(), 0u);
}

ZOR_DISPLAY_TEST_MAIN(TestWaiting)
#include "tst_waiting.moc"
