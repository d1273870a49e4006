#include "host/zorbench/SimulatorDock.h"
#include "tests/host/source/FrameCollector.h"
#include "tests/host/zorbench/Bench.h"

#include "image/ZorPixelTypeTable.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QtTest>

using zor::SimulatorDock;
using zor::SimulatorSource;

namespace {

const char* const Numbers[] = {"Frame rate", "Dark noise", "Width",          "Height",
                               "Level",      "Vignetting", "Column pattern", "Row pattern"};

QDoubleSpinBox* number(SimulatorDock& dock, const char* name)
{
    return controlOf<QDoubleSpinBox>(&dock, name);
}

/// All that the dock shows, in the order of its lines.
QStringList shown(SimulatorDock& dock)
{
    QStringList values;
    for (const char* name : Numbers)
        values.append(QString::number(number(dock, name)->value()));
    values.append(controlOf<QComboBox>(&dock, "Depth")->currentText());
    values.append(controlOf<QCheckBox>(&dock, "Shot noise")->isChecked() ? "shot" : "no shot");
    return values;
}

const QStringList Defaults{"20", "8", "1280", "960", "70", "15", "0.8", "0.4", "12 bits", "shot"};

} // namespace

/// The settings of the simulated sensor.
class TestSimulatorDock : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder.reset(new QTemporaryDir); }
    void eachControlHasItsName();
    void settingsAreKept();
    void spoiltSettingsAreForgotten_data();
    void spoiltSettingsAreForgotten();
    void rangesAreThoseOfTheCommandLine_data();
    void rangesAreThoseOfTheCommandLine();
    void numbersAreWrittenWithAPoint_data();
    void numbersAreWrittenWithAPoint();
    void theSourceStartsWithTheSettings();
    void aNewRateCountsAtOnce();
    void aNewNoiseCountsAtOnce_data();
    void aNewNoiseCountsAtOnce();
    void theSensorCountsAtTheNextStart();
    void everythingElseIsPassedToTheSource_data();
    void everythingElseIsPassedToTheSource();

private:
    QString file() const { return m_folder->filePath("settings.ini"); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestSimulatorDock::eachControlHasItsName()
{
    QSettings settings(file(), QSettings::IniFormat);
    SimulatorSource source{zor::SensorModel()};
    SimulatorDock dock(source, settings);
    const auto* form = dock.findChild<QFormLayout*>();
    QStringList names;
    for (int row = 0; row < form->rowCount(); ++row) {
        const QWidget* control = form->itemAt(row, QFormLayout::FieldRole)->widget();
        const auto* label = qobject_cast<QLabel*>(form->itemAt(row, QFormLayout::LabelRole)->widget());
        QCOMPARE(label->text(), control->accessibleName());
        names.append(control->accessibleName());
    }
    QCOMPARE(names, (QStringList{"Frame rate", "Dark noise", "Shot noise", "Width", "Height", "Depth",
                                 "Level", "Vignetting", "Column pattern", "Row pattern"}));
}

void TestSimulatorDock::settingsAreKept()
{
    SimulatorSource source{zor::SensorModel()};
    {
        QSettings settings(file(), QSettings::IniFormat);
        SimulatorDock dock(source, settings);
        QCOMPARE(shown(dock), Defaults);
        double value = 31.0;
        for (const char* name : Numbers)
            number(dock, name)->setValue(value++);
        controlOf<QComboBox>(&dock, "Depth")->setCurrentText("16 bits");
        controlOf<QCheckBox>(&dock, "Shot noise")->setChecked(false);
    }
    QSettings settings(file(), QSettings::IniFormat);
    SimulatorDock dock(source, settings);
    QCOMPARE(shown(dock),
             (QStringList{"31", "32", "33", "34", "35", "36", "37", "38", "16 bits", "no shot"}));
}

void TestSimulatorDock::spoiltSettingsAreForgotten_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("a word") << "nonsense";
    QTest::newRow("no number") << "nan";
    QTest::newRow("endless") << "inf";
    QTest::newRow("nothing") << "";
}

void TestSimulatorDock::spoiltSettingsAreForgotten()
{
    QFETCH(QString, value);
    SimulatorSource source{zor::SensorModel()};
    QSettings settings(file(), QSettings::IniFormat);
    for (const char* key : {"FrameRate", "DarkNoise", "Width", "Height", "Level", "Vignetting",
                            "ColumnPattern", "RowPattern", "Depth"})
        settings.setValue(QString("Simulator/") + key, value);
    SimulatorDock dock(source, settings);
    QCOMPARE(shown(dock), Defaults);
}

