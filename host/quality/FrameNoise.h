#pragma once

#include "engine/ImageView.h"

#include <cstdint>

namespace zor {

/// How much the pixels of a sensor change from one frame to the next.
struct FrameNoise
{
    double mean = 0.0;     ///< of both frames, DN
    double variance = 0.0; ///< of a pixel from frame to frame, DN²
};

/// After EMVA 1288, from two frames of the same scene and settings: half the mean of the squared difference
/// less half the squared difference of the means. The fixed pattern is the same in both frames and leaves the
/// difference, whose variance is that of both frames together. Light that changes as a whole from the one to
/// the other does not count.
///
/// The frames are mono ones with at least one pixel, as judge() sees them: that is what the gains are
/// computed on. Of a frame of a colour filter or YUV that is the luma. Throws std::invalid_argument for
/// frames of unlike sizes or depths.
FrameNoise frameNoise(const ConstImageView& one, const ConstImageView& other);

/// How many frames are to be averaged.
struct NeededFrames
{
    enum Answer
    {
        Count,
        TooMany, ///< more than may be averaged
        NoLight  ///< with a mean of 0 no number is enough
    };

    Answer answer;
    std::uint32_t count; ///< from 1 on; 0 without a count
};

/// The least number of frames, at most `most`, whose average gives gains with a relative standard deviation
/// of `accuracy`.
///
/// A gain is a target over the mean of a column or row, so that its relative deviation is that of this mean.
/// The mean of a column of `height` pixels over N frames has the variance variance / (N height), that of a
/// row variance / (N width). The shorter of the two decides:
///
///     sqrt(variance / (N min(width, height))) / mean <= accuracy
///     N >= (sqrt(variance) / (mean accuracy))² / min(width, height)
///
/// That is for pixels with noise of their own. The luma between the sites of a colour filter is interpolated
/// and shares its neighbours' noise; the number is then an estimate. The target's noise, that of the peak or
/// of the mean of all means, is common to all gains and not counted.
///
/// `mean` and `variance` are not negative, the sides are not 0. Throws std::invalid_argument for an accuracy
/// that is not a number above 0.
NeededFrames neededFrames(const FrameNoise& noise, std::uint32_t width, std::uint32_t height, double accuracy,
                          std::uint32_t most);

} // namespace zor
