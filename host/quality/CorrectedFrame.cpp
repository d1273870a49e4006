#include "host/quality/CorrectedFrame.h"

#include "engine/Coefficient.h"
#include "engine/TableCorrection.h"

namespace zor {

std::vector<std::int32_t> coefficientTable(const std::list<double>& gains, std::uint8_t fractionBits)
{
    std::vector<std::int32_t> table;
    table.reserve(gains.size());
    for (const double gain : gains)
        table.push_back(EncodeCoefficient(gain, fractionBits));
    return table;
}

CorrectedFrame::CorrectedFrame(const ConstImageView& frame, const std::vector<std::int32_t>& columns,
                               const std::vector<std::int32_t>& rows, std::uint8_t fractionBits)
    : m_geometry(frame)
    , m_pixels(static_cast<std::size_t>(frame.step) * static_cast<std::size_t>(frame.height))
{
    const ImageView destination{m_pixels.data(), frame.step, frame.width, frame.height, frame.depth};
    applyTables(frame, columns.data(), rows.data(), fractionBits, destination);
    m_geometry.data = nullptr;
}

ConstImageView CorrectedFrame::view() const
{
    ConstImageView view = m_geometry;
    view.data = m_pixels.data();
    return view;
}

} // namespace zor
