#pragma once

#include "image/ZorImage.h"

/// A record for handing an image to a view: geometry and format block set, `data` null. The caller gives it a
/// block of zorAllocate and frees that one itself, never with ZorReleaseImage.
_ZorImage localRecord(std::int32_t width, std::int32_t height, std::int32_t step, std::uint32_t imageSize,
                      std::uint32_t pixelFormat);
