#pragma once

#include "host/simulate/SimulatedScene.h"
#include "host/source/FrameSource.h"
#include "host/source/SourceThread.h"

namespace zor {

/// Frames of a simulated sensor, in the unpacked mono format of the model's depth, rows without gaps. Frame
/// `number` depends on the model, the noise and the number alone. Each start() counts from 0 again.
///
/// Where a frame takes longer than a period, or the handler does, the next one begins at once: frames come
/// later, none is lost, and none waits.
class SimulatorSource : public FrameSource
{
public:
    static constexpr double LargestFrameRate = 1000.0;

    /// Throws as setModel() and setFrameRate().
    explicit SimulatorSource(const SensorModel& model, double framesPerSecond = 20.0);

    std::string name() const override;
    void start(Handlers handlers) override;
    void stop() override;

    /// The sensor from the next start() on; its noise already from the next frame on. Throws
    /// std::invalid_argument for a depth other than 8, 10, 12, 14 and 16, a side that is 0 or above
    /// MaxFrameSide, a frame above MaxFrameBytes, and a black level that leaves no room for light.
    void setModel(const SensorModel& model);

    /// From now on, above 0. Throws std::invalid_argument for any other rate and for one above
    /// LargestFrameRate.
    void setFrameRate(double framesPerSecond);

    /// From the next frame on. Throws std::invalid_argument for a dark noise that is not from 0 up.
    void setNoise(const TemporalNoise& noise);

private:
    void run(const SensorModel& model, const Handlers& handlers);
    SensorModel model() const;
    double frameRate() const;
    TemporalNoise noise() const;

    mutable std::mutex m_settings; ///< guards the three below
    SensorModel m_model;
    double m_framesPerSecond = 0.0;
    TemporalNoise m_noise;
    SourceThread m_thread; ///< the first to be destroyed: it uses the others
};

} // namespace zor
