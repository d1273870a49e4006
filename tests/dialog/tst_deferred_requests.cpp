#include "dialog/DialogUse.h"
#include "image/HighLightProcessor.h"
#include "tests/fakes/FakeConverter.h"
#include "tests/fakes/FakeViewer.h"
#include "tests/support/Cursors.h"
#include "tests/support/DialogProbe.h"
#include "tests/support/LinkedViews.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <functional>
#include <future>
#include <set>
#include <thread>
#include <utility>

namespace {

using Request = zor::DeferredRequests::Request;

Request requestOf(QChar letter)
{
    switch (letter.toLatin1()) {
    case 'R':
        return Request::Reset;
    case 'U':
        return Request::Update;
    case '+':
        return Request::HighlightsOn;
    default:
        return Request::HighlightsOff;
    }
}

QChar letterOf(Request request)
{
    constexpr const char* Letters = "RU+-";
    return QLatin1Char(Letters[static_cast<int>(request)]);
}

/// A shown dialog that writes down what is done: a letter for each view that gets an image ("u" and "d"),
/// each reset ("R") and each action of the highlights ("+" and "-"). The fake viewers take no processor over;
/// those that the dialog made are given back here.
class Journal : public DialogProbe
{
public:
    Journal() { show(); }
    ~Journal() override
    {
        note();
        for (HighLightProcessor* processor : m_made)
            delete processor;
    }

    void ResetFrame() override
    {
        FakeViewer::calls().push_back({"reset", false, {}, {}, nullptr, nullptr, {}});
        hadCursor = QGuiApplication::overrideCursor() != nullptr;
        if (const auto once = std::exchange(onReset, nullptr))
            once();
        DialogProbe::ResetFrame();
    }

    /// One of the requests by its letter: R, U, + for a click that ticks the box, - for one that unticks it.
    void ask(QChar letter)
    {
        if (letter == 'R')
            ResetData(false);
        else if (letter == 'U')
            ui.pBUpdate->click();
        else
            ui.chBHighlights->click();
        note();
    }
    void ask(const QString& letters)
    {
        for (const QChar letter : letters)
            ask(letter);
    }

    QString requests()
    {
        QString letters;
        for (const ViewerCall& call : FakeViewer::calls()) {
            if (call.name == "display")
                letters += call.target == ui.gVUp ? 'u' : 'd';
            else if (call.name == "run")
                letters += call.text == "processing.proc.add" ? '+' : '-';
            else if (call.name == "reset")
                letters += 'R';
        }
        return letters;
    }

    std::function<void()> onReset; ///< called inside the next reset
    bool hadCursor = true;         ///< at the last reset

private:
    void note()
    {
        if (m_highLight)
            m_made.insert(m_highLight);
    }

    std::set<HighLightProcessor*> m_made;
};

} // namespace

/// Resets, updates and clicks on the highlights that come in while this thread holds the view lock.
class TestDeferredRequests : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void requestsWaitInTheirOrder_data();
    void requestsWaitInTheirOrder();
    void whatIsAddedMeanwhileComesLast();
    void requestsOfARefreshAreCarriedOutAfterIt_data();
    void requestsOfARefreshAreCarriedOutAfterIt();
    void resetAfterARefreshFindsTheCursorRestored();
    void requestsOfTheSecondRefreshComeAfterTheFirst();
    void whoeverHoldsTheLockCarriesOut_data();
    void whoeverHoldsTheLockCarriesOut();
    void requestsWaitForTheLastHolder();
    void anotherThreadCarriesNothingOut();
    void updateReadsItsSettingsWhenItIsCarriedOut();
    void frameDuringARefreshIsDropped();
};

void TestDeferredRequests::init()
{
    FakeViewer::reset();
    fakeConverter = FakeConverter();
}

void TestDeferredRequests::cleanup()
{
    QCOMPARE(restoreAllCursors(), 0);
}

