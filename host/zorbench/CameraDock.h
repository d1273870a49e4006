#pragma once

#include "host/zorbench/FeatureModel.h"

#include <QDockWidget>
#include <QTimer>

#include <cstdint>
#include <memory>

class QComboBox;
class QLabel;
class QSettings;

namespace zor {

class BackgroundWork;
class CameraAccess;
class CameraPanel;
class CameraSource;
class FeatureView;

/// What the connected camera is set to: controls for what nearly every camera has, and the tree of all its
/// features. Never waits for the camera.
class CameraDock : public QDockWidget
{
    Q_OBJECT

public:
    /// Milliseconds from one look whether the camera is lost to the next.
    static constexpr int Pause = 500;

    /// Speaks to cameras in `work`. It and the settings outlive the dock.
    CameraDock(BackgroundWork& work, QSettings& settings, QWidget* parent = nullptr);
    ~CameraDock() override;

    /// Null: none is connected. A source outlives what has begun in `work` until the next is set.
    void setSource(CameraSource* source);

signals:
    /// One sentence: what the camera did not take.
    void refused(const QString& sentence);
    /// The camera is lost, or it is back.
    void stateChanged();

private:
    void addVisibility();
    void look();
    void showState();

    BackgroundWork& m_work;
    QSettings& m_settings;
    CameraSource* m_source = nullptr;
    std::unique_ptr<CameraAccess> m_access; ///< to the source, null without one
    FeatureModel m_model;
    QWidget* m_content;
    QLabel* m_state;
    QWidget* m_controls; ///< all that is of use while the camera is there
    CameraPanel* m_panel;
    QComboBox* m_visibility;
    FeatureView* m_features;
    QTimer m_turn;
    bool m_isLost = false;
    std::uint64_t m_losses = 0;
};

} // namespace zor
