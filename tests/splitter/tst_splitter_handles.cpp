#include "splitter/CCrossSplitterHandle.h"
#include "splitter/CSplitterHandle.h"
#include "tests/splitter/MouseEvents.h"
#include "tests/support/PropertyDifferences.h"

#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <memory>
#include <new>

namespace {

void enter(QWidget& widget)
{
    QEvent event(QEvent::Enter);
    QCoreApplication::sendEvent(&widget, &event);
}

void leave(QWidget& widget)
{
    QEvent event(QEvent::Leave);
    QCoreApplication::sendEvent(&widget, &event);
}

/// Makes a handle in memory that is not zero, gives it an event and answers what it reports.
template <typename Handle, typename... Arguments>
int movesOfAFreshHandle(QEvent::Type type, Arguments... arguments)
{
    alignas(Handle) unsigned char memory[sizeof(Handle)];
    std::fill(std::begin(memory), std::end(memory), static_cast<unsigned char>(0xFF));
    auto* handle = new (memory) Handle(arguments...);
    int reports = 0;
    QObject::connect(handle, &Handle::handleMoved, [&reports] { ++reports; });
    QObject::connect(handle, &Handle::handleCatched, [&reports] { ++reports; });
    sendMouse(*handle, type, {1, 1});
    handle->~Handle();
    return reports;
}

} // namespace

class TestSplitterHandles : public QObject
{
    Q_OBJECT

private slots:
    void cursorShowsTheDirection_data();
    void cursorShowsTheDirection();
    void barReportsTheWayAlongItsAxis_data();
    void barReportsTheWayAlongItsAxis();
    void crossReportsBothWays();
    void pressOutsideDoesNothing_data();
    void pressOutsideDoesNothing();
    void aPressOutsideDoesNotTouchADrag();
    void freshHandlesAreFree_data();
    void freshHandlesAreFree();
    void mouseEventsEndInTheHandle_data();
    void mouseEventsEndInTheHandle();
    void handlesAreBlank();
    void movesWithoutPressAreSilent();
    void everyButtonDrags_data();
    void everyButtonDrags();
    void barReleasedOutsideStaysCaught();
    void crossReleasedOutsideIsFree();
    void leavingDoesNotEndADrag();
    void theWayIsTakenFromThePressAlways();
    void crossReportsTheCatchBeforeItStoresThePlace();
    void barStoresThePlaceBeforeItReportsTheCatch();
    void trackingIsOn();
    void signalsAreInTheirOrder_data();
    void signalsAreInTheirOrder();
};

void TestSplitterHandles::cursorShowsTheDirection_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("shape");
    QTest::newRow("a vertical bar moves left and right") << int(Qt::Vertical) << int(Qt::SplitHCursor);
    QTest::newRow("a horizontal bar moves up and down") << int(Qt::Horizontal) << int(Qt::SplitVCursor);
    QTest::newRow("a bar of any other direction") << 3 << int(Qt::SplitVCursor);
    QTest::newRow("a cross moves both ways") << 0 << int(Qt::SizeAllCursor);
}

void TestSplitterHandles::cursorShowsTheDirection()
{
    QFETCH(int, kind);
    QFETCH(int, shape);
    std::unique_ptr<QWidget> handle;
    int shown = -1;
    const auto noteCursor = [&] { shown = handle->cursor().shape(); };
    if (kind) {
        auto bar = std::make_unique<CSplitterHandle>(0, Qt::Orientation(kind), nullptr);
        connect(bar.get(), &CSplitterHandle::cursorInside, noteCursor);
        handle = std::move(bar);
    } else {
        auto cross = std::make_unique<CCrossSplitterHandle>(0, nullptr);
        connect(cross.get(), &CCrossSplitterHandle::cursorInside, noteCursor);
        handle = std::move(cross);
    }
    QSignalSpy entered(handle.get(), SIGNAL(cursorInside()));
    QVERIFY(!handle->testAttribute(Qt::WA_SetCursor));

    enter(*handle);
    QCOMPARE(int(handle->cursor().shape()), shape);
    QCOMPARE(entered.count(), 1);
    QCOMPARE(shown, shape);

    leave(*handle);
    QCOMPARE(int(handle->cursor().shape()), shape);
}

void TestSplitterHandles::barReportsTheWayAlongItsAxis_data()
{
    QTest::addColumn<int>("orientation");
    QTest::addColumn<int>("delta");
    QTest::newRow("a vertical bar reports x") << int(Qt::Vertical) << 7;
    QTest::newRow("a horizontal bar reports y") << int(Qt::Horizontal) << 3;
    QTest::newRow("a bar of any other direction reports y") << 3 << 3;
}

