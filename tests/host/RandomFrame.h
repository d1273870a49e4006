#pragma once

#include "host/quality/SampleLanes.h"
#include "tests/platform/GuardedBytes.h"
#include "tests/reference/PixelFormats.h"

#include <map>
#include <vector>

/// An image of random bytes in any format, at the end of its memory, and its samples read bit by bit.
class RandomFrame
{
public:
    RandomFrame(const reference::PixelFormat& format, std::uint32_t width, std::uint32_t height,
                std::uint32_t padding, std::uint32_t seed);

    const _ZorImage& record() const { return m_record; }

    /// The samples that are stored with the pixels of the region, as far as it lies on the image, by the
    /// letter of their channel. Each channel of the format is there. Bits above the depth count.
    std::map<char, std::vector<std::uint32_t>> samplesOf(const zor::PixelRegion& region) const;

private:
    std::uint32_t code(std::uint32_t x, std::uint32_t y, std::uint32_t sample) const;

    const reference::PixelFormat& m_format;
    GuardedBytes m_bytes;
    _ZorImage m_record;
};
