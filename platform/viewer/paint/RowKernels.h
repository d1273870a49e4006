#pragma once

#include "platform/viewer/paint/AxisMap.h"

#include <cstddef>
#include <cstdint>

namespace zor::viewer {
/// The loops that run over every device pixel, on one row each. Samples are 8 or 16 bits; every division by
/// AxisMap::Unit is rounded to nearest.

/// target[i] = the weighted mean of a[i], b[i] and c[i]; the weights add up to AxisMap::Unit.
void meanOfRows(const std::uint8_t* a, const std::uint8_t* b, const std::uint8_t* c,
                const AxisMap::Weights& weights, std::uint16_t* target, std::size_t count);
void meanOfRows(const std::uint16_t* a, const std::uint16_t* b, const std::uint16_t* c,
                const AxisMap::Weights& weights, std::uint16_t* target, std::size_t count);

/// Device pixels along x: the weighted mean of `taps` pixels of `channels` samples. `row` holds the pixels
/// from `origin` on.
void meanOfColumns(const std::uint16_t* row, int origin, const AxisMap& x, int channels,
                   std::uint16_t* target);

/// The same where each device pixel shows one image pixel.
void pickColumns(const std::uint8_t* row, const AxisMap& x, int channels, std::uint16_t* target);
void pickColumns(const std::uint16_t* row, const AxisMap& x, int channels, std::uint16_t* target);

/// fine[i] = the mean of fine[i] and coarse[i], the latter with weight `blend`.
void mixRows(std::uint16_t* fine, const std::uint16_t* coarse, int blend, std::size_t count);
} // namespace zor::viewer