void TestSimulatorDock::rangesAreThoseOfTheCommandLine_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<double>("least");
    QTest::addColumn<double>("most");
    QTest::addColumn<QString>("largest");
    QTest::newRow("frame rate, of the source") << "Frame rate" << 0.1 << 1000.0 << "1000.0 /s";
    QTest::newRow("dark noise") << "Dark noise" << 0.0 << 1e9 << "1000000000.0 e-";
    QTest::newRow("width") << "Width" << 1.0 << 16384.0 << "16384";
    QTest::newRow("height") << "Height" << 1.0 << 16384.0 << "16384";
    QTest::newRow("level") << "Level" << 0.0 << 1000.0 << "1000.0 %";
    QTest::newRow("vignetting") << "Vignetting" << 0.0 << 99.0 << "99.0 %";
    QTest::newRow("column pattern") << "Column pattern" << 0.0 << 100.0 << "100.00 %";
    QTest::newRow("row pattern") << "Row pattern" << 0.0 << 100.0 << "100.00 %";
}

void TestSimulatorDock::rangesAreThoseOfTheCommandLine()
{
    QFETCH(QString, name);
    QFETCH(double, least);
    QFETCH(double, most);
    QFETCH(QString, largest);
    QSettings settings(file(), QSettings::IniFormat);
    SimulatorSource source{zor::SensorModel()};
    SimulatorDock dock(source, settings);
    auto* box = controlOf<QDoubleSpinBox>(&dock, name);
    // The source takes both ends.
    box->setValue(-1e12);
    QCOMPARE(box->value(), least);
    box->setValue(1e12);
    QCOMPARE(box->value(), most);
    QCOMPARE(box->text(), largest);
}

void TestSimulatorDock::numbersAreWrittenWithAPoint_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("written");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("shown");
    const QLocale german(QLocale::German);
    QTest::newRow("a point where a comma is usual") << german << "20.5" << 20.5 << "20.5 %";
    QTest::newRow("a comma where it is usual") << german << "20,5" << 20.5 << "20.5 %";
    QTest::newRow("a comma where a point is usual") << QLocale::c() << "20,5" << 20.5 << "20.5 %";
    QTest::newRow("a thousand in no groups") << QLocale(QLocale::English) << "1000" << 1000.0 << "1000.0 %";
}

void TestSimulatorDock::numbersAreWrittenWithAPoint()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, written);
    QFETCH(double, value);
    QFETCH(QString, shown);
    const QLocale before;
    QLocale::setDefault(locale);
    const auto restore = qScopeGuard([&before] { QLocale::setDefault(before); });
    SimulatorSource source{zor::SensorModel()};
    QSettings settings(file(), QSettings::IniFormat);
    SimulatorDock dock(source, settings);
    QDoubleSpinBox* level = number(dock, "Level");
    level->selectAll();
    QTest::keyClicks(level, written);
    QTest::keyClick(level, Qt::Key_Return);
    QCOMPARE(level->value(), value);
    QCOMPARE(level->text(), shown);
}

void TestSimulatorDock::theSourceStartsWithTheSettings()
{
    QSettings settings(file(), QSettings::IniFormat);
    settings.setValue("Simulator/Width", 7);
    settings.setValue("Simulator/Height", 5);
    settings.setValue("Simulator/Depth", 10);
    settings.setValue("Simulator/FrameRate", 1000);
    SimulatorSource source(zor::SensorModel(), 0.001);
    SimulatorDock dock(source, settings);
    FrameCollector collector;
    source.start(collector.handlers());
    const bool haveCome = collector.waitForFrames(2);
    source.stop();
    QVERIFY(haveCome);
    const auto frame = collector.frames().front().frame;
    QCOMPARE(frame->width, 7u);
    QCOMPARE(frame->height, 5u);
    QCOMPARE(zor::pixelTypeSampleBits(frame->pixelType), 10u);
}

void TestSimulatorDock::aNewRateCountsAtOnce()
{
    QSettings settings(file(), QSettings::IniFormat);
    SimulatorSource source{zor::SensorModel()};
    SimulatorDock dock(source, settings);
    number(dock, "Width")->setValue(8);
    number(dock, "Height")->setValue(8);
    // The source's own least rate: the second frame is not to be expected.
    source.setFrameRate(1e-12);
    FrameCollector collector;
    source.start(collector.handlers());
    QVERIFY(collector.waitForFrames(1));
    QSignalSpy changed(&dock, &SimulatorDock::sensorChanged);
    number(dock, "Frame rate")->setValue(1000.0);
    const bool haveCome = collector.waitForFrames(3);
    source.stop();
    QVERIFY(haveCome);
    QCOMPARE(changed.count(), 0);
}

