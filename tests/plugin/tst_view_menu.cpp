#include "tests/plugin/HostedDialog.h"

#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

/// The menu of a view of the built plug-in, with the real viewer.
class TestViewMenu : public QObject
{
    Q_OBJECT

private slots:
    void opensOnceForTwoRequests_data();
    void opensOnceForTwoRequests();
};

namespace {
bool openAndEscape(QWidget* view, int presses)
{
    return HostedDialog::useMenu(
        view, [](QMenu& menu) { QTest::keyClick(menu.windowHandle(), Qt::Key_Escape); }, presses);
}
} // namespace

void TestViewMenu::opensOnceForTwoRequests_data()
{
    QTest::addColumn<QString>("view");
    QTest::newRow("the upper view") << "gVUp";
    QTest::newRow("the lower view") << "gVDown";
}

// The plug-in is released at the end, below nothing that still waits for the menu.
void TestViewMenu::opensOnceForTwoRequests()
{
    QFETCH(QString, view);
    HostedDialog host;
    host.show(TestFrame(64, 48, 12, [](int x, int y) { return 400U + unsigned(x + y); }));
    QWidget* hand = host.find(qPrintable(view));
    QVERIFY(openAndEscape(hand, 1));
    QSignalSpy opened(hand->findChild<QMenu*>(), &QMenu::aboutToShow);
    QVERIFY2(openAndEscape(hand, 2), "the menu is closed, but one who asked for it still waits");
    QCOMPARE(opened.count(), 1);
    QVERIFY(openAndEscape(hand, 1));
    QCOMPARE(opened.count(), 2);
}

QTEST_MAIN(TestViewMenu)
#include "tst_view_menu.moc"
