#pragma once

#include "host/camera/CameraControls.h"
#include "host/zorbench/NumberBox.h"

#include <QSpinBox>

#include <optional>

namespace zor {

/// A number that a camera is set to. It counts when it is written, not with each of its digits.
class CameraNumberBox : public RealBox
{
    Q_OBJECT

public:
    explicit CameraNumberBox(QWidget* parent = nullptr);

    /// What the camera is set to. Nothing: it has no such setting, and the box is of no use.
    void showNumber(const std::optional<CameraNumber>& number);

signals:
    /// The operator's choice, within the camera's range, whose ends have more digits than the box.
    void chosen(double value);

private:
    CameraNumber m_number;
    double m_shown = 0.0; ///< the camera's value as the box rounds it
    bool m_isShowing = false;
};

/// A part of a region, likewise.
class CameraExtentBox : public QSpinBox
{
    Q_OBJECT

public:
    explicit CameraExtentBox(QWidget* parent = nullptr);

    void showExtent(const CameraExtent& extent);

    /// What the box says, brought down to the camera's steps.
    int extent() const;

signals:
    void chosen();

private:
    CameraExtent m_extent;
    bool m_isShowing = false;
};

} // namespace zor
