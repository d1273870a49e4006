#include "host/zorbench/SimulatorDock.h"

#include "host/zorbench/KeptSwitch.h"
#include "host/zorbench/NumberBox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QSettings>

#include <cmath>

namespace zor {

namespace {

// The names of the settings.
const char* const ShotNoiseKey = "Simulator/ShotNoise";
const char* const DepthKey = "Simulator/Depth";

/// A side of the largest sensor: as many pixels as the command line simulates.
constexpr double LargestSide = 16384.0;

double numberOf(const QVariant& kept, double otherwise)
{
    bool isNumber = false;
    const double value = kept.toDouble(&isNumber);
    return isNumber && std::isfinite(value) ? value : otherwise;
}

std::uint32_t whole(const QDoubleSpinBox& box)
{
    return static_cast<std::uint32_t>(box.value());
}

} // namespace

struct SimulatorDock::Range
{
    double least;
    double most;
    int decimals;
    QString unit;
};

SimulatorDock::SimulatorDock(SimulatorSource& source, QSettings& settings, QWidget* parent)
    : QDockWidget(tr("Simulator"), parent)
    , m_source(source)
    , m_settings(settings)
    , m_form(new QFormLayout)
{
    setObjectName(QStringLiteral("Simulator"));
    setAccessibleName(windowTitle());
    auto* content = new QWidget(this);
    content->setLayout(m_form);
    setWidget(content);

    const QString percent = QStringLiteral(" %");
    const QString electrons = QStringLiteral(" e-");
    const SensorModel first;
    m_frameRate = addNumber(tr("Frame rate"), "FrameRate",
                            {0.1, SimulatorSource::LargestFrameRate, 1, QStringLiteral(" /s")}, 20.0,
                            &SimulatorDock::setFrameRate);
    m_darkNoise = addNumber(tr("Dark noise"), "DarkNoise", {0.0, 1e9, 1, electrons}, first.darkNoise,
                            &SimulatorDock::setNoise);
    addShotNoise(first.shotNoise);
    const auto addSensor = [this](const QString& name, const char* key, const Range& range, double value) {
        return addNumber(name, key, range, value, &SimulatorDock::setSensor);
    };
    m_width = addSensor(tr("Width"), "Width", {1.0, LargestSide, 0, {}}, first.width);
    m_height = addSensor(tr("Height"), "Height", {1.0, LargestSide, 0, {}}, first.height);
    addDepth(static_cast<int>(first.depth));
    m_level = addSensor(tr("Level"), "Level", {0.0, 1000.0, 1, percent}, first.levelPercent);
    m_level->setToolTip(tr("Light in the middle, of what saturates"));
    m_vignetting =
        addSensor(tr("Vignetting"), "Vignetting", {0.0, 99.0, 1, percent}, first.vignettingPercent);
    m_vignetting->setToolTip(tr("Light lost in the corners"));
    m_columnPattern =
        addSensor(tr("Column pattern"), "ColumnPattern", {0.0, 100.0, 2, percent}, first.columnFpnPercent);
    m_columnPattern->setToolTip(tr("Standard deviation of the columns' gains"));
    m_rowPattern = addSensor(tr("Row pattern"), "RowPattern", {0.0, 100.0, 2, percent}, first.rowFpnPercent);
    m_rowPattern->setToolTip(tr("Standard deviation of the rows' gains"));

    m_source.setModel(model());
    setFrameRate();
}

QDoubleSpinBox* SimulatorDock::addNumber(const QString& name, const char* key, const Range& range,
                                         double value, void (SimulatorDock::*change)())
{
    const QString kept = QStringLiteral("Simulator/") + QLatin1String(key);
    auto* box = new RealBox(this);
    box->setDecimals(range.decimals);
    box->setRange(range.least, range.most);
    box->setSuffix(range.unit);
    // A number counts when it is written, not with each of its digits.
    box->setKeyboardTracking(false);
    box->setValue(numberOf(m_settings.value(kept), value));
    box->setAccessibleName(name);
    m_form->addRow(name, box);
    connect(box, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            [this, kept, change](double now) {
                m_settings.setValue(kept, now);
                (this->*change)();
            });
    return box;
}

void SimulatorDock::addShotNoise(bool on)
{
    m_shotNoise = new QCheckBox(this);
    m_shotNoise->setChecked(keptSwitch(m_settings, QLatin1String(ShotNoiseKey), on));
    m_shotNoise->setAccessibleName(tr("Shot noise"));
    m_form->addRow(tr("Shot noise"), m_shotNoise);
    connect(m_shotNoise, &QCheckBox::toggled, this, [this](bool now) {
        m_settings.setValue(QLatin1String(ShotNoiseKey), now);
        setNoise();
    });
}

void SimulatorDock::addDepth(int bits)
{
    m_depth = new QComboBox(this);
    for (const int depth : {8, 10, 12, 16})
        m_depth->addItem(tr("%1 bits").arg(depth), depth);
    const int kept = m_depth->findData(m_settings.value(QLatin1String(DepthKey), bits).toInt());
    m_depth->setCurrentIndex(kept >= 0 ? kept : m_depth->findData(bits));
    m_depth->setAccessibleName(tr("Depth"));
    m_form->addRow(tr("Depth"), m_depth);
    connect(m_depth, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this] {
        m_settings.setValue(QLatin1String(DepthKey), m_depth->currentData());
        setSensor();
    });
}

SensorModel SimulatorDock::model() const
{
    SensorModel model;
    model.width = whole(*m_width);
    model.height = whole(*m_height);
    model.depth = m_depth->currentData().toUInt();
    model.levelPercent = m_level->value();
    model.vignettingPercent = m_vignetting->value();
    model.columnFpnPercent = m_columnPattern->value();
    model.rowFpnPercent = m_rowPattern->value();
    model.darkNoise = m_darkNoise->value();
    model.shotNoise = m_shotNoise->isChecked();
    return model;
}

void SimulatorDock::setFrameRate()
{
    m_source.setFrameRate(m_frameRate->value());
}

void SimulatorDock::setNoise()
{
    m_source.setNoise({m_darkNoise->value(), m_shotNoise->isChecked()});
}

void SimulatorDock::setSensor()
{
    m_source.setModel(model());
    emit sensorChanged();
}

} // namespace zor
