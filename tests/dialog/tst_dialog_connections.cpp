#include "image/HighLightProcessor.h"
#include "tests/support/Cursors.h"
#include "tests/support/DialogProbe.h"
#include "tests/support/ModalWatch.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <atomic>
#include <future>
#include <memory>

/// Which widget calls which slot.
class TestDialogConnections : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void updateButtonComputes();
    void saveButtonAsksForTheTitle();
    void normaliseSettingsComputeNothing();
    void highlightBoxRefreshes();
    void eachViewIsFollowed_data();
    void eachViewIsFollowed();
};

void TestDialogConnections::cleanup()
{
    restoreAllCursors();
}

void TestDialogConnections::updateButtonComputes()
{
    DialogProbe d;
    d.take(TestFrame::even(3, 2, 12, 500));
    d.ui.pBUpdate->click();
    QVERIFY(d.m_flatY);
}

void TestDialogConnections::saveButtonAsksForTheTitle()
{
    DialogProbe d;
    ModalWatch watch;
    d.ui.pBSave->click();
    QCOMPARE(watch.texts, QStringList("Define Title of file"));
}

void TestDialogConnections::normaliseSettingsComputeNothing()
{
    DialogProbe d;
    d.take(TestFrame::even(3, 2, 12, 500));
    d.ui.chBNormFFC->click();
    d.ui.lENormFFC->setText(QStringLiteral("0.5"));
    QTest::keyClick(d.ui.lENormFFC, Qt::Key_Tab);
    emit d.ui.lENormFFC->editingFinished();
    emit d.ui.lENormFFC->returnPressed();
    QVERIFY(!d.m_flatY);
    QCOMPARE(d.m_normalizeValue, 1.0);
}

void TestDialogConnections::highlightBoxRefreshes()
{
    // A refresh waits for the view lock, which another thread holds for a while.
    DialogProbe d;
    d.take(TestFrame::even(3, 2, 12, 500));
    QVERIFY(d.RunCorrection());
    std::atomic<bool> released{false};
    std::promise<void> held;
    auto holder = std::async(std::launch::async, [&] {
        const std::lock_guard<zor::OwnedMutex> lock(d.m_viewLock);
        held.set_value();
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        released = true;
    });
    held.get_future().wait();
    d.ui.chBHighlights->click();
    // No viewer has taken it over.
    const std::unique_ptr<HighLightProcessor> lost(d.m_highLight);
    QVERIFY(released);
}

void TestDialogConnections::eachViewIsFollowed_data()
{
    QTest::addColumn<bool>("upper");
    QTest::newRow("the upper view") << true;
    QTest::newRow("the lower view") << false;
}

void TestDialogConnections::eachViewIsFollowed()
{
    QFETCH(bool, upper);
    DialogProbe d;
    DisplayView* view = upper ? d.ui.gVUp : d.ui.gVDown;
    const QTime longAgo = QTime::currentTime().addSecs(-10);
    d.m_viewClock = longAgo;
    emit view->sigViewChanged(view);
    // The slot has restarted the clock.
    QVERIFY(d.m_viewClock != longAgo);
}

QTEST_MAIN(TestDialogConnections)
#include "tst_dialog_connections.moc"
