#include "host/source/SimulatorSource.h"

#include "host/frames/FrameLimits.h"
#include "host/source/FramePace.h"
#include "image/Pitch.h"
#include "image/ZorPixelTypeTable.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <new>
#include <stdexcept>
#include <utility>

namespace zor {

namespace {

/// The mono format with samples of `depth` bits in whole bytes; 0 when there is none.
std::uint32_t unpackedMono(std::uint32_t depth)
{
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable) {
        if (pixelTypeFamily(row.code) == PixelFamily::Mono && pixelTypeSampleBits(row.code) == depth &&
            pixelTypePackingClass(row.code) == PackingClass::Unpacked)
            return row.code;
    }
    return 0;
}

void check(const SensorModel& model)
{
    if (unpackedMono(model.depth) == 0)
        throw std::invalid_argument("a simulated sensor has 8, 10, 12, 14 or 16 bits, not " +
                                    std::to_string(model.depth));
    if (model.width < 1 || model.height < 1 || model.width > MaxFrameSide || model.height > MaxFrameSide)
        throw std::invalid_argument("each side of a simulated sensor has 1 to " +
                                    std::to_string(MaxFrameSide) + " pixels, not " +
                                    std::to_string(model.width) + "x" + std::to_string(model.height));
    if (tightPitch(unpackedMono(model.depth), model.width) * model.height > MaxFrameBytes)
        throw std::invalid_argument("a simulated frame has at most " + std::to_string(MaxFrameBytes) +
                                    " bytes");
    if (!(model.blackLevel < model.saturation()))
        throw std::invalid_argument("the black level of a simulated sensor is below its highest grey value");
}

std::shared_ptr<const Frame> exposed(const SimulatedScene& scene, std::uint64_t number,
                                     const TemporalNoise& noise)
{
    const SensorModel& model = scene.model();
    const auto frame = std::make_shared<Frame>();
    frame->width = model.width;
    frame->height = model.height;
    frame->pixelType = unpackedMono(model.depth);
    frame->pitch = static_cast<std::uint32_t>(tightPitch(frame->pixelType, model.width));
    frame->depthSource = "simulated sensor";
    frame->pixels.resize(std::size_t{frame->pitch} * frame->height);
    std::vector<std::uint16_t> grey(model.width);
    for (std::uint32_t y = 0; y < model.height; ++y) {
        scene.exposeRow(number, y, noise, grey.data());
        std::uint8_t* row = frame->pixels.data() + std::size_t{y} * frame->pitch;
        if (model.depth == 8)
            std::copy(grey.begin(), grey.end(), row);
        else
            std::memcpy(row, grey.data(), frame->pitch);
    }
    return frame;
}

} // namespace

SimulatorSource::SimulatorSource(const SensorModel& model, double framesPerSecond)
{
    setModel(model);
    setFrameRate(framesPerSecond);
}

std::string SimulatorSource::name() const
{
    return "Simulator";
}

void SimulatorSource::start(Handlers handlers)
{
    // Not under the lock: what is left of the last run is waited for, and that reads settings.
    m_thread.start([this, model = model(), owned = std::move(handlers)] { run(model, owned); });
}

void SimulatorSource::stop()
{
    m_thread.stop();
}

void SimulatorSource::setModel(const SensorModel& model)
{
    check(model);
    setNoise({model.darkNoise, model.shotNoise});
    const std::lock_guard<std::mutex> lock(m_settings);
    m_model = model;
}

void SimulatorSource::setFrameRate(double framesPerSecond)
{
    if (!(framesPerSecond > 0.0 && framesPerSecond <= LargestFrameRate))
        throw std::invalid_argument("a frame rate is above 0 and at most 1000 frames per second");
    {
        const std::lock_guard<std::mutex> lock(m_settings);
        m_framesPerSecond = framesPerSecond;
    }
    m_thread.wake();
}

void SimulatorSource::setNoise(const TemporalNoise& noise)
{
    if (!(noise.darkNoise >= 0.0 && std::isfinite(noise.darkNoise)))
        throw std::invalid_argument("a dark noise is a number of electrons from 0 up");
    const std::lock_guard<std::mutex> lock(m_settings);
    m_noise = noise;
}

SensorModel SimulatorSource::model() const
{
    const std::lock_guard<std::mutex> lock(m_settings);
    return m_model;
}

double SimulatorSource::frameRate() const
{
    const std::lock_guard<std::mutex> lock(m_settings);
    return m_framesPerSecond;
}

TemporalNoise SimulatorSource::noise() const
{
    const std::lock_guard<std::mutex> lock(m_settings);
    return m_noise;
}

void SimulatorSource::run(const SensorModel& model, const Handlers& handlers)
{
    using Clock = std::chrono::steady_clock;
    try {
        const SimulatedScene scene(model);
        FramePace pace(Clock::now());
        for (std::uint64_t number = 0; m_thread.waitUntil([&] { return pace.due(frameRate()); }); ++number) {
            const Clock::time_point begun = Clock::now();
            pace.begin(begun, frameRate());
            const std::chrono::nanoseconds timestamp = begun.time_since_epoch();
            handlers.frame({exposed(scene, number, noise()), number, timestamp.count()});
        }
    } catch (const std::bad_alloc&) {
        // From here on it can be started again, also before the handler has returned.
        m_thread.stop();
        handlers.error({"there is no memory for simulated frames of " + std::to_string(model.width) + "x" +
                            std::to_string(model.height) +
                            " pixels; choose a smaller size or close other "
                            "programs",
                        true});
    }
}

} // namespace zor
