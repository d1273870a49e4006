#include "host/frames/Raw.h"

#include "host/frames/Fail.h"
#include "host/frames/FileBytes.h"
#include "host/frames/FormatName.h"
#include "host/frames/FrameLimits.h"
#include "host/frames/PackedOrder.h"
#include "host/frames/RawRange.h"
#include "image/Pitch.h"

namespace zor {

Frame readRaw(const std::string& path, const FrameOptions::RawLayout& layout)
{
    Frame frame;
    frame.pixelType = formatByName(path, layout.format).code;
    frame.width = layout.width;
    frame.height = layout.height;
    frame.depthSource = "format " + layout.format;

    const std::uint64_t tight = tightPitch(frame.pixelType, frame.width);
    const std::uint64_t pitch = layout.pitch.value_or(tight);
    checkFrameSize(path, frame.width, frame.height, pitch);
    if (pitch < tight)
        failFrame(path, "a pitch of " + std::to_string(pitch) + " bytes is too small: a line of " +
                            std::to_string(frame.width) + " pixels in " + layout.format + " takes " +
                            std::to_string(tight) + "; give a larger --pitch or leave it out");
    frame.pitch = static_cast<std::uint32_t>(pitch);

    const std::uint64_t expected = pitch * frame.height;
    const std::uint64_t found = fileSize(path);
    if (found != expected)
        failFrame(path, std::to_string(frame.width) + "x" + std::to_string(frame.height) + " in " +
                            layout.format + " with a pitch of " + std::to_string(pitch) + " takes " +
                            std::to_string(expected) + " bytes, the file has " + std::to_string(found) +
                            "; check --size, --format and --pitch");
    frame.pixels = readBytes(path);

    if (!layout.packedOrderRecord)
        swapPackedOrder(frame);
    checkRawRange(path, frame);
    return frame;
}

} // namespace zor
