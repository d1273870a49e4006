#include "tests/dialog/DialogData.h"
#include "tests/dialog/FailingAllocations.h"
#include "tests/dialog/RunAllocations.h"
#include "tests/support/Cursors.h"
#include "tests/support/DialogProbe.h"
#include "tests/support/ModalWatch.h"

#include <QCheckBox>
#include <QMessageBox>
#include <QPointer>
#include <QTest>

namespace {

TestFrame largeFrame()
{
    return TestFrame(9, 8, 12, [](int x, int y) { return static_cast<unsigned>(600 + 20 * x + 3 * y); });
}

TestFrame smallFrame()
{
    return TestFrame(3, 2, 12, [](int x, int y) { return static_cast<unsigned>(900 - 70 * x - 30 * y); });
}

} // namespace

/// A host's timer runs in the event loop of a box: it hands another frame over and has it computed, all
/// inside the stage that showed the box.
class TestBoxEventLoop : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void runInsideTheBoxIsKept_data();
    void runInsideTheBoxIsKept();
    void frameTakenInsideTheBoxIsNotMixedUp_data();
    void frameTakenInsideTheBoxIsNotMixedUp();
    void dialogDiscardedInsideTheBoxEndsAfterIt_data();
    void dialogDiscardedInsideTheBoxEndsAfterIt();

private:
    static void addPlaces();
};

void TestBoxEventLoop::cleanup()
{
    failAllocation(0);
    restoreAllCursors();
}

void TestBoxEventLoop::addPlaces()
{
    QTest::addColumn<int>("place");
    for (std::size_t place = Image; place < PlaceCount; ++place) {
        if (place != Plan && place != Buffer)
            QTest::addRow("%s fails", PlaceNames[place]) << int(place);
    }
}

void TestBoxEventLoop::runInsideTheBoxIsKept_data()
{
    addPlaces();
}

void TestBoxEventLoop::runInsideTheBoxIsKept()
{
    QFETCH(int, place);
    DialogProbe sound;
    sound.ui.chBShowY->setChecked(true);
    sound.take(smallFrame());
    QVERIFY(sound.RunCorrection());

    DialogProbe d;
    d.ui.chBShowY->setChecked(true);
    ModalWatch watch;
    watch.onBox = [&](QMessageBox&) {
        failAllocation(0);
        d.take(smallFrame());
        d.Update();
    };
    failAllocation(place == Image ? 1 : 0);
    d.take(largeFrame());
    bool answer = false;
    if (place != Image) {
        failAllocation(place);
        answer = d.RunCorrection();
    }
    QCOMPARE(watch.texts.size(), 1);
    // In the second column pass the failure is passed over, and the run goes on with the other frame. The
    // run inside has left cells, so that holds for a failure of the cells too.
    const bool secondPass =
        place == Codes2 || place == FlatX2 || place == Offset2 || place == FlatColumnMean2;
    QCOMPARE(answer, secondPass);
    QCOMPARE(d.m_width, 3);
    QCOMPARE(d.m_height, 2);
    QCOMPARE(listed(d.m_columnGains), listed(sound.m_columnGains));
    QCOMPARE(listed(d.m_rowGains), listed(sound.m_rowGains));
    QCOMPARE(items(d.m_columnMean, 3), items(sound.m_columnMean, 3));
    QCOMPARE(items(d.m_rowMean, 2), items(sound.m_rowMean, 2));
    QCOMPARE(d.m_flatXStep, sound.m_flatXStep);
    QCOMPARE(d.m_flatYStep, sound.m_flatYStep);
    QCOMPARE(items(d.m_flatX, 8), items(sound.m_flatX, 8));
    QCOMPARE(items(d.m_flatY, 8), items(sound.m_flatY, 8));
    QCOMPARE(items(d.m_flatColumnMean, 3), items(sound.m_flatColumnMean, 3));
    QCOMPARE(items(d.m_flatRowMean, 2), items(sound.m_flatRowMean, 2));
    QCOMPARE(items(d.m_flatColumnLine, 3), items(sound.m_flatColumnLine, 3));
    QCOMPARE(items(d.m_flatRowLine, 2), items(sound.m_flatRowLine, 2));
}

void TestBoxEventLoop::frameTakenInsideTheBoxIsNotMixedUp_data()
{
    addPlaces();
}

void TestBoxEventLoop::frameTakenInsideTheBoxIsNotMixedUp()
{
    QFETCH(int, place);
    DialogProbe d;
    d.ui.chBShowY->setChecked(true);
    ModalWatch watch;
    watch.onBox = [&](QMessageBox&) {
        failAllocation(0);
        d.take(smallFrame());
    };
    failAllocation(place == Image ? 1 : 0);
    d.take(largeFrame());
    if (place != Image) {
        failAllocation(place);
        d.RunCorrection();
    }
    QCOMPARE(watch.texts.size(), 1);
    QCOMPARE(d.m_width, 3);
    QVERIFY(d.m_image);
    // The next run makes of the new frame what it makes of it alone.
    QVERIFY(d.RunCorrection());
    DialogProbe sound;
    sound.take(smallFrame());
    QVERIFY(sound.RunCorrection());
    QCOMPARE(listed(d.m_columnGains), listed(sound.m_columnGains));
    QCOMPARE(items(d.m_flatY, 8), items(sound.m_flatY, 8));
}

void TestBoxEventLoop::dialogDiscardedInsideTheBoxEndsAfterIt_data()
{
    addPlaces();
}

void TestBoxEventLoop::dialogDiscardedInsideTheBoxEndsAfterIt()
{
    QFETCH(int, place);
    const QPointer<DialogProbe> d = new DialogProbe;
    d->ui.chBShowY->setChecked(true);
    bool isLiving = false;
    ModalWatch watch;
    watch.onBox = [&](QMessageBox&) {
        d->ResetData(false);
        d->Discard();
        isLiving = !d.isNull();
    };
    failAllocation(place == Image ? 1 : 0);
    d->take(largeFrame());
    if (place != Image) {
        failAllocation(place);
        d->Update();
    }
    QCOMPARE(watch.texts.size(), 1);
    QVERIFY(isLiving);
    QVERIFY(!d->m_flatY);
    QCoreApplication::sendPostedEvents(d, QEvent::DeferredDelete);
    QVERIFY(!d);
}

QTEST_MAIN(TestBoxEventLoop)
#include "tst_box_event_loop.moc"
