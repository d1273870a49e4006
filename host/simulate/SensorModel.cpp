#include "host/simulate/SensorModel.h"

#include "host/simulate/RandomStream.h"

#include <algorithm>
#include <cmath>

namespace zor {

namespace {

/// Every source of randomness has its stream.
enum Stream : std::uint64_t
{
    Columns,
    Rows,
    PixelGain,
    PixelDark,
    Shot,
    Dark
};

/// A gain around 1. The tail of a large deviation ends at 0: no pixel takes light away.
double patternGain(double deviationPercent, RandomStream& random)
{
    return std::max(0.0, 1.0 + deviationPercent / 100.0 * random.normal());
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

double vignettingAt(const SensorModel& model, std::uint32_t x, std::uint32_t y)
{
    const double centreX = (model.width - 1) / 2.0;
    const double centreY = (model.height - 1) / 2.0;
    const double corner = centreX * centreX + centreY * centreY;
    if (corner == 0.0)
        return 1.0;
    const double square = ((x - centreX) * (x - centreX) + (y - centreY) * (y - centreY)) / corner;
    // cos^4 = 1 / (1 + tan^2)^2, and tan^2 goes with the square of the distance.
    const double cornerTangent = 1.0 / std::sqrt(1.0 - model.vignettingPercent / 100.0) - 1.0;
    const double secant = 1.0 + square * cornerTangent;
    return 1.0 / (secant * secant);
}

std::vector<std::uint16_t> simulateFrame(const SensorModel& model)
{
    const auto columns = patternGains(model.width, model.columnFpnPercent, {model.seed, Columns});
    const auto rows = patternGains(model.height, model.rowFpnPercent, {model.seed, Rows});
    RandomStream pixelGain(model.seed, PixelGain);
    RandomStream pixelDark(model.seed, PixelDark);
    RandomStream shot(model.seed, Shot);
    RandomStream dark(model.seed, Dark);

    const double peak = model.levelPercent / 100.0 * model.fullWell;
    const double systemGain = model.systemGain();
    std::vector<std::uint16_t> frame(static_cast<std::size_t>(model.width) * model.height);
    std::uint16_t* pixel = frame.data();
    for (std::uint32_t y = 0; y < model.height; ++y) {
        for (std::uint32_t x = 0; x < model.width; ++x) {
            double electrons = peak * vignettingAt(model, x, y) * columns[x] * rows[y];
            if (model.prnuPercent > 0.0)
                electrons *= patternGain(model.prnuPercent, pixelGain);
            if (model.shotNoise)
                electrons = shot.poisson(electrons);
            if (model.dsnu > 0.0)
                electrons += model.dsnu * pixelDark.normal();
            if (model.darkNoise > 0.0)
                electrons += model.darkNoise * dark.normal();
            const double grey = std::floor(model.blackLevel + systemGain * electrons + 0.5);
            *pixel++ = static_cast<std::uint16_t>(std::clamp(grey, 0.0, model.saturation()));
        }
    }
    return frame;
}

} // namespace zor
