#include "host/frames/Raw.h"

#include "host/frames/Fail.h"
#include "host/frames/FileBytes.h"
#include "host/frames/FormatName.h"
#include "host/frames/FrameLimits.h"
#include "host/frames/PackedOrder.h"
#include "host/frames/RawRange.h"
#include "image/Pitch.h"

namespace zor {

Frame readRaw(const std::string& path, const RawLayout& layout)
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
    if (const auto problem = sampleAboveDepth(frame.record()))
        failFrame(path, *problem + "; check --format, --size and --pitch");
    return frame;
}

std::string rawBytes(const _ZorImage& frame, bool packedOrderRecord)
{
    Frame dump;
    dump.pixelType = frame.pixelType;
    dump.width = frame.width;
    dump.height = frame.height;
    dump.pitch = static_cast<std::uint32_t>(tightPitch(frame.pixelType, frame.width));
    dump.pixels.reserve(std::size_t{dump.pitch} * dump.height);
    for (std::uint32_t y = 0; y < frame.height; ++y) {
        const std::uint8_t* row = frame.data + std::size_t{y} * frame.pitch;
        dump.pixels.insert(dump.pixels.end(), row, row + dump.pitch);
    }
    if (!packedOrderRecord)
        swapPackedOrder(dump);
    return {dump.pixels.begin(), dump.pixels.end()};
}

} // namespace zor
