#include "host/zorffc/RemoveOnSignal.h"

#include <csignal>
#include <cstring>

#include <unistd.h>

namespace zor {

namespace {

constexpr int Signals[] = {SIGINT, SIGTERM, SIGHUP};

/// Memory that the handler may look at: it must neither allocate nor meet a string half changed.
char path[4096];

extern "C" void removeAndEnd(int signal)
{
    ::unlink(path);
    // The handler was taken off when it was called, so this ends the process.
    ::raise(signal);
}

void setHandler(int signal, void (*handler)(int))
{
    struct sigaction action
    {
    };
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    ::sigaction(signal, &action, nullptr);
}

bool hasHandler(int signal, void (*handler)(int))
{
    struct sigaction present
    {
    };
    return ::sigaction(signal, nullptr, &present) == 0 && present.sa_handler == handler;
}

} // namespace

RemoveOnSignal::RemoveOnSignal(const std::string& file)
{
    if (file.size() >= sizeof path)
        return;
    std::memcpy(path, file.c_str(), file.size() + 1);
    for (const int signal : Signals) {
        if (hasHandler(signal, SIG_DFL))
            setHandler(signal, removeAndEnd);
    }
}

RemoveOnSignal::~RemoveOnSignal()
{
    for (const int signal : Signals) {
        if (hasHandler(signal, removeAndEnd))
            setHandler(signal, SIG_DFL);
    }
}

} // namespace zor
