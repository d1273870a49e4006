#include "tests/support/TsanApplication.h"

// GCC tells by a macro, clang by a feature test (which Qt's headers define for GCC, as never true).
#if defined(__SANITIZE_THREAD__)
#define ZOR_THREAD_SANITIZER
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define ZOR_THREAD_SANITIZER
#endif
#endif

#if defined(ZOR_THREAD_SANITIZER)
extern "C" void __tsan_acquire(void* address);
extern "C" void __tsan_release(void* address);
static void acquire(void* address)
{
    __tsan_acquire(address);
}
static void release(void* address)
{
    __tsan_release(address);
}
#else
static void acquire(void*) {}
static void release(void*) {}
#endif

// QCoreApplication::postEvent(QObject*, QEvent*, int) and the linker's names for its wrapper.
extern "C" void __real__ZN16QCoreApplication9postEventEP7QObjectP6QEventi(QObject*, QEvent*, int);
extern "C" void __wrap__ZN16QCoreApplication9postEventEP7QObjectP6QEventi(QObject* receiver, QEvent* event,
                                                                          int priority)
{
    release(event);
    __real__ZN16QCoreApplication9postEventEP7QObjectP6QEventi(receiver, event, priority);
    const auto* application = static_cast<TsanApplication*>(QCoreApplication::instance());
    if (application->afterPost)
        application->afterPost();
}

bool TsanApplication::notify(QObject* receiver, QEvent* event)
{
    acquire(event);
    return QApplication::notify(receiver, event);
}
