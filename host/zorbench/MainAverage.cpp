// Averages and dark frames in the main window.

#include "host/zorbench/FrameStatus.h"
#include "host/zorbench/MainWindow.h"
#include "host/zorbench/NoticeLine.h"
#include "host/zorbench/PlugIn.h"
#include "host/zorbench/Tell.h"

#include <QMenu>
#include <QMenuBar>
#include <QProgressDialog>

namespace zor {

void MainWindow::makeCameraMenu(const std::string& interfaces)
{
    QMenu* menu = menuBar()->addMenu(tr("Camera"));
    makeCameraActions(menu, interfaces);
    QAction* snapshot = menu->addAction(tr("Snapshot"), this, &MainWindow::takeSnapshot, Qt::Key_F6);
    connect(&m_feed, &FrameFeed::runningChanged, snapshot, &QAction::setDisabled);
    menu->addSeparator();
    menu->addAction(tr("Average\u2026"), this, [this] { askForAverage(AverageDialog::Purpose::Average); });
    m_showAverage = menu->addAction(tr("Show average"), this, &MainWindow::showAverage);
    m_showAverage->setEnabled(false);
    menu->addSeparator();
    menu->addAction(tr("Dark frame\u2026"), this, [this] { askForAverage(AverageDialog::Purpose::Dark); });
    m_subtractDark = menu->addAction(tr("Subtract dark frame"));
    m_subtractDark->setCheckable(true);
    m_subtractDark->setEnabled(false);
    connect(m_subtractDark, &QAction::toggled, this, [this](bool on) { m_conditioner.setSubtractsDark(on); });
}

void MainWindow::takeSnapshot()
{
    m_isSnapshot = true;
    m_feed.start(*m_source);
}

void MainWindow::askForAverage(AverageDialog::Purpose purpose)
{
    auto* dialog = new AverageDialog(purpose, m_settings, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog, purpose] {
        if (dialog->isSliding()) {
            setSliding(dialog->frames());
            if (!m_feed.isRunning())
                m_feed.start(*m_source);
            return;
        }
        if (purpose == AverageDialog::Purpose::Average)
            setSliding(1);
        takeAverage(purpose, dialog->frames());
    });
    dialog->open();
}

void MainWindow::setSliding(int frames)
{
    m_conditioner.setAveraged(static_cast<std::uint32_t>(frames));
    m_judge.setMeasuresNoise(frames == 1);
}

void MainWindow::takeAverage(AverageDialog::Purpose purpose, int frames)
{
    const bool isDark = purpose == AverageDialog::Purpose::Dark;
    const bool wasRunning = m_feed.isRunning();
    m_feed.stop();
    auto* progress = new QProgressDialog(tr("Frames are taken"), tr("Cancel"), 0, frames, this);
    progress->setWindowTitle(isDark ? tr("Dark frame") : tr("Average"));
    progress->setWindowModality(Qt::WindowModal);
    progress->setAttribute(Qt::WA_DeleteOnClose);
    progress->setMinimumDuration(0);
    progress->setAutoClose(false);
    m_task = std::make_unique<AverageTask>(
        *m_source, static_cast<std::uint32_t>(frames),
        [this](const Frame& frame) { return captureSettings(frame); }, this);
    AverageTask* task = m_task.get();
    // The task goes when it has said its last, or was cancelled, or something else needs the source.
    const auto end = [this, task, wasRunning] {
        if (m_task.get() != task)
            return;
        task->cancel();
        m_task.release()->deleteLater();
        if (wasRunning)
            m_feed.start(*m_source);
    };
    connect(task, &QObject::destroyed, progress, &QWidget::close);
    connect(task, &AverageTask::progressed, progress, [progress, frames](int taken) {
        progress->setValue(taken);
        progress->setLabelText(tr("%1 of %2 frames are taken").arg(taken).arg(frames));
    });
    connect(progress, &QProgressDialog::canceled, task, end);
    connect(task, &AverageTask::failed, this, [this, end](const QString& sentence) {
        const QString name = QString::fromStdString(m_source->name());
        end();
        tell(this, name + QLatin1String(": ") + sentence);
    });
    connect(task, &AverageTask::done, this,
            [=](const std::shared_ptr<const Frame>& frame, const CaptureSettings& settings) {
                if (isDark) {
                    keepDark(frame, settings, frames);
                    end();
                } else {
                    m_task.release()->deleteLater();
                    keepAverage(frame, settings, frames);
                }
            });
    task->start();
}

void MainWindow::keepAverage(const std::shared_ptr<const Frame>& frame, const CaptureSettings& settings,
                             int frames)
{
    m_average.keep(frame, settings);
    m_averageName = tr("Average of %1, ").arg(frames) + QString::fromStdString(m_source->name());
    m_showAverage->setEnabled(true);
    showAverage();
}

void MainWindow::keepDark(const std::shared_ptr<const Frame>& frame, const CaptureSettings& settings,
                          int frames)
{
    m_conditioner.setDark(frame, settings);
    followSettings(*frame);
    m_subtractDark->setEnabled(true);
    m_subtractDark->setChecked(true);
    m_notice->tell(
        tr("The dark frame is the average of %1 frames. It is subtracted from now on.").arg(frames));
}

void MainWindow::showAverage()
{
    followSettings(*m_average.frame());
    const std::shared_ptr<const Frame> average = m_average.frame();
    if (!average)
        return;
    m_feed.stop();
    const std::shared_ptr<const Frame> frame = m_conditioner.withoutDark(average);
    tellNotices();
    setTitle(m_averageName);
    if (!showFrame(frame, m_averageName + QStringLiteral("  ") + shapeOf(*frame), m_averageName))
        return;
    m_judge.judge(frame);
    for (PlugIn* plugIn : qAsConst(m_plugIns))
        plugIn->setFrame(frame);
}

void MainWindow::followSettings(const Frame& frame)
{
    const std::string change = m_average.follow(captureSettings(frame));
    if (change.empty())
        return;
    m_showAverage->setEnabled(false);
    m_notice->tell(tr("The average was dropped: %1; take another one.").arg(QString::fromStdString(change)));
}

void MainWindow::tellNotices()
{
    for (const std::string& notice : m_conditioner.takeNotices())
        m_notice->tell(QString::fromStdString(notice));
    m_judge.setMeasuresNoise(!m_conditioner.isAveraging());
    m_subtractDark->setEnabled(m_conditioner.hasDark());
}

} // namespace zor