void TestDeferredRequests::requestsWaitInTheirOrder_data()
{
    QTest::addColumn<QString>("added");
    QTest::addColumn<QString>("carriedOut");
    QTest::newRow("nothing") << ""
                             << "";
    QTest::newRow("each kind once") << "R+U-"
                                    << "R+U-";
    QTest::newRow("an update that waits is not added again") << "U+U"
                                                             << "U+";
    QTest::newRow("a reset that waits is not added again") << "R+R"
                                                           << "R+";
    QTest::newRow("a reset drops the update before it") << "UR"
                                                        << "R";
    QTest::newRow("a reset leaves the clicks") << "+UR"
                                               << "+R";
    QTest::newRow("an update after the reset waits") << "URU"
                                                     << "RU";
    QTest::newRow("a second reset drops the update between") << "RUR"
                                                             << "R";
    QTest::newRow("each click counts") << "+-+"
                                       << "+-+";
    QTest::newRow("also the same one twice") << "--"
                                             << "--";
}

void TestDeferredRequests::requestsWaitInTheirOrder()
{
    QFETCH(QString, added);
    QFETCH(QString, carriedOut);
    zor::DeferredRequests requests;
    for (const QChar letter : added)
        requests.add(requestOf(letter));
    QString letters;
    const auto note = [&letters](Request request) { letters += letterOf(request); };
    requests.carryOut(note);
    QCOMPARE(letters, carriedOut);
    requests.carryOut(note);
    QCOMPARE(letters, carriedOut);
}

void TestDeferredRequests::whatIsAddedMeanwhileComesLast()
{
    zor::DeferredRequests requests;
    requests.add(Request::Update);
    requests.add(Request::HighlightsOn);
    QString letters;
    const std::function<void(Request)> note = [&](Request request) {
        letters += letterOf(request);
        if (request == Request::Update) {
            requests.add(Request::Reset);
            requests.carryOut(note);
        }
    };
    requests.carryOut(note);
    QCOMPARE(letters, QString("U+R"));
}

void TestDeferredRequests::requestsOfARefreshAreCarriedOutAfterIt_data()
{
    QTest::addColumn<QString>("requests");
    QTest::addColumn<QString>("done");
    QTest::newRow("an update") << "U"
                               << "ud";
    QTest::newRow("two updates, once") << "UU"
                                       << "ud";
    QTest::newRow("a click, which refreshes") << "+"
                                              << "+ud";
    QTest::newRow("an update, then a click") << "U+"
                                             << "ud+ud";
    QTest::newRow("a click, then an update") << "+U"
                                             << "+udud";
    QTest::newRow("two clicks, each as the box was ticked then") << "+-"
                                                                 << "+ud-ud";
    QTest::newRow("a reset") << "R"
                             << "R";
    QTest::newRow("a reset takes the update before it along") << "UR"
                                                              << "R";
    QTest::newRow("an update after a reset finds no frame") << "RU"
                                                            << "R";
    QTest::newRow("a click after a reset shows nothing") << "R+"
                                                         << "R+";
    QTest::newRow("a reset after a click") << "+R"
                                           << "+udR";
}

void TestDeferredRequests::requestsOfARefreshAreCarriedOutAfterIt()
{
    QFETCH(QString, requests);
    QFETCH(QString, done);
    Journal d;
    d.take(TestFrame::rising(30));
    FakeViewer::calls().clear();
    QString inside;
    // The start of a viewer lets events in.
    FakeViewer::script().onConfigure = [&](QWidget* view) {
        if (view == d.ui.gVDown)
            d.ask(requests);
        inside = d.requests();
    };
    d.Update();
    QCOMPARE(inside, QString("u"));
    QCOMPARE(d.requests(), "ud" + done);
    QCOMPARE(d.m_image != nullptr, !requests.contains('R'));
    QVERIFY(!d.m_viewLock.heldByThisThread());
}

void TestDeferredRequests::resetAfterARefreshFindsTheCursorRestored()
{
    Journal d;
    d.take(TestFrame::rising(30));
    FakeViewer::script().onConfigure = [&](QWidget*) { d.ResetData(false); };
    d.hadCursor = true;
    d.Update();
    QVERIFY(!d.m_image);
    QVERIFY(!d.hadCursor);
}

// The refresh of a request that waited lets events in as well.
void TestDeferredRequests::requestsOfTheSecondRefreshComeAfterTheFirst()
{
    Journal d;
    d.take(TestFrame::rising(30));
    int starts = 0;
    FakeViewer::script().onConfigure = [&](QWidget* view) {
        if (view == d.ui.gVUp)
            d.ask(QLatin1Char('+'));
    };
    FakeViewer::script().onSettings = [&](QWidget*) {
        // The first of two questions that a click comes with.
        if (++starts != 1)
            return;
        d.m_viewLock.lock();
        d.ask(QStringLiteral("U-"));
        d.m_viewLock.unlock();
    };
    FakeViewer::calls().clear();
    d.Update();
    QCOMPARE(d.requests(), QString("ud+udud-ud"));
}

