#include "host/camera/CameraError.h"
#include "host/camera/CameraInterfaces.h"
#include "host/camera/CameraSource.h"
#include "host/zorbench/BackgroundWork.h"
#include "host/zorbench/CameraDock.h"
#include "tests/host/source/FrameCollector.h"
#include "tests/host/zorbench/Bench.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QtTest>

#include <memory>
#include <mutex>

using zor::BackgroundWork;
using zor::CameraControls;
using zor::CameraDock;
using zor::CameraSource;

namespace {

/// What the camera does besides: it is lost, or slow, or does not want to.
struct Mood
{
    std::atomic<bool> isLost{false};
    std::atomic<std::uint64_t> losses{0};
    std::string problem;
    std::mutex mutex; ///< guards the rest, and holds an exposure time up
    std::vector<double> exposureTimes;
    bool refuses = false;
};

Mood& mood()
{
    static Mood only;
    return only;
}

} // namespace

extern "C" bool __wrap__ZNK3zor16CameraConnection6isLostEv(const void*)
{
    return mood().isLost;
}
extern "C" std::uint64_t __wrap__ZNK3zor16CameraConnection6lossesEv(const void*)
{
    return mood().losses;
}
extern "C" std::string __wrap__ZNK3zor16CameraConnection7problemB5cxx11Ev(const void*)
{
    return mood().problem;
}
extern "C" void __real__ZN3zor12CameraSource15setExposureTimeEd(CameraSource* source, double time);
// A pointer to a member function takes an odd address for a virtual one.
extern "C" __attribute__((aligned(16))) void
__wrap__ZN3zor12CameraSource15setExposureTimeEd(CameraSource* source, double time)
{
    const std::lock_guard<std::mutex> lock(mood().mutex);
    mood().exposureTimes.push_back(time);
    if (mood().refuses)
        throw zor::CameraError("the camera is tired; try again");
    __real__ZN3zor12CameraSource15setExposureTimeEd(source, time);
}

/// The controls of a camera.
class TestCameraDock : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void eachControlHasItsName();
    void controlsShowTheCamera();
    void settingReachesTheCamera_data();
    void settingReachesTheCamera();
    void regionIsSetAsAWhole();
    void quickTurningSetsTheNewestValue();
    void numberStaysWithinTheCamerasRange();
    void triggerTakesAFrame();
    void refusalGoesBackToTheCamerasValue();
    void refusedFeatureGoesBack();
    void featureIsSetInTheTree();
    void commandReachesTheCamera();
    void oneSettingChangesAnother();
    void readAgainShowsWhatChangedOtherwise();
    void whatIsBeingWrittenStays();
    void visibilityIsKept_data();
    void visibilityIsKept();
    void lostCameraCannotBeSet();
    void shortLossIsNoticed();
    void withoutACameraNothingCanBeSet();

private:
    QDoubleSpinBox* number(const char* name) { return controlOf<QDoubleSpinBox>(m_dock.get(), name); }
    QSpinBox* extent(const char* name) { return controlOf<QSpinBox>(m_dock.get(), name); }
    QComboBox* choice(const char* name) { return controlOf<QComboBox>(m_dock.get(), name); }
    QPushButton* button(const char* name) { return controlOf<QPushButton>(m_dock.get(), name); }
    QString state() { return m_dock->findChild<QLabel*>()->text(); }
    QAbstractItemModel& features() { return *controlOf<QTreeView>(m_dock.get(), "Features")->model(); }
    /// The value of a feature in the tree.
    QModelIndex feature(const QString& label);
    /// Chooses as the operator does.
    void choose(const char* name, const QString& entry);
    /// Until all that was begun is done and shown.
    void settle();

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<CameraSource> m_source;
    std::unique_ptr<BackgroundWork> m_work;
    std::unique_ptr<CameraDock> m_dock;
};

void TestCameraDock::initTestCase()
{
    QCOMPARE(zor::findCameras({zor::CameraInterface::Fake}).size(), std::size_t{1});
}

void TestCameraDock::init()
{
    mood().isLost = false;
    mood().losses = 0;
    mood().problem.clear();
    mood().refuses = false;
    m_folder = std::make_unique<QTemporaryDir>();
    m_settings = std::make_unique<QSettings>(m_folder->filePath("settings.ini"), QSettings::IniFormat);
    m_source = std::make_unique<CameraSource>("Fake_1");
    m_work = std::make_unique<BackgroundWork>();
    m_dock = std::make_unique<CameraDock>(*m_work, *m_settings);
    m_dock->setSource(m_source.get());
    m_dock->show();
    settle();
    mood().exposureTimes.clear();
}

void TestCameraDock::cleanup()
{
    m_dock.reset();
    m_work.reset();
    m_source.reset();
}

