// The main window of a program without cameras.

#include "host/zorbench/MainWindow.h"

namespace zor {

void MainWindow::makeCameraActions(QMenu*, const std::string&) {}

void MainWindow::releaseCameras() {}

CaptureSettings MainWindow::captureSettings(const Frame& frame) const
{
    return settingsOf(frame);
}

std::optional<quint64> MainWindow::incompleteFrames() const
{
    return std::nullopt;
}

} // namespace zor
