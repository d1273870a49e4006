#pragma once

#include "host/average/FrameConditioner.h"
#include "host/source/SimulatorSource.h"
#include "host/zorbench/AverageDialog.h"
#include "host/zorbench/AverageTask.h"
#include "host/zorbench/FrameFeed.h"
#include "host/zorbench/FrameJudge.h"
#include "host/zorbench/FrameOpener.h"
#include "host/zorbench/FrameSaver.h"
#include "host/zorbench/FrameView.h"
#include "host/zorbench/RecentFiles.h"

#include <QMainWindow>

#include <memory>
#include <optional>
#include <string>

class QMenu;
class QSettings;

namespace zor {

class CameraDesk;
class FrameStatus;
class JudgementLine;
class NoticeLine;
class PlugIn;

/// The workbench: the current frame, what is known of it, and the plug-ins that work on it.
///
/// The members lie in six files: what the menus offer in MainMenus.cpp, what belongs to a stream of frames in
/// MainStream.cpp, averages and dark frames in MainAverage.cpp, cameras in MainCamera.cpp, for which
/// MainNoCamera.cpp is used where there are none, the docks in MainDocks.cpp, everything else in
/// MainWindow.cpp.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Settings outlive the window. The plug-ins of the folder are loaded; those that can't be are named in
    /// one box when the event loop runs.
    MainWindow(QSettings& settings, const QString& plugInFolder,
               const std::string& cameraInterfaces = "fake");
    ~MainWindow() override;

    /// Opens the first file; the others are at hand among the recent files. The names are absolute.
    void openFiles(const QStringList& files);

signals:
    /// The window was closed and the plug-ins are released: the program may end.
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void restore();
    /// Where the last frame was opened or saved; at first the home folder.
    QString lastFolder() const;
    void openFrame(const std::shared_ptr<const Frame>& frame, const QString& file);
    /// Makes the frame the current one. `description` is for the status bar, `name` what it goes by in a
    /// sentence. False when another one has come meanwhile.
    bool showFrame(const std::shared_ptr<const Frame>& frame, const QString& description,
                   const QString& name);
    /// Size and format.
    static QString shapeOf(const Frame& frame);
    /// The window's title for what it shows.
    void setTitle(const QString& name);
    void tellRefusal(const QString& reason);
    /// Position and value under the cursor, of the current frame.
    void showPixel();

    void makeFileMenu();
    void makeViewMenu();
    void makePlugInMenu(const QString& folder);
    void makeStatus();
    /// What looks into the frame, each with its entry in the menu.
    void addDocks(QMenu* menu);
    void askForFiles();
    void askWhereToSave();
    void fillRecentFiles(QMenu* menu);

    void makeStream();
    /// The action that shows and hides it.
    QAction* makeSimulatorDock();
    /// The toolbar and the actions "Start", "Stop" and "Live", which are in the menu "File" as well.
    void makeStreamActions(QMenu* menu);
    void showStreamed(const SourceFrame& frame);
    void showCounts();
    void setLive(bool on);

    void makeCameraMenu(const std::string& interfaces);
    /// The entries for cameras themselves, where the program can have some.
    void makeCameraActions(QMenu* menu, const std::string& interfaces);
    /// The one that is connected is given back.
    void releaseCameras();
    /// Goes over to another source, whose frames then come.
    void useSource(FrameSource& source);
    /// How a frame was taken that comes from the source now. May be called on the source's thread.
    CaptureSettings captureSettings(const Frame& frame) const;
    /// Frames of this run of which parts or all did not come; nothing where the source cannot lose any.
    std::optional<quint64> incompleteFrames() const;
    void takeSnapshot();
    void askForAverage(AverageDialog::Purpose purpose);
    /// Frames become the average of the last ones; 1: they do not.
    void setSliding(int frames);
    void takeAverage(AverageDialog::Purpose purpose, int frames);
    void keepAverage(const std::shared_ptr<const Frame>& frame, const CaptureSettings& settings, int frames);
    void keepDark(const std::shared_ptr<const Frame>& frame, const CaptureSettings& settings, int frames);
    void showAverage();
    /// The average is dropped when frames are no longer taken as it was.
    void followSettings(const Frame& frame);
    void tellNotices();

    QSettings& m_settings;
    RecentFiles m_recent;
    FrameOpener m_opener;
    FrameSaver m_saver;
    FrameView* m_view;
    FrameStatus* m_status;
    QVector<PlugIn*> m_plugIns;
    QString m_name;                  ///< of the current frame: its file, or the source that it came from
    std::optional<QPoint> m_pointed; ///< the image pixel under the cursor

    SimulatorSource m_simulator{SensorModel()};
    FrameSource* m_source = &m_simulator; ///< what "Start" and "Stop" are about
    FrameConditioner m_conditioner;
    FrameFeed m_feed;  ///< ends before the sources and the conditioner
    QTimer m_counting; ///< runs while the source does
    FrameJudge m_judge{this};
    JudgementLine* m_judgement;
    NoticeLine* m_notice;
    CameraDesk* m_cameras = nullptr;
    KeptFrame m_average;
    QString m_averageName;
    QAction* m_showAverage = nullptr;
    QAction* m_subtractDark = nullptr;
    std::unique_ptr<AverageTask> m_task; ///< while an average is being taken
    bool m_isSnapshot = false;           ///< the next frame ends the stream
    bool m_isLive = false;               ///< open plug-ins follow a stream
    bool m_isRefusalReported = false;    ///< a box said that the viewer refused a frame of this run
};

} // namespace zor
