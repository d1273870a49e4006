// What belongs to a stream of frames in the main window.

#include "host/zorbench/MainWindow.h"

#include "display/DisplayView.h"
#include "host/zorbench/FrameStatus.h"
#include "host/zorbench/PlugIn.h"
#include "host/zorbench/SimulatorDock.h"
#include "host/zorbench/Tell.h"

#include <QAbstractButton>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

namespace zor {

namespace {

QString nameOf(const FrameSource& source)
{
    return QString::fromStdString(source.name());
}

} // namespace

QAction* MainWindow::makeSimulatorDock()
{
    auto* dock = new SimulatorDock(m_simulator, m_settings, this);
    addDockWidget(Qt::RightDockWidgetArea, dock);
    dock->hide();
    // What the operator changes is seen at once.
    connect(dock, &SimulatorDock::sensorChanged, this, [this] {
        if (m_feed.isRunning() && m_source == &m_simulator)
            m_feed.start(m_simulator);
    });
    return dock->toggleViewAction();
}

void MainWindow::makeStream()
{
    connect(&m_feed, &FrameFeed::arrived, this, &MainWindow::showStreamed);
    connect(&m_feed, &FrameFeed::failed, this, [this](const QString& sentence) {
        tell(this, nameOf(*m_source) + QLatin1String(": ") + sentence);
    });
    connect(&m_feed, &FrameFeed::runningChanged, this, [this](bool isRunning) {
        m_isRefusalReported = false;
        m_isSnapshot = m_isSnapshot && isRunning;
        if (isRunning)
            m_conditioner.restart();
        if (isRunning)
            m_counting.start(250);
        else
            m_counting.stop();
        showCounts();
    });
    connect(&m_counting, &QTimer::timeout, this, &MainWindow::showCounts);
    m_feed.setFilter(
        [this](std::shared_ptr<const Frame> frame) { return m_conditioner.condition(std::move(frame)); });
}

void MainWindow::useSource(FrameSource& source)
{
    m_task.reset();
    m_feed.stop();
    if (&source == m_source)
        return;
    // What was taken with one camera is nothing to another.
    m_average.drop();
    m_showAverage->setEnabled(false);
    m_conditioner.dropDark();
    m_source = &source;
}

void MainWindow::makeStreamActions(QMenu* menu)
{
    QAction* start = menu->addAction(
        tr("Start"), this, [this] { m_feed.start(*m_source); }, Qt::Key_F5);
    QAction* stop = menu->addAction(tr("Stop"), &m_feed, &FrameFeed::stop, Qt::SHIFT + Qt::Key_F5);
    stop->setEnabled(false);
    for (QAction* action : {start, stop})
        action->setToolTip(action->text() + QStringLiteral(" (%1)").arg(
                                                action->shortcut().toString(QKeySequence::NativeText)));
    connect(&m_feed, &FrameFeed::runningChanged, start, &QAction::setDisabled);
    connect(&m_feed, &FrameFeed::runningChanged, stop, &QAction::setEnabled);
    QAction* live = menu->addAction(tr("Live"));
    live->setShortcut(Qt::CTRL + Qt::Key_L);
    live->setCheckable(true);
    live->setToolTip(tr("Open plug-ins follow the stream"));
    connect(live, &QAction::toggled, this, &MainWindow::setLive);

    // Their keys work on the full screen too.
    m_view->view().addActions({start, stop, live});

    QToolBar* bar = addToolBar(tr("Stream"));
    bar->setObjectName(QStringLiteral("Stream"));
    for (QAction* action : {start, stop, live}) {
        bar->addAction(action);
        bar->widgetForAction(action)->setAccessibleName(action->text());
    }
    // An assistive client toggles the button alone.
    auto* button = qobject_cast<QAbstractButton*>(bar->widgetForAction(live));
    connect(button, &QAbstractButton::toggled, live, &QAction::setChecked);
}

void MainWindow::showStreamed(const SourceFrame& streamed)
{
    const bool isSnapshot = m_isSnapshot;
    if (isSnapshot)
        m_feed.stop();
    followSettings(*streamed.frame);
    const QString name = nameOf(*m_source);
    setTitle(name);
    const std::uint32_t averaged = m_conditioner.averaged();
    const QString description = name + QLatin1Char(' ') + QString::number(streamed.number) +
                                QStringLiteral("  ") + shapeOf(*streamed.frame) +
                                (averaged > 1 ? tr("  average of %1").arg(averaged) : QString());
    if (!showFrame(streamed.frame, description, name))
        return;
    m_judge.follow(streamed.frame);
    for (PlugIn* plugIn : qAsConst(m_plugIns)) {
        if (m_isLive || isSnapshot)
            plugIn->setFrame(streamed.frame);
        else
            plugIn->offerFrame(streamed.frame);
    }
}

void MainWindow::showCounts()
{
    m_status->setFramesPerSecond(m_feed.isRunning() ? QString::number(m_feed.framesPerSecond(), 'f', 1)
                                                    : QString());
    m_status->setDropped(QString::number(m_feed.counts().dropped));
    const std::optional<quint64> incomplete = incompleteFrames();
    m_status->setIncomplete(incomplete ? QString::number(*incomplete) : QString());
    tellNotices();
}

void MainWindow::setLive(bool on)
{
    m_isLive = on;
    if (!on)
        return;
    for (PlugIn* plugIn : qAsConst(m_plugIns))
        plugIn->catchUp();
}

} // namespace zor
