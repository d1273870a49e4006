#pragma once

#include "platform/viewer/picture/PixelShape.h"

namespace zor::viewer {
/// From one mip level to the next: every target sample is the rounded mean of 2 x 2 source samples. An odd
/// last column or row is averaged with itself, so the target's sides are half the source's, rounded up.
/// `target` has `targetPitch` bytes a row.
void makeNextMipLevel(const Samples& source, const PixelShape& shape, std::uint8_t* target,
                      std::size_t targetPitch);
} // namespace zor::viewer
