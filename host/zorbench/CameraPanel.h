#pragma once

#include "host/camera/CameraControls.h"
#include "host/zorbench/CameraAccess.h"

#include <QWidget>

class QComboBox;
class QFormLayout;
class QPushButton;

namespace zor {

class CameraExtentBox;
class CameraNumberBox;

/// Controls for what nearly every camera can be set to. What a camera lacks is disabled.
class CameraPanel : public QWidget
{
    Q_OBJECT

public:
    explicit CameraPanel(QWidget* parent = nullptr);

    void showControls(const CameraControls& controls);

signals:
    /// What the operator wants of the camera, by the name of the control.
    void changed(const QString& name, const zor::CameraAccess::Change& change);
    /// The software trigger.
    void triggered();

private:
    CameraNumberBox* addNumber(QFormLayout* form, const QString& name, const QString& unit, int decimals,
                               double step, void (CameraSource::*set)(double));
    CameraExtentBox* makeExtent(const QString& name);
    QComboBox* addChoice(QFormLayout* form, const QString& name);
    void showRegion(const CameraControls& controls);
    void showTrigger(const CameraControls& controls);
    void setRegion();

    CameraNumberBox* m_exposureTime;
    CameraNumberBox* m_gain;
    CameraNumberBox* m_frameRate;
    QComboBox* m_pixelFormat;
    CameraExtentBox* m_x;
    CameraExtentBox* m_y;
    CameraExtentBox* m_width;
    CameraExtentBox* m_height;
    QPushButton* m_fullSensor;
    QComboBox* m_triggerSource;
    QPushButton* m_trigger;
};

} // namespace zor
