#include "host/camera/CameraSource.h"
#include "host/zorbench/CameraDesk.h"
#include "host/zorbench/CameraDialog.h"
#include "host/zorbench/CameraDock.h"
#include "tests/host/source/FrameCollector.h"
#include "tests/host/zorbench/Bench.h"

#include <QDoubleSpinBox>
#include <QMainWindow>
#include <QPushButton>
#include <QTableWidget>
#include <QTreeView>
#include <QtTest>

#include <memory>

using zor::CameraDesk;
using zor::CameraDialog;
using zor::CameraDock;
using zor::CameraInterface;

/// The camera of a window, from its connection to its end.
class TestCameraDesk : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void nothingIsConnectedAtFirst();
    void cameraIsConnectedInTheDialog();
    void lastCameraIsPreferred();
    void refusedCameraIsNotKept();
    void cameraIsDisconnected();
    void disconnectedCameraCanBeConnectedAgain();
    void whoUsesItStopsFirst();
    void endDisconnects();
    void endComesWhileItConnects();
    void refusalIsPassedOn();
    void windowMayEndFirst();

private:
    CameraDialog* dialog() { return m_window->findChild<CameraDialog*>(); }
    CameraDock* dock() { return m_window->findChild<CameraDock*>(); }
    void connectCamera();

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<QMainWindow> m_window;
    std::unique_ptr<CameraDesk> m_desk;
};

void TestCameraDesk::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_settings = std::make_unique<QSettings>(m_folder->filePath("settings.ini"), QSettings::IniFormat);
    m_window = std::make_unique<QMainWindow>();
    m_desk =
        std::make_unique<CameraDesk>(zor::CameraInterfaces{CameraInterface::Fake}, *m_settings, *m_window);
    m_window->show();
}

void TestCameraDesk::cleanup()
{
    m_desk.reset();
    m_window.reset();
}

void TestCameraDesk::connectCamera()
{
    m_desk->connectAction()->trigger();
    auto* button = controlOf<QPushButton>(dialog(), "Connect");
    QTRY_VERIFY(button->isEnabled());
    button->click();
    QTRY_VERIFY(m_desk->source());
}

void TestCameraDesk::nothingIsConnectedAtFirst()
{
    QVERIFY(!m_desk->source());
    QCOMPARE(m_desk->connectAction()->text(), QString("Connect"));
    QVERIFY(m_desk->connectAction()->isEnabled());
    QCOMPARE(m_desk->disconnectAction()->text(), QString("Disconnect"));
    QVERIFY(!m_desk->disconnectAction()->isEnabled());
    QCOMPARE(m_desk->dockAction()->text(), QString("Camera"));
    QVERIFY(!dock()->isVisible());
    m_desk->dockAction()->trigger();
    QVERIFY(dock()->isVisible());
    QCOMPARE(m_window->dockWidgetArea(dock()), Qt::RightDockWidgetArea);
    QVERIFY(!dialog()->isVisible());
}

void TestCameraDesk::cameraIsConnectedInTheDialog()
{
    bool couldBeUsed = false;
    connect(m_desk.get(), &CameraDesk::connected, this, [&] {
        couldBeUsed =
            m_desk->source() && m_desk->source()->name() == "Aravis Fake (1)" && dock()->isVisible();
    });
    QSignalSpy connected(m_desk.get(), &CameraDesk::connected);
    connectCamera();
    QVERIFY(couldBeUsed);
    QCOMPARE(connected.count(), 1);
    QVERIFY(!m_desk->connectAction()->isEnabled());
    QVERIFY(m_desk->disconnectAction()->isEnabled());
    QVERIFY(!dialog()->isVisible());
    QTRY_COMPARE(controlOf<QDoubleSpinBox>(dock(), "Exposure time")->value(), 10000.0);
}

void TestCameraDesk::lastCameraIsPreferred()
{
    connectCamera();
    QCOMPARE(m_settings->value("Camera/Last").toString(), QString("Fake_1"));
}

void TestCameraDesk::refusedCameraIsNotKept()
{
    m_settings->setValue("Camera/Last", "another");
    m_desk->connectAction()->trigger();
    QTRY_VERIFY(controlOf(dialog(), "Connect")->isEnabled());
    dialog()->reject();
    QCOMPARE(m_settings->value("Camera/Last").toString(), QString("another"));
    QVERIFY(!m_desk->source());
}

void TestCameraDesk::cameraIsDisconnected()
{
    connectCamera();
    QSignalSpy disconnecting(m_desk.get(), &CameraDesk::disconnecting);
    m_desk->disconnectAction()->trigger();
    QCOMPARE(disconnecting.count(), 1);
    QVERIFY(!m_desk->source());
    QVERIFY(m_desk->connectAction()->isEnabled());
    QVERIFY(!m_desk->disconnectAction()->isEnabled());
    QVERIFY(!controlOf(dock(), "Gain")->isEnabled());
}

void TestCameraDesk::disconnectedCameraCanBeConnectedAgain()
{
    for (int i = 0; i < 3; ++i) {
        connectCamera();
        m_desk->disconnectAction()->trigger();
    }
    connectCamera();
    QTRY_VERIFY(controlOf<QTreeView>(dock(), "Features")->model()->rowCount() > 0);
}

void TestCameraDesk::whoUsesItStopsFirst()
{
    connectCamera();
    FrameCollector collector;
    m_desk->source()->start(collector.handlers());
    QVERIFY(collector.waitForFrames(1));
    bool wasThere = false;
    connect(m_desk.get(), &CameraDesk::disconnecting, this, [&] {
        wasThere = m_desk->source();
        m_desk->source()->stop();
    });
    m_desk->disconnectAction()->trigger();
    QVERIFY(wasThere);
    QVERIFY(collector.hasEnded());
}

void TestCameraDesk::endDisconnects()
{
    connectCamera();
    QSignalSpy disconnecting(m_desk.get(), &CameraDesk::disconnecting);
    m_desk.reset();
    QCOMPARE(disconnecting.count(), 1);
    QVERIFY(!dock() && !dialog());
}

void TestCameraDesk::endComesWhileItConnects()
{
    m_desk->connectAction()->trigger();
    auto* button = controlOf<QPushButton>(dialog(), "Connect");
    QTRY_VERIFY(button->isEnabled());
    button->click();
    QSignalSpy disconnecting(m_desk.get(), &CameraDesk::disconnecting);
    m_desk.reset();
    QCOMPARE(disconnecting.count(), 0);
    QCoreApplication::processEvents();
}

void TestCameraDesk::refusalIsPassedOn()
{
    connectCamera();
    QSignalSpy refused(m_desk.get(), &CameraDesk::refused);
    QSignalSpy changed(m_desk.get(), &CameraDesk::stateChanged);
    emit dock()->refused("no");
    emit dock()->stateChanged();
    QCOMPARE(refused, (QList<QVariantList>{{"no"}}));
    QCOMPARE(changed.count(), 1);
}

void TestCameraDesk::windowMayEndFirst()
{
    connectCamera();
    m_window.reset();
    QSignalSpy disconnecting(m_desk.get(), &CameraDesk::disconnecting);
    m_desk->disconnectAction()->trigger();
    QCOMPARE(disconnecting.count(), 1);
    QVERIFY(!m_desk->source());
}

QTEST_MAIN(TestCameraDesk)
#include "tst_camera_desk.moc"
