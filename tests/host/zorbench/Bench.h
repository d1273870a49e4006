#pragma once

#include "host/zorbench/FrameView.h"
#include "host/zorbench/MainWindow.h"

#include <QAction>
#include <QSettings>
#include <QTemporaryDir>

#include <memory>
#include <string>

class QComboBox;
class QSpinBox;

/// A workbench in a folder of its own, with settings that nobody else has.
class Bench
{
public:
    /// The window is open. Without a folder of plug-ins there are none. Cameras are looked for on these
    /// interfaces when the test asks for it.
    explicit Bench(const QString& plugInFolder = {}, const std::string& cameraInterfaces = "fake");

    /// Closes the window and opens a new one with the settings that the old one left.
    void restart();

    zor::MainWindow& window() { return *m_window; }
    zor::FrameView& view();
    QSettings& settings() { return m_settings; }

    /// Writes a file and gives its absolute name.
    QString write(const char* name, const QByteArray& bytes);
    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }

    /// Opens a file and lets everything arrive.
    void open(const QString& file);
    /// An action of the menus, by its words; ends the program when there is none.
    QAction* action(const QString& text);
    /// What a field of the status bar says.
    QString status(const char* name);
    /// Width and height of what the viewer shows; empty before the first frame.
    QSize shownSize();

private:
    QTemporaryDir m_folder;
    QString m_plugIns;
    std::string m_cameraInterfaces;
    QSettings m_settings;
    std::unique_ptr<zor::MainWindow> m_window;
};

/// A control of a window by its accessible name; ends the program when there is none.
QWidget* controlOf(QWidget* window, const QString& name);
template <typename Control> Control* controlOf(QWidget* window, const QString& name)
{
    return static_cast<Control*>(controlOf(window, name));
}

/// A PGM file in which pixel (x, y) has the value 10 * y + x.
QByteArray countedPgm(int width, int height);
