#pragma once

#include "plugin/ZBKInterfacePlugIn.h"

#include <QVector>

#include <functional>

/// A host's end of the callback.
struct NotifiedHost
{
    QVector<std::uint32_t> codes;
    ZBKInterfacePlugIn* plugIn = nullptr;
    std::function<void(std::uint32_t)> onCode; ///< what the host does inside the notification

    static int call(void* context, std::uint32_t code, ZBKInterfacePlugIn* plugIn)
    {
        auto* host = static_cast<NotifiedHost*>(context);
        host->codes.append(code);
        host->plugIn = plugIn;
        if (host->onCode)
            host->onCode(code);
        return 42;
    }
};
