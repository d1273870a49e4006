#pragma once

#include "host/simulate/RandomStream.h"
#include "host/simulate/SensorModel.h"

#include <vector>

namespace zor {

/// What all frames of a sensor have in common, row by row from the top: light, vignetting, the gains of
/// columns, rows and pixels, and the dark signal. Depends on the seed, and each source of unevenness on its
/// own figure alone. The model's temporal noise plays no part.
class FixedPattern
{
public:
    explicit FixedPattern(const SensorModel& model);

    /// The next row, `model.width` values each: the electrons that light brings to a pixel on average, from 0
    /// up, and those that its dark signal adds, which may be negative.
    void nextRow(double* light, double* dark);

private:
    SensorModel m_model;
    std::vector<double> m_columns;
    std::vector<double> m_rows;
    RandomStream m_pixelGain;
    RandomStream m_pixelDark;
    std::uint32_t m_next = 0;
};

} // namespace zor
