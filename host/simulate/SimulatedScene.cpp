#include "host/simulate/SimulatedScene.h"

#include "host/simulate/FixedPattern.h"
#include "host/simulate/NoiseStreams.h"
#include "host/simulate/NormalTable.h"
#include "host/simulate/SpreadBits.h"

#include <cmath>

namespace zor {

namespace {

/// Draws that one random number of 64 bits is good for.
constexpr std::uint32_t DrawsPerNumber = 4;
constexpr std::uint32_t DrawBits = 64 / DrawsPerNumber;
static_assert(NormalTable::IndexBits <= DrawBits);

/// The electrons of a pixel that sees few, counted.
double countedElectrons(double light, std::uint64_t key)
{
    if (!(light > 0.0))
        return 0.0;
    return countArrivals(light, [&key] { return unitInterval(key = spreadBits(key)); });
}

} // namespace

SimulatedScene::SimulatedScene(const SensorModel& model)
    : m_model(model)
    , m_light(static_cast<std::size_t>(model.width) * model.height)
    , m_dark(model.dsnu > 0.0 ? m_light.size() : model.width)
{
    FixedPattern pattern(model);
    for (std::uint32_t y = 0; y < model.height; ++y)
        pattern.nextRow(&m_light[static_cast<std::size_t>(y) * model.width], &m_dark[darkRow(y)]);
}

std::size_t SimulatedScene::darkRow(std::uint32_t y) const
{
    return m_model.dsnu > 0.0 ? static_cast<std::size_t>(y) * m_model.width : 0;
}

void SimulatedScene::exposeRow(std::uint64_t number, std::uint32_t y, const TemporalNoise& noise,
                               std::uint16_t* grey) const
{
    const GreyScale scale(m_model);
    const double* light = &m_light[static_cast<std::size_t>(y) * m_model.width];
    const double* dark = &m_dark[darkRow(y)];
    if (!noise.shotNoise && !(noise.darkNoise > 0.0)) {
        for (std::uint32_t x = 0; x < m_model.width; ++x)
            grey[x] = scale.greyValue(light[x] + dark[x]);
        return;
    }

    const NormalTable& normal = NormalTable::instance();
    const std::uint64_t frameKey =
        spreadBits(spreadBits(spreadBits(m_model.seed) + streamNumber(NoiseStream::Frames)) + number);
    const std::uint64_t rowKey = spreadBits(frameKey + y);
    const auto darkVariance = static_cast<float>(noise.darkNoise * noise.darkNoise);
    std::uint64_t draws = 0;
    for (std::uint32_t x = 0; x < m_model.width; ++x) {
        draws = x % DrawsPerNumber == 0 ? spreadBits(rowKey + x) : draws >> DrawBits;
        double electrons = light[x];
        float variance = darkVariance;
        if (noise.shotNoise && electrons > LargestCountedMean)
            variance += static_cast<float>(electrons);
        else if (noise.shotNoise)
            electrons = countedElectrons(electrons, ~(rowKey + x));
        const auto deviate = static_cast<double>(std::sqrt(variance) * normal.at(draws));
        grey[x] = scale.greyValue(electrons + dark[x] + deviate);
    }
}

} // namespace zor
