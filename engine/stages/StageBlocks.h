#pragma once

#include "engine/ImageView.h"

/// Blocks as the stages of the correction get and see them.
namespace zor {

/// A block for `count` gain codes; null when memory runs out. The caller releases it, but for the paths on
/// which a stage loses it.
std::uint16_t* allocateGainCodes(std::int32_t count);

/// Releases an array and gets `count` entries anew, with unset content. When memory runs out the array is
/// null, the box is shown, and the answer is false.
bool renewLine(std::uint16_t*& line, std::int32_t count);

/// A working image. `depth` is 16 where the cells as such are meant, the frame's depth where its limit
/// counts.
inline ImageView cellView(std::uint16_t* cells, std::int32_t step, std::int32_t width, std::int32_t height,
                          std::int32_t depth)
{
    return {reinterpret_cast<std::uint8_t*>(cells), step, width, height, depth};
}

} // namespace zor
