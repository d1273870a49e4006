#pragma once

#include "engine/ImageView.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zor {

/// Where a frame's figures stop being good. All are in percent: of the pixels, or of full scale.
struct JudgementLimits
{
    double saturatedAmber = 0.1; ///< from this share of saturated pixels on
    double saturatedRed = 1.0;   ///< from this share on
    double darkAmber = 20.0;     ///< with a mean below this
    double darkRed = 5.0;        ///< with a mean below this
    double brightAmber = 90.0;   ///< with a mean above this
};

/// The darkest of a frame's columns or rows, the first of equals.
struct DarkestMean
{
    std::int32_t index = 0; ///< counted from 0
    double mean = 0.0;      ///< DN
};

/// What a frame is judged by.
struct FrameFigures
{
    double saturatedPercent = 0.0; ///< pixels at the largest value of the depth, of all
    double meanPercent = 0.0;      ///< mean level, of full scale
    DarkestMean darkestColumn;
    DarkestMean darkestRow;
    std::int32_t columnsWithoutLight = 0; ///< with a mean of 0
    std::int32_t rowsWithoutLight = 0;
    double columnVariation = 0.0; ///< NonUniformity::columns, NaN for a black frame
    double rowVariation = 0.0;    ///< NonUniformity::rows, NaN for a black frame
};

/// The figures of a mono frame of 8 to 16 bits with at least one pixel.
FrameFigures frameFigures(const ConstImageView& frame);

/// From good to bad.
enum class Verdict
{
    Green, ///< good for gains
    Amber, ///< usable, but another frame would be better
    Red    ///< gains from it would be wrong
};

struct JudgementReason
{
    enum Code
    {
        Saturated,
        Dark,
        Bright,
        ColumnsWithoutLight,
        RowsWithoutLight
    };

    Code code;
    Verdict level; ///< never green
    /// One line without a line end: the figure, and what to do.
    std::string text;
};

/// Whether a frame is good for gains.
struct Judgement
{
    Verdict verdict = Verdict::Green; ///< the worst level of the reasons
    /// All that apply, each code once at its worst level; the worst first, equals in the order of their
    /// codes.
    std::vector<JudgementReason> reasons;
};

Judgement judge(const FrameFigures& figures, const JudgementLimits& limits = {});

} // namespace zor
