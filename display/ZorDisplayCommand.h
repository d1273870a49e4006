#pragma once

#include "display/ParameterMap.h"

#include <cstdint>

/// What the viewer calls back through. The order of the operations is binding.
class ZorDisplayCommand
{
public:
    virtual ~ZorDisplayCommand() = default;

    /// The object itself.
    virtual ZorDisplayCommand* object() { return this; }

    /// Hears a notification, on whatever thread the viewer calls. The base ignores it and answers 0.
    virtual std::int64_t notify(const char* name, ParameterMap* parameters)
    {
        static_cast<void>(name);
        static_cast<void>(parameters);
        return 0;
    }
};
