#pragma once

#include "image/PixelTypeCode.h"
#include "image/ZorImage.h"
#include "tests/platform/GuardedBytes.h"
#include "tests/reference/PixelFormats.h"

#include <QString>

#include <functional>

/// One of the four formats that the converter makes.
struct MonoTarget
{
    const char* name;
    std::uint32_t code;
    std::uint32_t bits;
};
constexpr MonoTarget MonoTargets[] = {{"Mono8", zor::Mono8, 8},
                                      {"Mono10", zor::Mono10, 10},
                                      {"Mono12", zor::Mono12, 12},
                                      {"Mono16", zor::Mono16, 16}};

/// A record of these bytes in the format of that code. Its depth and channels, which the converter does not
/// read, are those of Mono8.
_ZorImage recordFor(std::uint32_t code, std::uint32_t width, std::uint32_t height, std::uint32_t pitch,
                    std::uint32_t imageSize, std::uint8_t* data);

/// An image in any format whose pixels end right after the last row's last sample and at the end of their
/// memory. What belongs to no sample is all ones.
class EncodedImage
{
public:
    /// The sample of a component (R, G, B, A, Y, U, V, W) at a place.
    using Scene = std::function<std::uint32_t(char component, std::uint32_t x, std::uint32_t y)>;

    EncodedImage(const reference::PixelFormat& format, std::uint32_t width, std::uint32_t height,
                 const Scene& scene, std::uint32_t padding = 0);

    const _ZorImage& record() const { return m_record; }
    const reference::PixelFormat& format() const { return m_format; }
    /// A pixel's sample as it was put in.
    std::uint32_t sample(std::uint32_t x, std::uint32_t y) const
    {
        return m_format.value(m_record.data + std::size_t{y} * m_record.pitch, x);
    }

private:
    void put(std::uint32_t x, std::uint32_t y, std::uint32_t index, std::uint32_t value);

    const reference::PixelFormat& m_format;
    std::uint32_t m_pitch;
    GuardedBytes m_bytes;
    _ZorImage m_record;
};

/// What the converter makes of an image.
class Converted
{
public:
    Converted(const _ZorImage& source, unsigned long target);
    ~Converted();
    Converted(const Converted&) = delete;
    Converted& operator=(const Converted&) = delete;

    bool isDone() const { return m_status == 0 && m_record; }
    /// Null unless it is done.
    const _ZorImage* record() const { return m_record; }
    /// It failed and left the slot null.
    bool isRefused() const { return m_status != 0 && !m_record; }
    std::uint32_t sample(std::uint32_t x, std::uint32_t y) const;

private:
    int m_status;
    _ZorImage* m_record;
};

/// The first pixel of a converted record in this format that is further from what is expected than
/// `tolerance`, in words; empty when there is none. `border` pixels are left out on each side.
QString differences(const reference::PixelFormat& format, const _ZorImage& source, const MonoTarget& target,
                    const std::function<double(std::uint32_t x, std::uint32_t y)>& expected, double tolerance,
                    std::uint32_t border = 0);

inline QString differences(const EncodedImage& image, const MonoTarget& target,
                           const std::function<double(std::uint32_t x, std::uint32_t y)>& expected,
                           double tolerance, std::uint32_t border = 0)
{
    return differences(image.format(), image.record(), target, expected, tolerance, border);
}
