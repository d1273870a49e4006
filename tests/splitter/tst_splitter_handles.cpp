#include "splitter/CCrossSplitterHandle.h"
#include "splitter/CSplitterHandle.h"

#include <QSignalSpy>
#include <QtTest>

#include <memory>

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

void send(QWidget& widget, QEvent::Type type, QPoint place, Qt::MouseButton button = Qt::LeftButton)
{
    const Qt::MouseButtons held =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
    QMouseEvent event(type, place, type == QEvent::MouseMove ? Qt::NoButton : button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

} // namespace

class tst_splitter_handles : public QObject
{
    Q_OBJECT

private slots:
    void cursorTellsTheDirection_data();
    void cursorTellsTheDirection();
    void barReportsTheWayAlongItsAxis_data();
    void barReportsTheWayAlongItsAxis();
    void crossReportsBothWays();
    void pressOutsideDoesNothing();
    void movesWithoutPressAreSilent();
    void everyButtonDrags_data();
    void everyButtonDrags();
    void barReleasedOutsideStaysCaught();
    void crossReleasedOutsideIsFree();
    void leavingDoesNotEndADrag();
    void theWayIsTakenFromThePressAlways();
    void crossTellsOfTheCatchBeforeItStoresThePlace();
    void barStoresThePlaceBeforeItTellsOfTheCatch();
    void trackingIsOn();
    void signalsStandInTheirOrder_data();
    void signalsStandInTheirOrder();
};

void tst_splitter_handles::cursorTellsTheDirection_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("shape");
    QTest::newRow("a vertical bar moves left and right") << int(Qt::Vertical) << int(Qt::SplitHCursor);
    QTest::newRow("a horizontal bar moves up and down") << int(Qt::Horizontal) << int(Qt::SplitVCursor);
    QTest::newRow("a bar of any other direction") << 3 << int(Qt::SplitVCursor);
    QTest::newRow("a cross moves both ways") << 0 << int(Qt::SizeAllCursor);
}

void tst_splitter_handles::cursorTellsTheDirection()
{
    QFETCH(int, kind);
    QFETCH(int, shape);
    std::unique_ptr<QWidget> handle;
    int told = -1;
    const auto noteCursor = [&] { told = handle->cursor().shape(); };
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
    QCOMPARE(told, shape);

    leave(*handle);
    QCOMPARE(int(handle->cursor().shape()), shape);
}

void tst_splitter_handles::barReportsTheWayAlongItsAxis_data()
{
    QTest::addColumn<int>("orientation");
    QTest::addColumn<int>("delta");
    QTest::newRow("a vertical bar reports x") << int(Qt::Vertical) << 7;
    QTest::newRow("a horizontal bar reports y") << int(Qt::Horizontal) << 3;
    QTest::newRow("a bar of any other direction reports y") << 3 << 3;
}

void tst_splitter_handles::barReportsTheWayAlongItsAxis()
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
    send(handle, QEvent::MouseButtonPress, {2, 1});
    QCOMPARE(caught.count(), 1);
    send(handle, QEvent::MouseMove, {9, 4});
    QCOMPARE(moved, 1);
    QCOMPARE(num, 4);
    QCOMPARE(way, delta);
}

void tst_splitter_handles::crossReportsBothWays()
{
    CCrossSplitterHandle handle(2, nullptr);
    QSignalSpy moved(&handle, SIGNAL(handleMoved(int, int, int)));
    enter(handle);
    send(handle, QEvent::MouseButtonPress, {2, 1});
    send(handle, QEvent::MouseMove, {9, 4});
    QCOMPARE(moved.count(), 1);
    QCOMPARE(moved.at(0), (QVariantList{2, 7, 3}));
}

void tst_splitter_handles::pressOutsideDoesNothing()
{
    CSplitterHandle bar(0, Qt::Vertical, nullptr);
    CCrossSplitterHandle cross(0, nullptr);
    QSignalSpy barCaught(&bar, SIGNAL(handleCatched()));
    QSignalSpy barMoved(&bar, &CSplitterHandle::handleMoved);
    QSignalSpy crossCaught(&cross, SIGNAL(handleCatched()));
    QSignalSpy crossMoved(&cross, SIGNAL(handleMoved(int, int, int)));
    for (QWidget* handle : {static_cast<QWidget*>(&bar), static_cast<QWidget*>(&cross)}) {
        send(*handle, QEvent::MouseButtonPress, {1, 1});
        send(*handle, QEvent::MouseMove, {5, 5});
    }
    QCOMPARE(barCaught.count() + barMoved.count() + crossCaught.count() + crossMoved.count(), 0);
}

void tst_splitter_handles::movesWithoutPressAreSilent()
{
    CSplitterHandle bar(0, Qt::Vertical, nullptr);
    CCrossSplitterHandle cross(0, nullptr);
    QSignalSpy barMoved(&bar, &CSplitterHandle::handleMoved);
    QSignalSpy crossMoved(&cross, SIGNAL(handleMoved(int, int, int)));
    for (QWidget* handle : {static_cast<QWidget*>(&bar), static_cast<QWidget*>(&cross)}) {
        enter(*handle);
        send(*handle, QEvent::MouseMove, {1, 1});
        send(*handle, QEvent::MouseMove, {4, 4});
    }
    QCOMPARE(barMoved.count() + crossMoved.count(), 0);
}

void tst_splitter_handles::everyButtonDrags_data()
{
    QTest::addColumn<int>("button");
    QTest::newRow("left") << int(Qt::LeftButton);
    QTest::newRow("right") << int(Qt::RightButton);
    QTest::newRow("middle") << int(Qt::MiddleButton);
    QTest::newRow("back") << int(Qt::BackButton);
}

