#pragma once

#include "engine/ImageView.h"
#include "image/ZorImage.h"

#include <cstddef>
#include <memory>

namespace zor {

/// A frame in the form that gains are computed on: one channel of 8, 10, 12 or 16 bits, converted from any
/// record that the converter takes. Owns the converted pixels.
class MonoFrame
{
public:
    /// In the mono format that belongs to the record's depth. Throws std::runtime_error when the converter
    /// refuses the record or the image is too large for the engine's signed 32-bit sizes.
    explicit MonoFrame(const _ZorImage& source);

    /// The same in another mono format: Mono8, Mono10, Mono12 or Mono16.
    MonoFrame(const _ZorImage& source, std::uint32_t target);

    /// The pixels, valid while this object lives.
    ConstImageView view() const;

    /// Bytes of the pixel buffer that view() shows.
    std::size_t bytes() const { return m_record->imageSize; }

    std::uint32_t pixelType() const { return m_record->pixelType; }

    const _ZorImage& record() const { return *m_record; }

private:
    struct Release
    {
        void operator()(_ZorImage* record) const;
    };

    std::unique_ptr<_ZorImage, Release> m_record;
};

/// The name of the format with the given pixel type code, "unknown format" for a code without a row.
const char* pixelTypeName(std::uint32_t pixelType);

} // namespace zor
