#pragma once

#include <QGuiApplication>

/// Takes back every override cursor: some paths of the dialog leave the wait cursor set, and the cursors are
/// the application's.
inline void restoreAllCursors()
{
    while (QGuiApplication::overrideCursor())
        QGuiApplication::restoreOverrideCursor();
}