void tst_splitter_handles::everyButtonDrags()
{
    QFETCH(int, button);
    CSplitterHandle bar(0, Qt::Vertical, nullptr);
    CCrossSplitterHandle cross(0, nullptr);
    QSignalSpy barMoved(&bar, &CSplitterHandle::handleMoved);
    QSignalSpy crossMoved(&cross, SIGNAL(handleMoved(int, int, int)));
    for (QWidget* handle : {static_cast<QWidget*>(&bar), static_cast<QWidget*>(&cross)}) {
        enter(*handle);
        send(*handle, QEvent::MouseButtonPress, {0, 0}, Qt::MouseButton(button));
        send(*handle, QEvent::MouseMove, {1, 0}, Qt::MouseButton(button));
        // Any button lets go again.
        send(*handle, QEvent::MouseButtonRelease, {1, 0}, Qt::MouseButton(button));
        send(*handle, QEvent::MouseMove, {2, 0}, Qt::MouseButton(button));
    }
    QCOMPARE(barMoved.count(), 1);
    QCOMPARE(crossMoved.count(), 1);
}

void tst_splitter_handles::barReleasedOutsideStaysCaught()
{
    CSplitterHandle bar(0, Qt::Vertical, nullptr);
    QSignalSpy moved(&bar, &CSplitterHandle::handleMoved);
    enter(bar);
    send(bar, QEvent::MouseButtonPress, {0, 0});
    leave(bar);
    send(bar, QEvent::MouseButtonRelease, {40, 0});
    send(bar, QEvent::MouseMove, {41, 0});
    QCOMPARE(moved.count(), 1);

    enter(bar);
    send(bar, QEvent::MouseButtonRelease, {1, 0});
    send(bar, QEvent::MouseMove, {2, 0});
    QCOMPARE(moved.count(), 1);
}

void tst_splitter_handles::crossReleasedOutsideIsFree()
{
    CCrossSplitterHandle cross(0, nullptr);
    QSignalSpy moved(&cross, SIGNAL(handleMoved(int, int, int)));
    enter(cross);
    send(cross, QEvent::MouseButtonPress, {0, 0});
    leave(cross);
    send(cross, QEvent::MouseButtonRelease, {40, 0});
    send(cross, QEvent::MouseMove, {41, 0});
    QCOMPARE(moved.count(), 0);
}

void tst_splitter_handles::leavingDoesNotEndADrag()
{
    CSplitterHandle bar(0, Qt::Horizontal, nullptr);
    CCrossSplitterHandle cross(0, nullptr);
    QSignalSpy barMoved(&bar, &CSplitterHandle::handleMoved);
    QSignalSpy crossMoved(&cross, SIGNAL(handleMoved(int, int, int)));
    for (QWidget* handle : {static_cast<QWidget*>(&bar), static_cast<QWidget*>(&cross)}) {
        enter(*handle);
        send(*handle, QEvent::MouseButtonPress, {0, 0});
        leave(*handle);
        send(*handle, QEvent::MouseMove, {30, 30});
    }
    QCOMPARE(barMoved.count(), 1);
    QCOMPARE(crossMoved.count(), 1);
}

void tst_splitter_handles::theWayIsTakenFromThePressAlways()
{
    CSplitterHandle bar(0, Qt::Vertical, nullptr);
    QList<int> ways;
    connect(&bar, &CSplitterHandle::handleMoved, [&](int, Qt::Orientation, int way) { ways << way; });
    enter(bar);
    send(bar, QEvent::MouseButtonPress, {10, 0});
    send(bar, QEvent::MouseMove, {13, 0});
    send(bar, QEvent::MouseMove, {15, 0});
    QCOMPARE(ways, (QList<int>{3, 5}));
}

// A listener that moves the handle in the middle of the catch shows which of the two comes first.
void tst_splitter_handles::crossTellsOfTheCatchBeforeItStoresThePlace()
{
    CCrossSplitterHandle cross(0, nullptr);
    QSignalSpy moved(&cross, SIGNAL(handleMoved(int, int, int)));
    connect(&cross, &CCrossSplitterHandle::handleCatched, [&] { send(cross, QEvent::MouseMove, {10, 10}); });
    enter(cross);
    send(cross, QEvent::MouseButtonPress, {4, 4});
    QCOMPARE(moved.at(0), (QVariantList{0, 10, 10}));
}

void tst_splitter_handles::barStoresThePlaceBeforeItTellsOfTheCatch()
{
    CSplitterHandle bar(0, Qt::Vertical, nullptr);
    int way = 0;
    connect(&bar, &CSplitterHandle::handleMoved, [&](int, Qt::Orientation, int d) { way = d; });
    connect(&bar, &CSplitterHandle::handleCatched, [&] { send(bar, QEvent::MouseMove, {10, 10}); });
    enter(bar);
    send(bar, QEvent::MouseButtonPress, {4, 4});
    QCOMPARE(way, 6);
}

void tst_splitter_handles::trackingIsOn()
{
    QVERIFY(CSplitterHandle(0, Qt::Vertical, nullptr).hasMouseTracking());
    QVERIFY(CCrossSplitterHandle(0, nullptr).hasMouseTracking());
}

void tst_splitter_handles::signalsStandInTheirOrder_data()
{
    QTest::addColumn<bool>("cross");
    QTest::addColumn<QByteArrayList>("signatures");
    QTest::newRow("bar") << false
                         << QByteArrayList{"cursorInside()", "handleCatched()",
                                           "handleMoved(int,Qt::Orientation,int)"};
    QTest::newRow("cross") << true
                           << QByteArrayList{"cursorInside()", "handleCatched()", "handleMoved(int,int,int)"};
}

void tst_splitter_handles::signalsStandInTheirOrder()
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

QTEST_MAIN(tst_splitter_handles)
#include "tst_splitter_handles.moc"
