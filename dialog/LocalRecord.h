#pragma once

#include "image/ZorImage.h"

#include <cstddef>
#include <cstdint>

namespace zor {

/// A record for handing an image to a view: geometry and format block set, `data` null. The caller gives it a
/// block of zorAllocate and frees that one itself, never with ZorReleaseImage.
_ZorImage localRecord(std::int32_t width, std::int32_t height, std::int32_t step, std::uint32_t imageSize,
                      std::uint32_t pixelFormat);

/// Bytes of a block that holds a mono record's pixels and covers `width` x `height` pixels at its pitch, also
/// when the record is smaller: the host's size counts, and a converter may deliver less.
std::size_t coveringBytes(const _ZorImage& record, std::uint32_t width, std::uint32_t height);

} // namespace zor
