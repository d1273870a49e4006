#pragma once

#include "host/frames/Frame.h"

namespace zor {

/// Looks at the bits that a grey raw format leaves unused above its samples: Mono10, Mono12 and Mono14 in 16
/// bits, Mono10_FLExPacked in fields of 12. A frame that is read in the right format has zeros there. Throws
/// FrameError that names the first sample which does not fit. Other formats have no such bits, or none that
/// are defined.
void checkRawRange(const std::string& path, const Frame& frame);

} // namespace zor
