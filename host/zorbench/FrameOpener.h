#pragma once

#include "host/frames/Frame.h"
#include "host/zorbench/RawMemory.h"

#include <QObject>
#include <QString>

#include <memory>

class QWidget;

namespace zor {

/// Opens files for a window: pictures at once, raw dumps after a dialog, TIFF files whose 0 is white after a
/// question. What goes wrong is shown in one box, and nothing else changes.
class FrameOpener : public QObject
{
    Q_OBJECT

public:
    /// Window and settings must outlive this object.
    FrameOpener(QWidget& window, QSettings& settings);

    /// Returns at once; opened() comes before that for a picture, later for what is asked about.
    void open(const QString& file);

signals:
    void opened(const std::shared_ptr<const zor::Frame>& frame, const QString& file);

private:
    void openAs(const QString& file, const FrameOptions& options);
    void askAboutWhite(const QString& file);
    void askForLayout(const QString& file);

    QWidget& m_window;
    RawMemory m_memory;
};

} // namespace zor
