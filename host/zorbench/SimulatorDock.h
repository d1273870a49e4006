#pragma once

#include "host/source/SimulatorSource.h"

#include <QDockWidget>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFormLayout;
class QSettings;

namespace zor {

/// What the simulated sensor sees and how often, kept between runs. Rate and noise change at once, also while
/// it runs, everything else at its next start.
class SimulatorDock : public QDockWidget
{
    Q_OBJECT

public:
    /// Brings the source to what the settings say. Both outlive the dock.
    SimulatorDock(SimulatorSource& source, QSettings& settings, QWidget* parent = nullptr);

signals:
    /// Something that takes effect at the next start.
    void sensorChanged();

private:
    struct Range;

    /// A number with its name, read from the settings. `change` is called after it was kept there.
    QDoubleSpinBox* addNumber(const QString& name, const char* key, const Range& range, double value,
                              void (SimulatorDock::*change)());
    void addShotNoise(bool on);
    void addDepth(int bits);
    SensorModel model() const;
    void setFrameRate();
    void setNoise();
    void setSensor();

    SimulatorSource& m_source;
    QSettings& m_settings;
    QFormLayout* m_form;
    QDoubleSpinBox* m_frameRate;
    QDoubleSpinBox* m_darkNoise;
    QCheckBox* m_shotNoise;
    QDoubleSpinBox* m_width;
    QDoubleSpinBox* m_height;
    QComboBox* m_depth;
    QDoubleSpinBox* m_level;
    QDoubleSpinBox* m_vignetting;
    QDoubleSpinBox* m_columnPattern;
    QDoubleSpinBox* m_rowPattern;
};

} // namespace zor
