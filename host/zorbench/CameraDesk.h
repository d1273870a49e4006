#pragma once

#include "host/camera/CameraInterfaces.h"
#include "host/zorbench/BackgroundWork.h"

#include <QObject>
#include <QPointer>

#include <memory>

class QAction;
class QMainWindow;
class QSettings;

namespace zor {

class CameraDialog;
class CameraDock;
class CameraSource;

/// The camera of a window: connected in a dialog, set in a dock. One at a time.
class CameraDesk : public QObject
{
    Q_OBJECT

public:
    /// Adds the dock to the window, hidden. Looks for cameras on these interfaces, and only when the operator
    /// asks for it. Settings and window outlive this object.
    CameraDesk(const CameraInterfaces& interfaces, QSettings& settings, QMainWindow& window);
    /// Disconnects, and waits until the camera is given back: up to some seconds.
    ~CameraDesk() override;

    /// "Connect": opens the dialog. Disabled while a camera is connected.
    QAction* connectAction() const { return m_connect; }
    /// "Disconnect": enabled while a camera is connected.
    QAction* disconnectAction() const { return m_disconnect; }
    /// Shows and hides the dock.
    QAction* dockAction() const;

    /// The connected camera, null when there is none.
    CameraSource* source() const { return m_source.get(); }

signals:
    /// source() can be used, and the dock is shown.
    void connected();
    /// Whoever uses source() stops it now: it is null afterwards, and given back in the background.
    void disconnecting();
    /// One sentence: what the camera did not take.
    void refused(const QString& sentence);
    /// The camera is lost, or it is back.
    void stateChanged();

private:
    void takeSource(const QString& id, const std::shared_ptr<CameraSource>& source);
    void disconnectCamera();

    QSettings& m_settings;
    BackgroundWork m_work; ///< what is done in it uses the source
    std::shared_ptr<CameraSource> m_source;
    QAction* m_connect;
    QAction* m_disconnect;
    QPointer<CameraDialog> m_dialog;
    QPointer<CameraDock> m_dock;
};

} // namespace zor
