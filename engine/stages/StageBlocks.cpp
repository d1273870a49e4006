#include "engine/stages/StageBlocks.h"

#include "dialog/Message.h"
#include "engine/Allocation.h"

namespace zor {

std::uint16_t* allocateGainCodes(std::int32_t count)
{
    return static_cast<std::uint16_t*>(zorAllocate(static_cast<std::size_t>(count) * sizeof(std::uint16_t)));
}

bool renewLine(std::uint16_t*& line, std::int32_t count)
{
    zorRelease(line);
    line = static_cast<std::uint16_t*>(zorAllocate(static_cast<std::size_t>(count) * sizeof *line));
    // Decided before the box: its event loop may let a host run the whole correction, which makes the line.
    const bool made = line != nullptr;
    if (!made)
        showNotEnoughMemory();
    return made;
}

} // namespace zor