void TestSimulatorDock::aNewNoiseCountsAtOnce_data()
{
    QTest::addColumn<bool>("shot");
    QTest::newRow("dark noise") << false;
    QTest::newRow("shot noise") << true;
}

void TestSimulatorDock::aNewNoiseCountsAtOnce()
{
    QFETCH(bool, shot);
    QSettings settings(file(), QSettings::IniFormat);
    SimulatorSource source{zor::SensorModel()};
    SimulatorDock dock(source, settings);
    number(dock, "Dark noise")->setValue(0.0);
    auto* shotNoise = controlOf<QCheckBox>(&dock, "Shot noise");
    shotNoise->setChecked(false);
    // Another sensor has the same noise.
    number(dock, "Width")->setValue(8);
    number(dock, "Height")->setValue(8);
    number(dock, "Frame rate")->setValue(1000.0);
    FrameCollector collector;
    source.start(collector.handlers());
    QVERIFY(collector.waitForFrames(2));
    QSignalSpy changed(&dock, &SimulatorDock::sensorChanged);
    if (shot)
        shotNoise->setChecked(true);
    else
        number(dock, "Dark noise")->setValue(500.0);
    const std::size_t before = collector.frames().size();
    const bool haveCome = collector.waitForFrames(before + 2);
    source.stop();
    QVERIFY(haveCome);
    const auto frames = collector.frames();
    QVERIFY(frames[0].frame->pixels == frames[1].frame->pixels);
    QVERIFY(frames[0].frame->pixels != frames.back().frame->pixels);
    QCOMPARE(changed.count(), 0);
}

void TestSimulatorDock::theSensorCountsAtTheNextStart()
{
    QSettings settings(file(), QSettings::IniFormat);
    SimulatorSource source{zor::SensorModel()};
    SimulatorDock dock(source, settings);
    QSignalSpy changed(&dock, &SimulatorDock::sensorChanged);
    int changes = 0;
    for (const char* name : {"Width", "Height", "Level", "Vignetting", "Column pattern", "Row pattern"}) {
        number(dock, name)->setValue(9.0);
        QCOMPARE(changed.count(), ++changes);
    }
    controlOf<QComboBox>(&dock, "Depth")->setCurrentText("8 bits");
    QCOMPARE(changed.count(), ++changes);
    FrameCollector collector;
    source.start(collector.handlers());
    const bool haveCome = collector.waitForFrames(1);
    source.stop();
    QVERIFY(haveCome);
    const auto frame = collector.frames().front().frame;
    QCOMPARE(frame->width, 9u);
    QCOMPARE(frame->height, 9u);
    QCOMPARE(frame->pitch, 9u);
}

void TestSimulatorDock::everythingElseIsPassedToTheSource_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<double>("value");
    QTest::newRow("level") << "Level" << 20.0;
    QTest::newRow("vignetting") << "Vignetting" << 80.0;
    QTest::newRow("column pattern") << "Column pattern" << 20.0;
    QTest::newRow("row pattern") << "Row pattern" << 20.0;
}

void TestSimulatorDock::everythingElseIsPassedToTheSource()
{
    QFETCH(QString, name);
    QFETCH(double, value);
    QSettings settings(file(), QSettings::IniFormat);
    SimulatorSource source{zor::SensorModel()};
    SimulatorDock dock(source, settings);
    number(dock, "Width")->setValue(16);
    number(dock, "Height")->setValue(16);
    number(dock, "Dark noise")->setValue(0.0);
    controlOf<QCheckBox>(&dock, "Shot noise")->setChecked(false);
    const auto pixels = [&source] {
        FrameCollector collector;
        source.start(collector.handlers());
        const bool hasCome = collector.waitForFrames(1);
        source.stop();
        return hasCome ? collector.frames().front().frame->pixels : std::vector<std::uint8_t>();
    };
    const auto before = pixels();
    QCOMPARE(pixels() == before, true);
    controlOf<QDoubleSpinBox>(&dock, name)->setValue(value);
    QCOMPARE(pixels() == before, false);
}

QTEST_MAIN(TestSimulatorDock)
#include "tst_simulator_dock.moc"