void TestSplitterHandles::barReportsTheWayAlongItsAxis()
{
    QFETCH(int, orientation);
    QFETCH(int, delta);
    CSplitterHandle handle(4, Qt::Orientation(orientation), nullptr);
    QSignalSpy caught(&handle, SIGNAL(handleCatched()));
    int num = -1, moved = 0, way = 0;
    connect(&handle, &CSplitterHandle::handleMoved, [&](int n, Qt::Orientation o, int d) {
        QCOMPARE(int(o), orientation);
        num = n;
        way = d;
        ++moved;
    });

    enter(handle);
    sendMouse(handle, QEvent::MouseButtonPress, {2, 1});
    QCOMPARE(caught.count(), 1);
    sendMouse(handle, QEvent::MouseMove, {9, 4});
    QCOMPARE(moved, 1);
    QCOMPARE(num, 4);
    QCOMPARE(way, delta);
}

void TestSplitterHandles::crossReportsBothWays()
{
    CCrossSplitterHandle handle(2, nullptr);
    QSignalSpy moved(&handle, SIGNAL(handleMoved(int, int, int)));
    enter(handle);
    sendMouse(handle, QEvent::MouseButtonPress, {2, 1});
    sendMouse(handle, QEvent::MouseMove, {9, 4});
    QCOMPARE(moved.count(), 1);
    QCOMPARE(moved.at(0), (QVariantList{2, 7, 3}));
}

void TestSplitterHandles::pressOutsideDoesNothing_data()
{
    QTest::addColumn<bool>("wasInside");
    QTest::newRow("a cursor that never came") << false;
    QTest::newRow("a cursor that left") << true;
}

void TestSplitterHandles::pressOutsideDoesNothing()
{
    QFETCH(bool, wasInside);
    CSplitterHandle bar(0, Qt::Vertical, nullptr);
    CCrossSplitterHandle cross(0, nullptr);
    QSignalSpy barCaught(&bar, SIGNAL(handleCatched()));
    QSignalSpy barMoved(&bar, &CSplitterHandle::handleMoved);
    QSignalSpy crossCaught(&cross, SIGNAL(handleCatched()));
    QSignalSpy crossMoved(&cross, SIGNAL(handleMoved(int, int, int)));
    for (QWidget* handle : {static_cast<QWidget*>(&bar), static_cast<QWidget*>(&cross)}) {
        if (wasInside) {
            enter(*handle);
            leave(*handle);
        }
        sendMouse(*handle, QEvent::MouseButtonPress, {1, 1});
        sendMouse(*handle, QEvent::MouseMove, {5, 5});
    }
    QCOMPARE(barCaught.count(), 0);
    QCOMPARE(barMoved.count(), 0);
    QCOMPARE(crossCaught.count(), 0);
    QCOMPARE(crossMoved.count(), 0);
}

// The second button of a mouse goes down while the first one drags.
void TestSplitterHandles::aPressOutsideDoesNotTouchADrag()
{
    CSplitterHandle bar(0, Qt::Vertical, nullptr);
    CCrossSplitterHandle cross(0, nullptr);
    QSignalSpy barCaught(&bar, SIGNAL(handleCatched()));
    QSignalSpy crossCaught(&cross, SIGNAL(handleCatched()));
    QSignalSpy crossMoved(&cross, SIGNAL(handleMoved(int, int, int)));
    int way = 0;
    connect(&bar, &CSplitterHandle::handleMoved, [&](int, Qt::Orientation, int d) { way = d; });
    for (QWidget* handle : {static_cast<QWidget*>(&bar), static_cast<QWidget*>(&cross)}) {
        enter(*handle);
        sendMouse(*handle, QEvent::MouseButtonPress, {1, 2});
        leave(*handle);
        sendMouse(*handle, QEvent::MouseButtonPress, {20, 20}, Qt::RightButton);
        sendMouse(*handle, QEvent::MouseMove, {31, 42});
    }
    QCOMPARE(barCaught.count(), 1);
    QCOMPARE(way, 30);
    QCOMPARE(crossCaught.count(), 1);
    QCOMPARE(crossMoved.value(0), (QVariantList{0, 30, 40}));
}

void TestSplitterHandles::freshHandlesAreFree_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("no cursor is inside") << int(QEvent::MouseButtonPress);
    QTest::newRow("no drag is under way") << int(QEvent::MouseMove);
}

void TestSplitterHandles::freshHandlesAreFree()
{
    QFETCH(int, type);
    QCOMPARE(movesOfAFreshHandle<CSplitterHandle>(QEvent::Type(type), 0, Qt::Vertical, nullptr), 0);
    QCOMPARE(movesOfAFreshHandle<CCrossSplitterHandle>(QEvent::Type(type), 0, nullptr), 0);
}

