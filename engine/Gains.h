#pragma once

#include "engine/ImageView.h"

#include <list>

namespace zor {

/// What the gains aim at.
struct GainRule
{
    bool normalize = true; ///< true: peak mean x normalizeValue; false: mean of the means
    double normalizeValue = 1.0;
    bool pairSmoothing = false; ///< average neighbouring means in pairs first
};

/// One gain per column, left to right, from the frame as it came, into the empty list `gains`, and the
/// truncated mean of each column (width entries) and row (height entries). A gain is target / mean,
/// multiplied first and divided last, and may be infinite or NaN. A depth that is not corrected has no gains
/// and means of 0.
void computeColumnGains(const ConstImageView& frame, const GainRule& rule, std::list<double>& gains,
                        std::uint16_t* columnMeans, std::uint16_t* rowMeans);

/// One gain per row, top to bottom, into the empty list `gains`, from an image of 16-bit cells; `cells.depth`
/// plays no part.
void computeRowGains(const ConstImageView& cells, const GainRule& rule, std::list<double>& gains);

} // namespace zor
