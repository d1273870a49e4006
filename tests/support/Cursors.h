#pragma once

#include <QGuiApplication>

/// Takes back every override cursor: some paths of the dialog leave the wait cursor set, and the cursors are
/// the application's. Answers how many there were.
inline int restoreAllCursors()
{
    int count = 0;
    for (; QGuiApplication::overrideCursor(); ++count)
        QGuiApplication::restoreOverrideCursor();
    return count;
}
