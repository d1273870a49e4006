#include "host/zorbench/MainWindow.h"

#include "display/DisplayView.h"
#include "host/zorbench/FileDrop.h"
#include "host/zorbench/FrameStatus.h"
#include "host/zorbench/JudgementLine.h"
#include "host/zorbench/KeptSwitch.h"
#include "host/zorbench/NativeText.h"
#include "host/zorbench/NoticeLine.h"
#include "host/zorbench/PlugIn.h"
#include "host/zorbench/Tell.h"
#include "host/zorbench/WindowTitle.h"
#include "image/ZorPixelTypeTable.h"

#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>
#include <QStyle>
#include <QVBoxLayout>

#include <utility>

namespace zor {

namespace {

// The names of the settings.
const char* const GeometryKey = "Window/Geometry";
const char* const StateKey = "Window/State";
const char* const GpuKey = "View/Gpu";
const char* const ColourKey = "View/Colour";
const char* const FolderKey = "Folder";

} // namespace

MainWindow::MainWindow(QSettings& settings, const QString& plugInFolder, const std::string& cameraInterfaces)
    : m_settings(settings)
    , m_recent(settings)
    , m_opener(*this, settings)
    , m_saver(*this)
    , m_view(new FrameView(this))
    , m_status(new FrameStatus)
    , m_conditioner([this](const Frame& frame) { return captureSettings(frame); })
    , m_judgement(new JudgementLine)
    , m_notice(new NoticeLine)
{
    setWindowTitle(tr("ZorBench"));
    setCentralWidget(m_view);
    makeStatus();
    makeFileMenu();
    makeViewMenu();
    makeCameraMenu(cameraInterfaces);
    makePlugInMenu(plugInFolder);
    makeStream();

    connect(&m_opener, &FrameOpener::opened, this, &MainWindow::openFrame);
    connect(&m_saver, &FrameSaver::saved, this, [this](const QString& file) {
        m_recent.add(file);
        m_settings.setValue(QLatin1String(FolderKey), QFileInfo(file).absolutePath());
    });
    connect(m_view, &FrameView::refused, this, &MainWindow::tellRefusal);
    connect(m_view, &FrameView::pointed, this, [this](const QPoint& pixel) {
        m_pointed = pixel;
        showPixel();
    });
    connect(m_view, &FrameView::left, this, [this] {
        m_pointed.reset();
        showPixel();
    });
    const auto showZoom = [this] { m_status->setZoom(m_view->scale()); };
    connect(m_view, &FrameView::shown, m_status, showZoom);
    connect(m_view, &FrameView::moved, m_status, showZoom);
    // On the full screen the view is a window of its own.
    auto* drop = new FileDrop(this);
    drop->watch(*this);
    drop->watch(m_view->view());
    connect(drop, &FileDrop::dropped, this, &MainWindow::openFiles);
    restore();
}

MainWindow::~MainWindow()
{
    m_task.reset();
    m_feed.stop();
    releaseCameras();
}

void MainWindow::makeStatus()
{
    auto* both = new QWidget;
    auto* rows = new QVBoxLayout(both);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(2);
    rows->addWidget(m_notice);
    rows->addWidget(m_judgement);
    rows->addWidget(m_status);
    statusBar()->addWidget(both, 1);
    connect(&m_judge, &FrameJudge::judged, m_judgement, &JudgementLine::setJudgement);
    connect(&m_judge, &FrameJudge::refused, m_judgement, &JudgementLine::setRefusal);
    connect(&m_judge, &FrameJudge::judged, m_status, &FrameStatus::setFigures);
    connect(&m_judge, &FrameJudge::refused, m_status, &FrameStatus::clearFigures);
    connect(&m_judge, &FrameJudge::noiseMeasured, m_judgement,
            [this](const FrameNoise& noise, quint32 width, quint32 height) {
                const double accuracy = AverageDialog::wantedAccuracy(m_settings); // in %
                m_judgement->setNoise(
                    noise, neededFrames(noise, width, height, accuracy / 100.0, MostAveragedFrames),
                    accuracy);
            });
    connect(&m_judge, &FrameJudge::noiseUnknown, m_judgement, &JudgementLine::clearNoise);
}

void MainWindow::restore()
{
    const QSize room = QGuiApplication::primaryScreen()->availableSize();
    const int titleBar = style()->pixelMetric(QStyle::PM_TitleBarHeight);
    resize(QSize(1024, 768).boundedTo(room - QSize(0, titleBar)));
    restoreGeometry(m_settings.value(QLatin1String(GeometryKey)).toByteArray());
    restoreState(m_settings.value(QLatin1String(StateKey)).toByteArray());
    m_view->setGpu(keptSwitch(m_settings, QLatin1String(GpuKey), false));
    m_view->setColour(keptSwitch(m_settings, QLatin1String(ColourKey), true));
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    m_task.reset();
    m_feed.stop();
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

QString MainWindow::lastFolder() const
{
    const QString folder = m_settings.value(QLatin1String(FolderKey)).toString();
    return !folder.isEmpty() && QDir(folder).exists() ? folder : QDir::homePath();
}

void MainWindow::openFiles(const QStringList& files)
{
    if (files.isEmpty())
        return;
    for (int i = files.size() - 1; i > 0; --i) {
        if (QFileInfo(files[i]).isFile())
            m_recent.add(files[i]);
    }
    m_opener.open(files.first());
}

void MainWindow::openFrame(const std::shared_ptr<const Frame>& frame, const QString& file)
{
    m_task.reset();
    m_feed.stop();
    m_recent.add(file);
    m_settings.setValue(QLatin1String(FolderKey), QFileInfo(file).absolutePath());
    const QString label = QFileInfo(file).fileName();
    setTitle(label);
    // A name may hold what arg() takes for a mark, so it is not given to it.
    const QString description = label + QStringLiteral("  ") + shapeOf(*frame) +
                                QStringLiteral("  (%1)").arg(QString::fromStdString(frame->depthSource));
    if (!showFrame(frame, description, file))
        return;
    m_judge.judge(frame);
    for (PlugIn* plugIn : qAsConst(m_plugIns))
        plugIn->setFrame(frame);
}

QString MainWindow::shapeOf(const Frame& frame)
{
    const ZorPixelTypeRow* format = exactPixelTypeRow(frame.pixelType);
    return tr("%1 x %2  %3")
        .arg(frame.width)
        .arg(frame.height)
        .arg(QString::fromLatin1(format ? format->name : "?"));
}

bool MainWindow::showFrame(const std::shared_ptr<const Frame>& frame, const QString& description,
                           const QString& name)
{
    m_name = name;
    m_status->setFrame(description);
    m_view->setFrame(frame);
    // The start of a viewer lets events in, and one of them may have brought the next frame.
    if (m_view->frame() != frame)
        return false;
    showPixel();
    return true;
}

void MainWindow::setTitle(const QString& name)
{
    setWindowTitle(plainTitle(tr("%1 - ZorBench").arg(name)));
}

void MainWindow::tellRefusal(const QString& reason)
{
    // The next frames of a stream are refused for the same reason.
    if (m_feed.isRunning() && std::exchange(m_isRefusalReported, true))
        return;
    tell(this, m_name + QLatin1Char(' ') + reason);
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
