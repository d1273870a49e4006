#include "display/ZorDisplayQt.h"
#include "tests/platform/viewer/ViewerTools.h"

#include <QTest>

/// A driver that can't do what the OpenGL canvas needs, as the environment makes it.
class TestOlderDrivers : public QObject
{
    Q_OBJECT

private slots:
    void onlyTheSoftwareViewerIsMade();
};

void TestOlderDrivers::onlyTheSoftwareViewerIsMade()
{
    QGraphicsView view;
    view.show();
    QVERIFY(!ZorDisplayQGL::CreateComponent(&view));
    ZorDisplayProcessor* viewer = ZorDisplayCPU::CreateComponent(&view);
    QVERIFY(viewer);
    ZorDisplayCPU::DeleteComponent(viewer);
}

QTEST_MAIN(TestOlderDrivers)
#include "tst_older_drivers.moc"