void TestSplitterHandles::mouseEventsEndInTheHandle_data()
{
    QTest::addColumn<bool>("isInside");
    QTest::newRow("with the cursor inside") << true;
    QTest::newRow("with the cursor outside") << false;
}

void TestSplitterHandles::mouseEventsEndInTheHandle()
{
    QFETCH(bool, isInside);
    MouseNotes parent;
    CSplitterHandle bar(0, Qt::Vertical, &parent);
    CCrossSplitterHandle cross(0, &parent);
    for (QWidget* handle : {static_cast<QWidget*>(&bar), static_cast<QWidget*>(&cross)}) {
        if (isInside)
            enter(*handle);
        for (const QEvent::Type type : MouseTypes)
            sendMouse(*handle, type, {1, 1});
    }
    QCOMPARE(parent.seen, std::vector<QEvent::Type>());
}

// A handle looks like a plain frame: no frame style, nothing painted, in use or not.
void TestSplitterHandles::handlesAreBlank()
{
    QWidget parent;
    QFrame plain(&parent);
    CSplitterHandle bar(0, Qt::Vertical, &parent);
    CCrossSplitterHandle cross(0, &parent);
    plain.resize(20, 20);
    const QImage expected = plain.grab().toImage();
    for (QFrame* handle : {static_cast<QFrame*>(&bar), static_cast<QFrame*>(&cross)}) {
        QCOMPARE(propertyDifferences(handle, &plain), QStringList{"mouseTracking"});
        QCOMPARE(handle->frameStyle(), plain.frameStyle());
        QCOMPARE(handle->windowFlags(), plain.windowFlags());
        handle->resize(20, 20);
        QCOMPARE(handle->grab().toImage(), expected);
        enter(*handle);
        sendMouse(*handle, QEvent::MouseButtonPress, {1, 1});
        QCOMPARE(handle->grab().toImage(), expected);
    }
}

void TestSplitterHandles::movesWithoutPressAreSilent()
{
    CSplitterHandle bar(0, Qt::Vertical, nullptr);
    CCrossSplitterHandle cross(0, nullptr);
    QSignalSpy barMoved(&bar, &CSplitterHandle::handleMoved);
    QSignalSpy crossMoved(&cross, SIGNAL(handleMoved(int, int, int)));
    for (QWidget* handle : {static_cast<QWidget*>(&bar), static_cast<QWidget*>(&cross)}) {
        enter(*handle);
        sendMouse(*handle, QEvent::MouseMove, {1, 1});
        sendMouse(*handle, QEvent::MouseMove, {4, 4});
    }
    QCOMPARE(barMoved.count() + crossMoved.count(), 0);
}

void TestSplitterHandles::everyButtonDrags_data()
{
    QTest::addColumn<int>("button");
    QTest::newRow("left") << int(Qt::LeftButton);
    QTest::newRow("right") << int(Qt::RightButton);
    QTest::newRow("middle") << int(Qt::MiddleButton);
    QTest::newRow("back") << int(Qt::BackButton);
}

void TestSplitterHandles::everyButtonDrags()
{
    QFETCH(int, button);
    CSplitterHandle bar(0, Qt::Vertical, nullptr);
    CCrossSplitterHandle cross(0, nullptr);
    QSignalSpy barMoved(&bar, &CSplitterHandle::handleMoved);
    QSignalSpy crossMoved(&cross, SIGNAL(handleMoved(int, int, int)));
    for (QWidget* handle : {static_cast<QWidget*>(&bar), static_cast<QWidget*>(&cross)}) {
        enter(*handle);
        sendMouse(*handle, QEvent::MouseButtonPress, {0, 0}, Qt::MouseButton(button));
        sendMouse(*handle, QEvent::MouseMove, {1, 0}, Qt::MouseButton(button));
        // Any button lets go again.
        sendMouse(*handle, QEvent::MouseButtonRelease, {1, 0}, Qt::MouseButton(button));
        sendMouse(*handle, QEvent::MouseMove, {2, 0}, Qt::MouseButton(button));
    }
    QCOMPARE(barMoved.count(), 1);
    QCOMPARE(crossMoved.count(), 1);
}

void TestSplitterHandles::barReleasedOutsideStaysCaught()
{
    CSplitterHandle bar(0, Qt::Vertical, nullptr);
    QSignalSpy moved(&bar, &CSplitterHandle::handleMoved);
    enter(bar);
    sendMouse(bar, QEvent::MouseButtonPress, {0, 0});
    leave(bar);
    sendMouse(bar, QEvent::MouseButtonRelease, {40, 0});
    sendMouse(bar, QEvent::MouseMove, {41, 0});
    QCOMPARE(moved.count(), 1);

    enter(bar);
    sendMouse(bar, QEvent::MouseButtonRelease, {1, 0});
    sendMouse(bar, QEvent::MouseMove, {2, 0});
    QCOMPARE(moved.count(), 1);
}

