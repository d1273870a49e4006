#pragma once

#include "host/simulate/SensorModel.h"

#include <cstdint>
#include <vector>

namespace zor {

/// One frame, rows from the top, quantised to whole DN and limited to 0 and saturation(). The fixed pattern
/// depends on the seed and its own figure alone, so that switching one source off leaves the others as they
/// are.
std::vector<std::uint16_t> simulateFrame(const SensorModel& model);

} // namespace zor
