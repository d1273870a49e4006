#include "host/simulate/SimulatedFrame.h"

#include "host/simulate/FixedPattern.h"
#include "host/simulate/NoiseStreams.h"

namespace zor {

std::vector<std::uint16_t> simulateFrame(const SensorModel& model)
{
    FixedPattern pattern(model);
    RandomStream shot(model.seed, streamNumber(NoiseStream::Shot));
    RandomStream darkNoise(model.seed, streamNumber(NoiseStream::Dark));
    const GreyScale scale(model);
    // Row by row: the pattern of a large frame would take many times the memory of its grey values.
    std::vector<double> light(model.width);
    std::vector<double> dark(model.width);
    std::vector<std::uint16_t> frame(static_cast<std::size_t>(model.width) * model.height);
    std::uint16_t* pixel = frame.data();
    for (std::uint32_t y = 0; y < model.height; ++y) {
        pattern.nextRow(light.data(), dark.data());
        for (std::uint32_t x = 0; x < model.width; ++x) {
            double electrons = model.shotNoise ? shot.poisson(light[x]) : light[x];
            electrons += dark[x];
            if (model.darkNoise > 0.0)
                electrons += model.darkNoise * darkNoise.normal();
            *pixel++ = scale.greyValue(electrons);
        }
    }
    return frame;
}

} // namespace zor
