#include "host/frames/Raw.h"

#include "host/frames/Fail.h"
#include "host/frames/FileBytes.h"
#include "host/frames/FrameSize.h"
#include "host/frames/PackedOrder.h"
#include "host/frames/RawRange.h"
#include "image/LineBytes.h"
#include "image/ZorPixelTypeTable.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace zor {

namespace {

bool equalButForCase(const std::string& left, const std::string& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); });
}

[[noreturn]] void failUnknownFormat(const std::string& path, const std::string& name)
{
    std::string monoNames;
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable) {
        if (equalButForCase(row.name, name))
            failFrame(path, "there is no pixel format '" + name + "'; did you mean '" + row.name + "'?");
        if (pixelTypeFamily(row.code) == PixelFamily::Mono)
            monoNames += (monoNames.empty() ? "" : ", ") + std::string(row.name);
    }
    failFrame(path,
              "there is no pixel format '" + name + "'; the grey ones are " + monoNames +
                  ", the others are named as the camera's PixelFormat feature shows them (BayerRG12p, RGB8)");
}

std::uint32_t formatCode(const std::string& path, const std::string& name)
{
    const auto row =
        std::find_if(std::begin(ZorPixelTypeTable), std::end(ZorPixelTypeTable),
                     [&name](const ZorPixelTypeRow& candidate) { return candidate.name == name; });
    if (row == std::end(ZorPixelTypeTable))
        failUnknownFormat(path, name);
    return row->code;
}

} // namespace

Frame readRaw(const std::string& path, const FrameOptions::RawLayout& layout)
{
    Frame frame;
    frame.pixelType = formatCode(path, layout.format);
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