void TestSplitterHandles::crossReleasedOutsideIsFree()
{
    CCrossSplitterHandle cross(0, nullptr);
    QSignalSpy moved(&cross, SIGNAL(handleMoved(int, int, int)));
    enter(cross);
    sendMouse(cross, QEvent::MouseButtonPress, {0, 0});
    leave(cross);
    sendMouse(cross, QEvent::MouseButtonRelease, {40, 0});
    sendMouse(cross, QEvent::MouseMove, {41, 0});
    QCOMPARE(moved.count(), 0);
}

void TestSplitterHandles::leavingDoesNotEndADrag()
{
    CSplitterHandle bar(0, Qt::Horizontal, nullptr);
    CCrossSplitterHandle cross(0, nullptr);
    QSignalSpy barMoved(&bar, &CSplitterHandle::handleMoved);
    QSignalSpy crossMoved(&cross, SIGNAL(handleMoved(int, int, int)));
    for (QWidget* handle : {static_cast<QWidget*>(&bar), static_cast<QWidget*>(&cross)}) {
        enter(*handle);
        sendMouse(*handle, QEvent::MouseButtonPress, {0, 0});
        leave(*handle);
        sendMouse(*handle, QEvent::MouseMove, {30, 30});
    }
    QCOMPARE(barMoved.count(), 1);
    QCOMPARE(crossMoved.count(), 1);
}

void TestSplitterHandles::theWayIsTakenFromThePressAlways()
{
    CSplitterHandle bar(0, Qt::Vertical, nullptr);
    QList<int> ways;
    connect(&bar, &CSplitterHandle::handleMoved, [&](int, Qt::Orientation, int way) { ways << way; });
    enter(bar);
    sendMouse(bar, QEvent::MouseButtonPress, {10, 0});
    sendMouse(bar, QEvent::MouseMove, {13, 0});
    sendMouse(bar, QEvent::MouseMove, {15, 0});
    QCOMPARE(ways, (QList<int>{3, 5}));
}

// A listener that moves the handle in the middle of the catch shows which of the two comes first.
void TestSplitterHandles::crossReportsTheCatchBeforeItStoresThePlace()
{
    CCrossSplitterHandle cross(0, nullptr);
    QSignalSpy moved(&cross, SIGNAL(handleMoved(int, int, int)));
    connect(&cross, &CCrossSplitterHandle::handleCatched, [&] {
        sendMouse(cross, QEvent::MouseMove, {10, 10});
    });
    enter(cross);
    sendMouse(cross, QEvent::MouseButtonPress, {4, 4});
    QCOMPARE(moved.at(0), (QVariantList{0, 10, 10}));
}

void TestSplitterHandles::barStoresThePlaceBeforeItReportsTheCatch()
{
    CSplitterHandle bar(0, Qt::Vertical, nullptr);
    int way = 0;
    connect(&bar, &CSplitterHandle::handleMoved, [&](int, Qt::Orientation, int d) { way = d; });
    connect(&bar, &CSplitterHandle::handleCatched, [&] { sendMouse(bar, QEvent::MouseMove, {10, 10}); });
    enter(bar);
    sendMouse(bar, QEvent::MouseButtonPress, {4, 4});
    QCOMPARE(way, 6);
}

void TestSplitterHandles::trackingIsOn()
{
    QVERIFY(CSplitterHandle(0, Qt::Vertical, nullptr).hasMouseTracking());
    QVERIFY(CCrossSplitterHandle(0, nullptr).hasMouseTracking());
}

void TestSplitterHandles::signalsAreInTheirOrder_data()
{
    QTest::addColumn<bool>("cross");
    QTest::addColumn<QByteArrayList>("signatures");
    QTest::newRow("bar") << false
                         << QByteArrayList{"cursorInside()", "handleCatched()",
                                           "handleMoved(int,Qt::Orientation,int)"};
    QTest::newRow("cross") << true
                           << QByteArrayList{"cursorInside()", "handleCatched()", "handleMoved(int,int,int)"};
}

void TestSplitterHandles::signalsAreInTheirOrder()
{
    QFETCH(bool, cross);
    QFETCH(QByteArrayList, signatures);
    const QMetaObject& meta =
        cross ? CCrossSplitterHandle::staticMetaObject : CSplitterHandle::staticMetaObject;
    QByteArrayList found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        found << meta.method(i).methodSignature();
    QCOMPARE(found, signatures);
}

QTEST_MAIN(TestSplitterHandles)
#include "tst_splitter_handles.moc"
