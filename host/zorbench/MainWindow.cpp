#include "host/zorbench/MainWindow.h"

#include "host/zorbench/FrameStatus.h"
#include "host/zorbench/NativeText.h"
#include "host/zorbench/PlugIn.h"
#include "host/zorbench/Tell.h"
#include "image/ZorPixelTypeTable.h"

#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QSettings>
#include <QStatusBar>
#include <QUrl>

namespace zor {

namespace {

// The names of the settings.
const char* const GeometryKey = "Window/Geometry";
const char* const StateKey = "Window/State";
const char* const GpuKey = "View/Gpu";
const char* const ColourKey = "View/Colour";
const char* const FolderKey = "Folder";

QStringList localFiles(const QMimeData* data)
{
    QStringList files;
    const QList<QUrl> urls = data->urls();
    for (const QUrl& url : urls) {
        if (url.isLocalFile())
            files.append(url.toLocalFile());
    }
    return files;
}

/// What the frame is, in one line. A name may hold what arg() takes for a mark, so it is not given to it.
QString description(const Frame& frame, const QString& file)
{
    const ZorPixelTypeRow* format = exactPixelTypeRow(frame.pixelType);
    const QString shape = MainWindow::tr("%1 x %2  %3")
                              .arg(frame.width)
                              .arg(frame.height)
                              .arg(QString::fromLatin1(format ? format->name : "?"));
    return QFileInfo(file).fileName() + QStringLiteral("  ") + shape +
           QStringLiteral("  (%1)").arg(QString::fromStdString(frame.depthSource));
}

} // namespace

MainWindow::MainWindow(QSettings& settings, const QString& plugInFolder)
    : m_settings(settings)
    , m_recent(settings)
    , m_opener(*this, settings)
    , m_view(new FrameView(this))
    , m_status(new FrameStatus(this))
{
    setWindowTitle(tr("ZorBench"));
    setAcceptDrops(true);
    setCentralWidget(m_view);
    statusBar()->addWidget(m_status, 1);
    makeFileMenu();
    makeViewMenu();
    makePlugInMenu(plugInFolder);

    connect(&m_opener, &FrameOpener::opened, this, &MainWindow::showFrame);
    connect(m_view, &FrameView::refused, this,
            [this](const QString& reason) { tell(this, m_file + QLatin1Char(' ') + reason); });
    connect(m_view, &FrameView::pointed, this, [this](const QPoint& pixel) {
        m_pointed = pixel;
        showPixel();
    });
    connect(m_view, &FrameView::left, this, [this] {
        m_pointed.reset();
        showPixel();
    });
    restore();
}

MainWindow::~MainWindow() = default;

void MainWindow::restore()
{
    resize(1024, 768);
    restoreGeometry(m_settings.value(QLatin1String(GeometryKey)).toByteArray());
    restoreState(m_settings.value(QLatin1String(StateKey)).toByteArray());
    m_view->setGpu(m_settings.value(QLatin1String(GpuKey)).toBool());
    m_view->setColour(m_settings.value(QLatin1String(ColourKey), true).toBool());
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    m_view->setFullScreen(false);
    m_settings.setValue(QLatin1String(GeometryKey), saveGeometry());
    m_settings.setValue(QLatin1String(StateKey), saveState());
    m_settings.setValue(QLatin1String(GpuKey), m_view->usesGpu());
    m_settings.setValue(QLatin1String(ColourKey), m_view->showsColour());
    for (PlugIn* plugIn : qAsConst(m_plugIns))
        plugIn->release();
    event->accept();
    emit closed();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!localFiles(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    openFiles(localFiles(event->mimeData()));
}

QString MainWindow::lastFolder() const
{
    const QString folder = m_settings.value(QLatin1String(FolderKey)).toString();
    return !folder.isEmpty() && QDir(folder).exists() ? folder : QDir::homePath();
}

void MainWindow::openFiles(const QStringList& files)
{
    if (files.isEmpty())
        return;
    for (int i = files.size() - 1; i > 0; --i)
        m_recent.add(files[i]);
    m_opener.open(files.first());
}

void MainWindow::showFrame(const std::shared_ptr<const Frame>& frame, const QString& file)
{
    m_file = file;
    m_recent.add(file);
    m_settings.setValue(QLatin1String(FolderKey), QFileInfo(file).absolutePath());
    setWindowTitle(tr("%1 - ZorBench").arg(QFileInfo(file).fileName()));
    m_status->setFrame(description(*frame, file));
    m_view->setFrame(frame);
    // The start of a viewer lets events in, and one of them may have brought the next frame.
    if (m_view->frame() != frame)
        return;
    showPixel();
    for (PlugIn* plugIn : qAsConst(m_plugIns))
        plugIn->setFrame(frame);
}

void MainWindow::showPixel()
{
    const std::shared_ptr<const Frame>& frame = m_view->frame();
    const QString value = frame && m_pointed ? nativeText(frame->record(), *m_pointed) : QString();
    m_status->setValue(value);
    // Beyond the edges there is no pixel.
    m_status->setPosition(value.isEmpty() ? QString()
                                          : QStringLiteral("%1, %2").arg(m_pointed->x()).arg(m_pointed->y()));
}

} // namespace zor
