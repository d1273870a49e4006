#pragma once

#include "host/frames/Frame.h"
#include "image/Pitch.h"
#include "image/unpack/NativeCodes.h"
#include "image/unpack/UnpackRow.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zor {

/// Pixels that are unpacked at a time: their samples stay in the first-level cache.
constexpr std::uint32_t SampleRunPixels = 1024;
static_assert(SampleRunPixels % NativeGroup == 0, "a run begins at a whole byte in every format");

/// Throws std::invalid_argument for a frame whose samples cannot be read: without pixels, of a pixel type
/// that is not in the table, or with fewer bytes than its rows take.
void checkSamples(const Frame& frame);

/// Calls take(samples, count) for the samples of row `y` of a frame that checkSamples() lets through, in runs
/// from the left. Bits above the depth in a word of 16 bits give full scale, as in the converter; other spare
/// bits are ignored. Allocates nothing.
template <typename Take> void forEachSampleRun(const Frame& frame, std::uint32_t y, Take take)
{
    const UnpackRow unpack = unpackRowFor(frame.pixelType);
    const std::uint32_t perPixel = samplesPerPixel(frame.pixelType);
    const std::uint8_t* row = frame.pixels.data() + std::size_t{y} * frame.pitch;
    std::array<std::uint16_t, std::size_t{SampleRunPixels} * 4> samples;
    for (std::uint32_t x = 0; x < frame.width;) {
        const std::uint32_t count = std::min(SampleRunPixels, frame.width - x);
        unpack(row + tightPitch(frame.pixelType, x), samples.data(), count);
        take(samples.data(), std::size_t{count} * perPixel);
        x += count;
    }
}

/// A frame without pixels for samples of the same size and format, with what is known about their depth. Its
/// rows are tight.
Frame tightFrameLike(const Frame& frame);

std::size_t samplesPerRow(const Frame& frame);

/// All samples of row `y`, as those of forEachSampleRun().
void unpackSamples(const Frame& frame, std::uint32_t y, std::vector<std::uint16_t>& samples);

/// The other way round. The bytes of the row are zero before.
void packSamples(const std::vector<std::uint16_t>& samples, std::uint32_t y, Frame& frame);

} // namespace zor
