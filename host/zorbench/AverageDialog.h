#pragma once

#include <QDialog>

class QCheckBox;
class QDoubleSpinBox;
class QSettings;
class QSpinBox;

namespace zor {

/// Asks how many frames an average or a dark frame is taken of. The answers are kept between runs.
class AverageDialog : public QDialog
{
    Q_OBJECT

public:
    enum class Purpose
    {
        Average,
        Dark,
    };

    AverageDialog(Purpose purpose, QSettings& settings, QWidget* parent = nullptr);

    /// From 1 to MostAveragedFrames.
    int frames() const;
    /// Every frame of the stream becomes the average of the last ones; nothing is taken at once.
    bool isSliding() const;

    /// What a gain may be off, in %.
    static double wantedAccuracy(const QSettings& settings);

    void accept() override;

private:
    QSettings& m_settings;
    const Purpose m_purpose;
    QSpinBox* m_frames;
    QCheckBox* m_sliding = nullptr;
    QDoubleSpinBox* m_accuracy = nullptr;
};

} // namespace zor
