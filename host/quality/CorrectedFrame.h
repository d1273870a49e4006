#pragma once

#include "engine/ImageView.h"

#include <cstdint>
#include <list>
#include <vector>

namespace zor {

/// The entries of one table of a coefficient file for a gain list.
std::vector<std::int32_t> coefficientTable(const std::list<double>& gains, std::uint8_t fractionBits);

/// A frame as a camera shows it that applies the two tables of a coefficient file. Owns its pixels.
class CorrectedFrame
{
public:
    /// `columns` holds frame.width entries, `rows` frame.height entries.
    CorrectedFrame(const ConstImageView& frame, const std::vector<std::int32_t>& columns,
                   const std::vector<std::int32_t>& rows, std::uint8_t fractionBits);

    /// The corrected pixels at the frame's depth, valid while this object lives.
    ConstImageView view() const;

private:
    ConstImageView m_geometry;
    std::vector<std::uint8_t> m_pixels;
};

} // namespace zor
