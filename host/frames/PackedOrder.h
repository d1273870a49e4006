#pragma once

#include "host/frames/Frame.h"

namespace zor {

/// Exchanges the two halves of every pair's middle byte, which brings a frame in a `Packed` format from the
/// order of GigE Vision (the even pixel's low bits in the low nibble) to a record's order (in the high one),
/// and back. An odd last pixel has its middle byte as well; padding stays. Leaves frames of other formats as
/// they are.
void swapPackedOrder(Frame& frame);

} // namespace zor
