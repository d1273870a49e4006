#include "host/simulate/SensorModel.h"

#include <cmath>

namespace zor {

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

} // namespace zor
