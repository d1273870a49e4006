#pragma once

#include "host/frames/Frame.h"
#include "tests/platform/GuardedBytes.h"
#include "tests/reference/PixelFormats.h"

#include <algorithm>

/// A frame whose memory ends with the last row's last pixel: reading a byte more ends the program.
class GuardedFrame
{
public:
    GuardedFrame(const zor::Frame& frame, const reference::PixelFormat& format)
        : m_bytes(std::size_t(frame.height - 1) * frame.pitch + format.rowBytes(frame.width))
        , m_record(frame.record())
    {
        std::copy_n(frame.pixels.begin(), m_bytes.size(), m_bytes.data());
        m_record.imageSize = std::uint32_t(m_bytes.size());
        m_record.data = m_bytes.data();
    }

    const _ZorImage& record() const { return m_record; }
    const std::uint8_t* row(std::uint32_t y) const { return m_record.data + std::size_t(y) * m_record.pitch; }

private:
    GuardedBytes m_bytes;
    _ZorImage m_record;
};
