#pragma once

#include "host/frames/Frame.h"

#include <QObject>
#include <QString>

#include <memory>

class QWidget;

namespace zor {

/// Saves frames for a window: asks for a name and writes the file whole or not at all. What goes wrong is
/// shown in one box, and a file that was there before stays as it was.
class FrameSaver : public QObject
{
    Q_OBJECT

public:
    /// The window must outlive this object.
    explicit FrameSaver(QWidget& window);

    /// Returns at once; saved() comes later. What is written is this frame, also when others have come
    /// meanwhile. The dialog begins in `folder` and offers the base of `name` with a fitting ending.
    void ask(const std::shared_ptr<const Frame>& frame, const QString& folder, const QString& name);

signals:
    void saved(const QString& file);

private:
    void save(const Frame& frame, const QString& file);

    QWidget& m_window;
};

} // namespace zor
