#pragma once

#include "image/ZorImage.h"

#include <optional>
#include <string>

namespace zor {

/// Looks at the bits that a format leaves unused above its samples: those of 10, 12 and 14 bits in words of
/// 16, whatever their family. A frame that is read in the right format has zeros there. Gives a text that
/// names the first pixel with a sample which does not fit; nothing when all do. Packed formats have no such
/// bits, or spare ones that mean nothing.
std::optional<std::string> sampleAboveDepth(const _ZorImage& frame);

} // namespace zor
