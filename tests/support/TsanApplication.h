#pragma once

#include <QApplication>

#include <functional>

/// An application under which ThreadSanitizer sees how posted events travel between threads.
///
/// Qt itself is not instrumented, so what a thread wrote before it posted an event looks unordered against
/// what the receiver reads. The link-time wrapper of QCoreApplication::postEvent releases the event, and
/// notify acquires it. In other builds both do nothing. A test program that uses this class is linked with
/// WRAP and the symbol in TsanApplication.cpp.
class TsanApplication : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override;

    /// Called on the posting thread after each post of the program's own code, for a test that decides what
    /// comes between a post and what follows it.
    std::function<void()> afterPost{};
};
