#pragma once

#include "image/ZorImage.h"

#include <cstdint>

namespace zor {

/// A record of the given format: head and format block are set, everything else is 0 and without pixels. A
/// code whose row is unknown leaves the format block empty.
_ZorImage imageRecord(std::uint32_t pixelType);

} // namespace zor
