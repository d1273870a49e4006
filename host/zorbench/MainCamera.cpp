// Cameras in the main window.

#include "host/camera/CameraInterfaces.h"
#include "host/camera/CameraSource.h"
#include "host/zorbench/CameraDesk.h"
#include "host/zorbench/MainWindow.h"
#include "host/zorbench/NoticeLine.h"
#include "host/zorbench/Tell.h"

#include <QMenu>

namespace zor {

void MainWindow::makeCameraActions(QMenu* menu, const std::string& interfaces)
{
    m_cameras = new CameraDesk(cameraInterfacesOf(interfaces), m_settings, *this);
    menu->addAction(m_cameras->connectAction());
    menu->addAction(m_cameras->disconnectAction());
    menu->addAction(m_cameras->dockAction());
    menu->addSeparator();
    connect(m_cameras, &CameraDesk::connected, this, [this] {
        useSource(*m_cameras->source());
        m_feed.start(*m_source);
    });
    connect(m_cameras, &CameraDesk::disconnecting, this, [this] {
        useSource(m_simulator);
        m_notice->setState({});
    });
    connect(m_cameras, &CameraDesk::refused, this, [this](const QString& sentence) { tell(this, sentence); });
    connect(m_cameras, &CameraDesk::stateChanged, this, [this] {
        const CameraSource* camera = m_cameras->source();
        if (camera && camera->isLost())
            m_notice->setState(tr("The camera %1 is lost. It goes on when it is back.")
                                   .arg(QString::fromStdString(camera->name())));
        else {
            m_notice->setState({});
            if (camera)
                m_notice->tell(
                    tr("The camera %1 was lost and is back.").arg(QString::fromStdString(camera->name())));
        }
    });
}

void MainWindow::releaseCameras()
{
    delete m_cameras;
    m_cameras = nullptr;
}

CaptureSettings MainWindow::captureSettings(const Frame& frame) const
{
    CaptureSettings settings = settingsOf(frame);
    if (m_source == &m_simulator)
        return settings;
    // It does not change while frames come from it.
    const auto* camera = static_cast<const CameraSource*>(m_source);
    settings.exposureTime = camera->exposureTime();
    settings.gain = camera->gain();
    return settings;
}

std::optional<quint64> MainWindow::incompleteFrames() const
{
    if (m_source == &m_simulator)
        return std::nullopt;
    const CameraSource::Counts counts = static_cast<const CameraSource*>(m_source)->counts();
    return counts.incomplete + counts.missing;
}

} // namespace zor
