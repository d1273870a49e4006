#pragma once

#include "host/zorbench/FrameOpener.h"
#include "host/zorbench/FrameView.h"
#include "host/zorbench/RecentFiles.h"

#include <QMainWindow>

#include <optional>

class QMenu;
class QSettings;

namespace zor {

class FrameStatus;
class PlugIn;

/// The workbench: the current frame, what is known of it, and the plug-ins that work on it.
///
/// The members lie in two files: what the menus offer in MainMenus.cpp, everything else in MainWindow.cpp.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Settings outlive the window. The plug-ins of the folder are loaded; those that can't be are told in
    /// one box when the event loop runs.
    MainWindow(QSettings& settings, const QString& plugInFolder);
    ~MainWindow() override;

    /// Opens the first file; the others are at hand among the recent files. The names are absolute.
    void openFiles(const QStringList& files);

signals:
    /// The window was closed and the plug-ins are released: the program may end.
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void restore();
    /// Where the last frame was opened; at first the home folder.
    QString lastFolder() const;
    void showFrame(const std::shared_ptr<const Frame>& frame, const QString& file);
    /// Position and value under the cursor, of the current frame.
    void showPixel();

    void makeFileMenu();
    void makeViewMenu();
    void makePlugInMenu(const QString& folder);
    void askForFiles();
    void fillRecentFiles(QMenu* menu);

    QSettings& m_settings;
    RecentFiles m_recent;
    FrameOpener m_opener;
    FrameView* m_view;
    FrameStatus* m_status;
    QVector<PlugIn*> m_plugIns;
    QString m_file;                  ///< of the current frame
    std::optional<QPoint> m_pointed; ///< the image pixel under the cursor
};

} // namespace zor
