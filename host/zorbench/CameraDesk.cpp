#include "host/zorbench/CameraDesk.h"

#include "host/camera/CameraSource.h"
#include "host/zorbench/CameraDialog.h"
#include "host/zorbench/CameraDock.h"

#include <QAction>
#include <QMainWindow>
#include <QSettings>

namespace zor {

namespace {

const char* const LastKey = "Camera/Last";

} // namespace

CameraDesk::CameraDesk(const CameraInterfaces& interfaces, QSettings& settings, QMainWindow& window)
    : m_settings(settings)
    , m_connect(new QAction(tr("Connect"), this))
    , m_disconnect(new QAction(tr("Disconnect"), this))
    , m_dialog(new CameraDialog(interfaces, m_work, &window))
    , m_dock(new CameraDock(m_work, settings, &window))
{
    window.addDockWidget(Qt::RightDockWidgetArea, m_dock);
    m_dock->hide();
    m_disconnect->setEnabled(false);
    connect(m_connect, &QAction::triggered, this,
            [this] { m_dialog->ask(m_settings.value(QLatin1String(LastKey)).toString()); });
    connect(m_disconnect, &QAction::triggered, this, &CameraDesk::disconnectCamera);
    connect(m_dialog, &CameraDialog::connected, this, &CameraDesk::takeSource);
    connect(m_dock, &CameraDock::refused, this, &CameraDesk::refused);
    connect(m_dock, &CameraDock::stateChanged, this, &CameraDesk::stateChanged);
}

CameraDesk::~CameraDesk()
{
    disconnectCamera();
    delete m_dock;
    delete m_dialog;
}

QAction* CameraDesk::dockAction() const
{
    return m_dock->toggleViewAction();
}

void CameraDesk::takeSource(const QString& id, const std::shared_ptr<CameraSource>& source)
{
    m_source = source;
    m_settings.setValue(QLatin1String(LastKey), id);
    m_connect->setEnabled(false);
    m_disconnect->setEnabled(true);
    m_dock->setSource(m_source.get());
    m_dock->show();
    emit connected();
}

void CameraDesk::disconnectCamera()
{
    if (!m_source)
        return;
    emit disconnecting();
    if (m_dock)
        m_dock->setSource(nullptr);
    m_connect->setEnabled(true);
    m_disconnect->setEnabled(false);
    // What is still being done with it comes first. A camera that no longer answers is given back slowly.
    m_work.start(nullptr, [owned = std::move(m_source)] { return BackgroundWork::Sequel(); });
}

} // namespace zor
