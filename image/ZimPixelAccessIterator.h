#pragma once

#include "image/ZimPixelAccessor.h"
#include "image/ZimPixelIterator.h"

/// A walk over an image's pixels that reads and writes their samples.
class ZimPixelAccessIterator : public ZimPixelIterator
{
public:
    ZimPixelAccessIterator(const _ZorImage* image, std::uint32_t x, std::uint32_t y)
        : ZimPixelIterator(image, x, y)
        , accessor(new ZimPixelAccessor(*image))
    {
    }
    ~ZimPixelAccessIterator() override
    {
        delete accessor;
        accessor = nullptr;
    }

    /// A sample of the current pixel; see ZimPixelAccessor for the channel and the column.
    int read(int channel, unsigned column) const { return accessor->read(cursor(), channel, column); }
    void write(int channel, int value, unsigned column) const
    {
        accessor->write(cursor(), channel, value, column);
    }

protected:
    ZimPixelAccessor* accessor; ///< owned
};
