#pragma once

#include "plugin/ZBKInterfacePlugIn.h"
#include "tests/plugin/UtilityDialog.h"
#include "tests/support/TestFrame.h"

#include <QPluginLoader>

#include <functional>

/// The built plug-in in a host that lets go of it again: the loader's hint that keeps a library is cleared,
/// and the program itself doesn't use the viewer's library. The dialog is found by the names of its widgets,
/// and the operator's hands reach it through the mouse and keys.
class LoadedUtility
{
public:
    /// Ends the program with a message when the plug-in can't be loaded.
    LoadedUtility();
    ~LoadedUtility() { unload(); }

    ZBKInterfacePlugIn& plugIn() { return *m_plugIn; }
    QObject* object() { return m_loader.instance(); }

    /// Lets go of the library; false when the loader can't.
    bool unload();
    /// Whether the plug-in or its viewer's library is in this process.
    static bool isMapped();

    /// Hands a frame over, has it computed and shown.
    void show(TestFrame frame);
    /// Zooms the upper view so far in that its pixels carry numbers, and has it painted.
    static void readPixels();
    /// Opens the context menu of the upper view and closes it again; whether it opened.
    static bool openMenu(const std::function<void()>& whileOpen = {});

private:
    QPluginLoader m_loader;
    ZBKInterfacePlugIn* m_plugIn = nullptr;
};
