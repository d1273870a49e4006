#pragma once

#include "host/frames/Frame.h"

namespace zor {

/// Reads a dump of bare pixels. The file holds exactly pitch times height bytes. The low bits of the `Packed`
/// formats come in the order of GigE Vision (even pixel in the middle byte's low nibble) and are brought into
/// the record's order (high nibble), unless the layout says that they are in it already. Throws FrameError,
/// also for a sample above the format's depth.
Frame readRaw(const std::string& path, const RawLayout& layout);

/// The bytes of a dump: a frame's pixels in tight rows. Low bits of the `Packed` formats go into the order of
/// GigE Vision, or stay in the record's.
std::string rawBytes(const _ZorImage& frame, bool packedOrderRecord);

} // namespace zor
