#pragma once

#include "host/frames/Frame.h"
#include "host/zorbench/RawMemory.h"

#include <QObject>
#include <QString>

#include <memory>

class QWidget;

namespace zor {

/// Opens files for a window: pictures at once, raw dumps after a dialog. What goes wrong is shown in one box,
/// and nothing else changes.
class FrameOpener : public QObject
{
    Q_OBJECT

public:
    /// Window and settings must outlive this object.
    FrameOpener(QWidget& window, QSettings& settings);

    /// Returns at once; opened() comes before that for a picture, later for a raw dump.
    void open(const QString& file);

signals:
    void opened(const std::shared_ptr<const zor::Frame>& frame, const QString& file);

private:
    void askForLayout(const QString& file);

    QWidget& m_window;
    RawMemory m_memory;
};

} // namespace zor
