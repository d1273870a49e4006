#pragma once

#include "host/frames/Frame.h"

#include <cstdint>
#include <vector>

namespace zor {

/// Frames that one average is made of at most.
constexpr std::uint32_t MostAveragedFrames = 1024;

/// Answers `count`. Throws std::invalid_argument when it is not from 1 to MostAveragedFrames.
std::uint32_t checkedFrameCount(std::uint32_t count);

/// The sum of frames of one size and pixel format, sample by sample, in all formats of the pixel type table.
/// It is exact. A sample is a number from 0 to the full scale of its format: bits above the depth in a word
/// of 16 bits give full scale, as in the converter. Takes 4 bytes of memory a sample.
class FrameSum
{
public:
    /// The first frame says which size and format the others have. Throws std::invalid_argument for a frame
    /// of another size or format and for one whose samples cannot be read, std::length_error beyond
    /// MostAveragedFrames, and std::bad_alloc at the first one alone. The sum is then what it was.
    void add(const Frame& frame);

    /// Takes a frame out that was added, and adds the next one in its place, in one go through the sum.
    /// Throws std::invalid_argument as add() does. The sum is then what it was. Allocates nothing otherwise.
    void replace(const Frame& previous, const Frame& next);

    std::uint32_t count() const { return m_count; }

    /// The mean of the frames in their pixel format: each sample is rounded to nearest, halves up. The means
    /// of colour differences and of a fourth channel are taken like all others. Rows are tight, and bits that
    /// belong to no sample are 0. What is known about the depth is that of the first frame. Throws
    /// std::logic_error when no frame is in.
    Frame mean() const;

private:
    void checkLikeFirst(const Frame& frame) const;
    std::uint32_t* sumsOfRow(std::uint32_t y);

    Frame m_like;                      ///< of this size and format, without pixels
    std::vector<std::uint32_t> m_sums; ///< of the samples in their order, row by row
    std::uint32_t m_count = 0;
};

} // namespace zor
