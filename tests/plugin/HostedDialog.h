#pragma once

#include "plugin/ZBKInterfacePlugIn.h"
#include "tests/plugin/UtilityDialog.h"
#include "tests/plugin/ViewerTap.h"
#include "tests/support/TestFrame.h"

#include <QDialog>
#include <QPluginLoader>
#include <QVector>

#include <cstdint>
#include <functional>

class QMenu;

/// The utility as a host has it: the built plug-in from its file, through the loader and the interface alone,
/// its dialog open and empty, its widgets by their names. The viewer is the real one. Everything is given
/// back at the end.
///
/// A program that uses it is linked with the objects of zor_hosted_dialog, zor_test_support and zor_image.
class HostedDialog
{
public:
    /// Ends the program with a message when the plug-in can't be loaded.
    HostedDialog();
    ~HostedDialog();

    ZBKInterfacePlugIn& plugIn() { return *m_plugIn; }
    QDialog& dialog() { return *m_dialog; }
    /// Codes that the host was notified of, the last one last.
    const QVector<std::uint32_t>& codes() const { return m_codes; }

    /// A widget of the dialog; ends the program when there is none of that name.
    static QWidget* find(const char* name) { return findInUtility(name); }
    /// The same as the class that it is.
    template <typename Widget> static Widget* find(const char* name)
    {
        return static_cast<Widget*>(find(name));
    }

    /// Hands a frame over; nothing is computed.
    void hand(TestFrame frame);
    /// Hands a frame over and has it computed and shown.
    void show(const TestFrame& frame);

    /// Clicks a control with the mouse: a check box on its box, anything else in the middle.
    static void click(const char* name) { clickInUtility(name); }

    /// Milliseconds after a followed change of a view in which the next ones are dropped. They pass on the
    /// program's stopped clock (StoppedClock.h).
    static constexpr int Throttle = 50;
    /// Lets what was posted arrive, then the throttle's time pass.
    static void pause();

    // The operator's hands on a view: events arrive at the window, which finds the receiver. Places are in
    // pixels of the view's viewport.
    /// One notch is 120 units.
    static void wheel(QWidget* view, const QPoint& where, int units);
    /// The left button goes down at `from` and up at `to`, with one move between.
    static void drag(QWidget* view, const QPoint& from, const QPoint& to);
    /// The right button goes down so many times before the first request for the menu is answered. `work` is
    /// done on the open menu, again and again until it is closed. False when the requests don't return then:
    /// all event loops are ended in that case.
    static bool useMenu(QWidget* view, const std::function<void(QMenu&)>& work, int presses = 1);

private:
    static int notify(void* context, std::uint32_t code, ZBKInterfacePlugIn* plugIn);

    QPluginLoader m_loader;
    ZBKInterfacePlugIn* m_plugIn = nullptr;
    QDialog* m_dialog = nullptr;
    QVector<std::uint32_t> m_codes;
};
