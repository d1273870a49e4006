#pragma once

#include "host/simulate/SensorModel.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zor {

/// What differs from one frame to the next.
struct TemporalNoise
{
    double darkNoise = 8.0; ///< deviation in the dark, e-, from 0 up
    bool shotNoise = true;  ///< electrons arrive at random (Poisson)
};

/// The frames that a sensor takes one after the other of the same light. The fixed pattern is that of
/// simulateFrame() for the same model and is computed once, the noise anew for each frame; without noise all
/// frames are the one of simulateFrame(). Takes 8 bytes of memory a pixel, 16 with a dark signal.
///
/// The noise is made of quicker random numbers than simulateFrame()'s. Above a mean of 50 electrons shot
/// noise and dark noise are one normal distribution with the sum of both variances, up to four deviations; up
/// to 50 electrons are counted.
class SimulatedScene
{
public:
    /// `model.darkNoise` and `model.shotNoise` are not used.
    explicit SimulatedScene(const SensorModel& model);

    const SensorModel& model() const { return m_model; }

    /// Fills grey[0..width) with row `y` of frame `number`, at the model's depth. What comes out depends on
    /// the model, the noise and the two numbers alone, so that rows may be computed in any order and on any
    /// thread.
    void exposeRow(std::uint64_t number, std::uint32_t y, const TemporalNoise& noise,
                   std::uint16_t* grey) const;

private:
    std::size_t darkRow(std::uint32_t y) const;

    SensorModel m_model;
    std::vector<double> m_light;
    std::vector<double> m_dark; ///< one row of zeros for all when there is no dark signal
};

} // namespace zor