void TestCameraDock::settle()
{
    // Setting, reading the controls, reading the features.
    for (int i = 0; i < 4; ++i) {
        bool isDone = false;
        m_work->start(this, [&] { return [&] { isDone = true; }; });
        QTRY_VERIFY(isDone);
    }
}

QModelIndex TestCameraDock::feature(const QString& label)
{
    const QModelIndexList found = features().match(features().index(0, 0), Qt::DisplayRole, label, 1,
                                                   Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? QModelIndex() : found.front().sibling(found.front().row(), 1);
}

void TestCameraDock::choose(const char* name, const QString& entry)
{
    QComboBox* box = choice(name);
    const int index = box->findText(entry);
    QVERIFY(index >= 0);
    box->setCurrentIndex(index);
    emit box->activated(index);
}

void TestCameraDock::eachControlHasItsName()
{
    for (const char* name : {"Exposure time", "Gain", "Frame rate", "Pixel format", "Region x", "Region y",
                             "Region width", "Region height", "Full sensor", "Trigger source", "Trigger",
                             "Visibility", "Read again", "Features"})
        QVERIFY2(controlOf(m_dock.get(), name)->isVisible(), name);
    QCOMPARE(button("Full sensor")->text(), QString("Full sensor"));
    QCOMPARE(button("Trigger")->text(), QString("Trigger"));
    QCOMPARE(button("Read again")->text(), QString("Read again"));
    QCOMPARE(m_dock->windowTitle(), QString("Camera"));
    QVERIFY(!m_dock->objectName().isEmpty());
}

void TestCameraDock::controlsShowTheCamera()
{
    QCOMPARE(state(), QString("Aravis Fake (1)"));
    QCOMPARE(number("Exposure time")->text(), QString::fromUtf8("10000.0 \u00b5s"));
    QCOMPARE(number("Exposure time")->minimum(), 10.0);
    QCOMPARE(number("Exposure time")->maximum(), 1e7);
    QCOMPARE(number("Gain")->text(), QString("0.00"));
    QCOMPARE(number("Gain")->maximum(), 10.0);
    QCOMPARE(number("Frame rate")->text(), QString("25.00 /s"));
    QCOMPARE(choice("Pixel format")->currentText(), QString("Mono8"));
    QCOMPARE(choice("Pixel format")->count(), 7);
    QCOMPARE(extent("Region x")->value(), 0);
    QCOMPARE(extent("Region y")->value(), 0);
    QCOMPARE(extent("Region width")->value(), 512);
    QCOMPARE(extent("Region width")->minimum(), 1);
    QCOMPARE(extent("Region height")->maximum(), 2048);
    QCOMPARE(choice("Trigger source")->currentText(), QString("Off"));
    QCOMPARE(choice("Trigger source")->count(), 3);
    QVERIFY(!button("Trigger")->isEnabled());
    QCOMPARE(feature("Width").data().toString(), QString("512"));
}

void TestCameraDock::settingReachesTheCamera_data()
{
    QTest::addColumn<QString>("control");
    QTest::newRow("exposure time") << "Exposure time";
    QTest::newRow("gain") << "Gain";
    QTest::newRow("frame rate") << "Frame rate";
    QTest::newRow("pixel format") << "Pixel format";
    QTest::newRow("trigger source") << "Trigger source";
    QTest::newRow("trigger off") << "Off";
}

void TestCameraDock::settingReachesTheCamera()
{
    QFETCH(QString, control);
    if (control == "Exposure time")
        number("Exposure time")->setValue(2500.0);
    else if (control == "Gain")
        number("Gain")->setValue(3.0);
    else if (control == "Frame rate")
        number("Frame rate")->setValue(40.0);
    else if (control == "Pixel format")
        choose("Pixel format", "Mono16");
    else
        choose("Trigger source", "Line0");
    settle();
    if (control == "Off") {
        choose("Trigger source", "Off");
        settle();
    }
    const CameraControls now = m_source->controls();
    QCOMPARE(now.exposureTime->value, control == "Exposure time" ? 2500.0 : 10000.0);
    QCOMPARE(now.gain->value, control == "Gain" ? 3.0 : 0.0);
    QCOMPARE(qRound(now.frameRate->value), control == "Frame rate" ? 40 : 25);
    QCOMPARE(now.pixelFormat, std::string(control == "Pixel format" ? "Mono16" : "Mono8"));
    QCOMPARE(now.trigger, std::string(control == "Trigger source" ? "Line0" : ""));
    QCOMPARE(feature("Trigger mode").data().toString(), QString(control == "Trigger source" ? "On" : "Off"));
    QVERIFY(!button("Trigger")->isEnabled());
}

void TestCameraDock::regionIsSetAsAWhole()
{
    extent("Region x")->setValue(64);
    extent("Region y")->setValue(32);
    extent("Region width")->setValue(640);
    extent("Region height")->setValue(480);
    settle();
    const zor::CameraRegion region = *m_source->controls().region;
    QCOMPARE(region.x.value, 64);
    QCOMPARE(region.y.value, 32);
    QCOMPARE(region.width.value, 640);
    QCOMPARE(region.height.value, 480);
    QCOMPARE(feature("Height").data().toString(), QString("480"));
    button("Full sensor")->click();
    settle();
    QCOMPARE(extent("Region x")->value(), 0);
    QCOMPARE(extent("Region y")->value(), 0);
    QCOMPARE(extent("Region width")->value(), 2048);
    QCOMPARE(extent("Region height")->value(), 2048);
    QCOMPARE(m_source->controls().region->width.value, 2048);
}

void TestCameraDock::quickTurningSetsTheNewestValue()
{
    QDoubleSpinBox* box = number("Exposure time");
    {
        // While the camera is busy with the first nobody waits for it.
        const std::lock_guard<std::mutex> lock(mood().mutex);
        for (const double time : {1000.0, 2000.0, 3000.0, 4000.0})
            box->setValue(time);
        QCoreApplication::processEvents();
        QCOMPARE(box->value(), 4000.0);
    }
    settle();
    QCOMPARE(box->value(), 4000.0);
    QCOMPARE(m_source->controls().exposureTime->value, 4000.0);
    QCOMPARE(mood().exposureTimes, (std::vector<double>{1000.0, 4000.0}));
}

void TestCameraDock::numberStaysWithinTheCamerasRange()
{
    number("Frame rate")->setValue(1e9);
    settle();
    QCOMPARE(m_source->controls().frameRate->value, 1000.0);
    number("Exposure time")->setValue(0.0);
    settle();
    QCOMPARE(m_source->controls().exposureTime->value, 10.0);
}

void TestCameraDock::triggerTakesAFrame()
{
    choose("Trigger source", "Software");
    settle();
    QVERIFY(button("Trigger")->isEnabled());
    FrameCollector collector;
    m_source->start(collector.handlers());
    // The camera may not listen yet.
    QTRY_VERIFY((button("Trigger")->click(), !collector.frames().empty()));
    settle();
    m_source->stop();
}

void TestCameraDock::refusalGoesBackToTheCamerasValue()
{
    QSignalSpy refused(m_dock.get(), &CameraDock::refused);
    {
        const std::lock_guard<std::mutex> lock(mood().mutex);
        mood().refuses = true;
    }
    number("Exposure time")->setValue(777.0);
    settle();
    QCOMPARE(refused, (QList<QVariantList>{{"the camera is tired; try again"}}));
    QCOMPARE(number("Exposure time")->value(), 10000.0);
}

void TestCameraDock::refusedFeatureGoesBack()
{
    QSignalSpy refused(m_dock.get(), &CameraDock::refused);
    QVERIFY(features().setData(feature("Width"), "9999", Qt::EditRole));
    QCOMPARE(feature("Width").data().toString(), QString("9999"));
    settle();
    QCOMPARE(refused.count(), 1);
    QVERIFY2(refused[0][0].toString().startsWith("Width: "), qPrintable(refused[0][0].toString()));
    QCOMPARE(feature("Width").data().toString(), QString("512"));
}

void TestCameraDock::featureIsSetInTheTree()
{
    QVERIFY(features().setData(feature("Width"), "320", Qt::EditRole));
    QVERIFY(features().setData(feature("Trigger mode"), "On", Qt::EditRole));
    settle();
    const CameraControls now = m_source->controls();
    QCOMPARE(now.region->width.value, 320);
    QCOMPARE(now.trigger, std::string("Line0"));
    QCOMPARE(extent("Region width")->value(), 320);
    QCOMPARE(choice("Trigger source")->currentText(), QString("Line0"));
}

void TestCameraDock::commandReachesTheCamera()
{
    QSignalSpy refused(m_dock.get(), &CameraDock::refused);
    choose("Trigger source", "Software");
    settle();
    FrameCollector collector;
    m_source->start(collector.handlers());
    QTRY_VERIFY(
        (features().setData(feature("TriggerSoftware"), {}, Qt::EditRole), !collector.frames().empty()));
    settle();
    m_source->stop();
    QCOMPARE(refused.count(), 0);
}

void TestCameraDock::oneSettingChangesAnother()
{
    QCOMPARE(feature("PayloadSize").data().toString(), QString::number(512 * 512));
    choose("Pixel format", "Mono16");
    settle();
    QCOMPARE(feature("PayloadSize").data().toString(), QString::number(2 * 512 * 512));
    QCOMPARE(feature("Pixel format").data().toString(), QString("Mono16"));
}

void TestCameraDock::readAgainShowsWhatChangedOtherwise()
{
    m_source->setGain(7.0);
    m_source->setFeature("Height", "100");
    QCOMPARE(number("Gain")->value(), 0.0);
    button("Read again")->click();
    settle();
    QCOMPARE(number("Gain")->value(), 7.0);
    QCOMPARE(feature("Height").data().toString(), QString("100"));
}

void TestCameraDock::whatIsBeingWrittenStays()
{
    for (QAbstractSpinBox* box : {static_cast<QAbstractSpinBox*>(number("Exposure time")),
                                  static_cast<QAbstractSpinBox*>(extent("Region height"))}) {
        auto* line = box->findChild<QLineEdit*>();
        box->selectAll();
        QTest::keyClicks(line, "12");
        const QString written = line->text();
        number("Gain")->setValue(number("Gain")->value() + 2.0);
        settle();
        QCOMPARE(line->text(), written);
        QTest::keyClick(line, Qt::Key_Return);
        settle();
    }
    QCOMPARE(m_source->controls().exposureTime->value, 12.0);
    QCOMPARE(m_source->controls().region->height.value, 12);
    QCOMPARE(m_source->controls().gain->value, 4.0);
}

void TestCameraDock::visibilityIsKept_data()
{
    QTest::addColumn<QVariant>("kept");
    QTest::addColumn<QString>("shown");
    QTest::newRow("none at first") << QVariant() << "Beginner";
    QTest::newRow("beginner") << QVariant(0) << "Beginner";
    QTest::newRow("expert") << QVariant(1) << "Expert";
    QTest::newRow("guru") << QVariant(2) << "Guru";
    QTest::newRow("spoilt, below") << QVariant(-1) << "Beginner";
    QTest::newRow("spoilt, above") << QVariant(3) << "Beginner";
    QTest::newRow("spoilt, a word") << QVariant("much") << "Beginner";
}

void TestCameraDock::visibilityIsKept()
{
    QFETCH(QVariant, kept);
    QFETCH(QString, shown);
    if (kept.isValid())
        m_settings->setValue("Camera/Visibility", kept);
    m_dock = std::make_unique<CameraDock>(*m_work, *m_settings);
    QCOMPARE(choice("Visibility")->currentText(), shown);
    choice("Visibility")->setCurrentText("Expert");
    m_dock = std::make_unique<CameraDock>(*m_work, *m_settings);
    QCOMPARE(choice("Visibility")->currentText(), QString("Expert"));
}

void TestCameraDock::lostCameraCannotBeSet()
{
    QSignalSpy changed(m_dock.get(), &CameraDock::stateChanged);
    // It comes back with something changed.
    m_source->setGain(2.0);
    mood().isLost = true;
    mood().losses = 1;
    QTRY_VERIFY(!number("Gain")->isEnabled());
    QCOMPARE(state(), QString("Aravis Fake (1) is lost. It is looked for until it is back."));
    for (const char* name :
         {"Exposure time", "Pixel format", "Region x", "Full sensor", "Features", "Read again"})
        QVERIFY2(!controlOf(m_dock.get(), name)->isEnabled(), name);
    QCOMPARE(changed.count(), 1);
    mood().problem = "nobody answers";
    QTRY_COMPARE(state(),
                 QString("Aravis Fake (1) is lost: nobody answers. It is looked for until it is back."));
    QCOMPARE(changed.count(), 1);
    mood().problem.clear();
    mood().isLost = false;
    QTRY_COMPARE(number("Gain")->value(), 2.0);
    QVERIFY(number("Gain")->isEnabled());
    QCOMPARE(state(), QString("Aravis Fake (1)"));
    QCOMPARE(changed.count(), 2);
}

void TestCameraDock::shortLossIsNoticed()
{
    QSignalSpy changed(m_dock.get(), &CameraDock::stateChanged);
    m_source->setGain(4.0);
    mood().losses = 1;
    QTRY_COMPARE(number("Gain")->value(), 4.0);
    QCOMPARE(changed.count(), 1);
}

void TestCameraDock::withoutACameraNothingCanBeSet()
{
    const auto* turn = m_dock->findChild<QTimer*>({}, Qt::FindDirectChildrenOnly);
    QVERIFY(turn->isActive());
    m_dock->setSource(nullptr);
    QCOMPARE(state(), QString("No camera is connected."));
    QVERIFY(!number("Gain")->isEnabled());
    QCOMPARE(features().rowCount(), 0);
    // Nobody looks for it any more.
    QVERIFY(!turn->isActive());
    m_dock->setSource(m_source.get());
    settle();
    QVERIFY(number("Gain")->isEnabled());
    QCOMPARE(state(), QString("Aravis Fake (1)"));
    QVERIFY(features().rowCount() > 0);
}

QTEST_MAIN(TestCameraDock)
#include "tst_camera_dock.moc"
