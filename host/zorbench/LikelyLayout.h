#pragma once

#include "host/frames/Frame.h"

#include <cstdint>
#include <optional>

namespace zor {

/// A layout that fills a raw dump of so many bytes exactly, with the size of a common sensor; nothing when
/// there is none. What it begins with is a guess: dumps of other sizes have as many bytes.
std::optional<RawLayout> likelyLayout(std::uint64_t bytes);

} // namespace zor
