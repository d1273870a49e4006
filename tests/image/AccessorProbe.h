#pragma once

#include "image/ZimPixelAccessor.h"

/// An accessor laid open, also of kinds that no format asks for.
class AccessorProbe : public ZimPixelAccessor
{
public:
    explicit AccessorProbe(const zor::FormatBlock& format)
        : ZimPixelAccessor(format)
    {
    }
    /// Without a typed object, which samples are not read through; `object` becomes the accessor's.
    explicit AccessorProbe(std::uint32_t wanted, void* object = nullptr)
        : ZimPixelAccessor(zor::FormatBlock{0, 64, 0, {}, 0, 0, 0})
    {
        kind = wanted;
        impl = object;
    }

    using ZimPixelAccessor::impl;
    using ZimPixelAccessor::kind;
};
