#pragma once

#include <QGuiApplication>

namespace zor {

/// The wait cursor over the whole application for the life of the object.
class WaitCursor
{
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { restore(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

    /// Restores the earlier cursor before the object's end.
    void restore()
    {
        if (m_isSet)
            QGuiApplication::restoreOverrideCursor();
        m_isSet = false;
    }

    /// The wait cursor outlives the object.
    void leaveSet() { m_isSet = false; }

private:
    bool m_isSet = true;
};

} // namespace zor
