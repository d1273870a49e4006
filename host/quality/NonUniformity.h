#pragma once

#include "engine/ImageView.h"

#include <cstdint>
#include <vector>

namespace zor {

/// The exact mean of each column, left to right, in DN.
std::vector<double> columnMeans(const ConstImageView& image);

/// The exact mean of each row, top to bottom, in DN.
std::vector<double> rowMeans(const ConstImageView& image);

/// Population standard deviation over mean, in percent. NaN for no values and for a mean of 0.
double variationPercent(const std::vector<double>& values);

/// How far an image is from flat.
struct NonUniformity
{
    double columns; ///< variation of the column means in percent
    double rows;    ///< variation of the row means in percent
};

NonUniformity nonUniformity(const ConstImageView& image);

/// Pixels at the saturation limit of the image's depth.
std::uint64_t saturatedPixels(const ConstImageView& image);

/// The same as a share of all, 0 to 1.
double saturatedShare(const ConstImageView& image);

/// Pixels that are at the saturation limit in `after` and were below it in `before`, an image of the same
/// size and depth, as a share of all, 0 to 1.
double newlySaturatedShare(const ConstImageView& before, const ConstImageView& after);

} // namespace zor
