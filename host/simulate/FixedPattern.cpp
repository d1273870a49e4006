#include "host/simulate/FixedPattern.h"

#include "host/simulate/NoiseStreams.h"

#include <algorithm>

namespace zor {

namespace {

/// A gain around 1. The tail of a large deviation ends at 0: no pixel takes light away.
double patternGain(double deviationPercent, RandomStream& random)
{
    return std::max(0.0, 1.0 + deviationPercent / 100.0 * random.normal());
}

RandomStream streamOf(const SensorModel& model, NoiseStream stream)
{
    return {model.seed, streamNumber(stream)};
}

/// Gains of columns or rows.
std::vector<double> patternGains(std::uint32_t count, double deviationPercent, RandomStream random)
{
    std::vector<double> gains(count);
    for (double& gain : gains)
        gain = patternGain(deviationPercent, random);
    return gains;
}

} // namespace

FixedPattern::FixedPattern(const SensorModel& model)
    : m_model(model)
    , m_columns(patternGains(model.width, model.columnFpnPercent, streamOf(model, NoiseStream::Columns)))
    , m_rows(patternGains(model.height, model.rowFpnPercent, streamOf(model, NoiseStream::Rows)))
    , m_pixelGain(streamOf(model, NoiseStream::PixelGain))
    , m_pixelDark(streamOf(model, NoiseStream::PixelDark))
{
}

void FixedPattern::nextRow(double* light, double* dark)
{
    const double peak = m_model.levelPercent / 100.0 * m_model.fullWell;
    for (std::uint32_t x = 0; x < m_model.width; ++x) {
        light[x] = peak * vignettingAt(m_model, x, m_next) * m_columns[x] * m_rows[m_next];
        if (m_model.prnuPercent > 0.0)
            light[x] *= patternGain(m_model.prnuPercent, m_pixelGain);
        dark[x] = m_model.dsnu > 0.0 ? m_model.dsnu * m_pixelDark.normal() : 0.0;
    }
    ++m_next;
}

} // namespace zor