void TestDeferredRequests::whoeverHoldsTheLockCarriesOut_data()
{
    QTest::addColumn<QString>("holder");
    QTest::newRow("a view that follows the other") << "following";
    QTest::newRow("a reset") << "reset";
    QTest::newRow("a derived class") << "derived";
}

void TestDeferredRequests::whoeverHoldsTheLockCarriesOut()
{
    QFETCH(QString, holder);
    Journal d;
    d.take(TestFrame::rising(30));
    d.Update();
    _ZorImage stage{};
    setStage(stage, 30, 20, 2.0);
    FakeViewer::calls().clear();
    QString inside = "nobody asked";
    const auto ask = [&] {
        d.ask(QLatin1Char('+'));
        inside = d.requests();
    };
    if (holder == "following") {
        FakeViewer::script().answers["cmd.display.view.scale"] = [&](ParameterMap*) {
            ask();
            return 1;
        };
        d.m_viewClock = QTime::currentTime().addSecs(-10);
        d.onViewChanged(d.ui.gVUp);
        QCOMPARE(inside, QString());
        QCOMPARE(d.requests(), QString("+ud"));
    } else if (holder == "reset") {
        d.onReset = ask;
        d.ResetData(false);
        QCOMPARE(inside, QString("R"));
        QCOMPARE(d.requests(), QString("R+"));
    } else {
        d.m_viewLock.lock();
        ask();
        d.m_viewLock.unlock();
        QCOMPARE(inside, QString());
        QCOMPARE(d.requests(), QString("+ud"));
    }
}

// A view change inside a refresh finds the lock busy; its own end carries nothing out.
void TestDeferredRequests::requestsWaitForTheLastHolder()
{
    Journal d;
    d.take(TestFrame::rising(30));
    QString inside;
    FakeViewer::script().onConfigure = [&](QWidget* view) {
        if (view != d.ui.gVUp)
            return;
        d.ask(QLatin1Char('U'));
        d.m_viewClock = QTime::currentTime().addSecs(-10);
        d.onViewChanged(d.ui.gVUp);
        inside = d.requests();
    };
    FakeViewer::calls().clear();
    d.Update();
    QCOMPARE(inside, QString());
    QCOMPARE(d.requests(), QString("udud"));
}

void TestDeferredRequests::anotherThreadCarriesNothingOut()
{
    Journal d;
    d.take(TestFrame::rising(30));
    d.Update();
    FakeViewer::calls().clear();
    std::thread::id worker;
    FakeViewer::script().onSettings = [&worker](QWidget*) { worker = std::this_thread::get_id(); };
    {
        // While an operation is on the stack, its end carries the requests out.
        const zor::DialogUse use(d);
        d.m_viewLock.lock();
        d.ask(QLatin1Char('+'));
        d.m_viewLock.unlock();
        std::async(std::launch::async, [&d] { d.ResetData(false); }).get();
        QCOMPARE(d.requests(), QString("R"));
    }
    QCOMPARE(d.requests(), QString("R+"));
    QVERIFY(worker == std::this_thread::get_id());
}

void TestDeferredRequests::updateReadsItsSettingsWhenItIsCarriedOut()
{
    Journal d;
    d.take(TestFrame::rising(30));
    d.m_viewLock.lock();
    d.ui.pBUpdate->click();
    QCOMPARE(d.m_normalizeValue, 1.0);
    d.ui.lENormFFC->setText(QStringLiteral("0.5"));
    QVERIFY(!d.m_flatY);
    d.m_viewLock.unlock();
    QCOMPARE(d.m_normalizeValue, 0.5);
    QVERIFY(d.m_flatY);
}

void TestDeferredRequests::frameDuringARefreshIsDropped()
{
    Journal d;
    d.take(TestFrame::rising(30));
    const std::uint8_t* const image = d.m_image;
    d.m_viewLock.lock();
    d.take(TestFrame::rising(10));
    d.m_viewLock.unlock();
    QCOMPARE(d.m_width, 30);
    QCOMPARE(static_cast<const std::uint8_t*>(d.m_image), image);
}

QTEST_MAIN(TestDeferredRequests)
#include "tst_deferred_requests.moc"
