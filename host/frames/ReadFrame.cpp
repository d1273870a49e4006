#include "host/frames/DepthRule.h"
#include "host/frames/Fail.h"
#include "host/frames/FileBytes.h"
#include "host/frames/Png.h"
#include "host/frames/Pnm.h"
#include "host/frames/Raw.h"
#include "host/frames/Tiff.h"

#include <new>
#include <string_view>

namespace zor {

namespace {

using namespace std::string_view_literals;

StoredSamples readPicture(const std::string& path, const FrameOptions& options)
{
    const std::vector<std::uint8_t> bytes = readStart(path, 8);
    const std::string_view start(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const auto startsWith = [start](std::string_view magic) {
        return start.substr(0, magic.size()) == magic;
    };

    if (startsWith("II*\0"sv) || startsWith("MM\0*"sv) || startsWith("II+\0"sv) || startsWith("MM\0+"sv))
        return readTiff(path, options.whiteIsZero);
    const bool pnm = startsWith("P2"sv) || startsWith("P3"sv) || startsWith("P5"sv) || startsWith("P6"sv);
    const bool png = startsWith("\x89PNG\r\n\x1a\n"sv);
    if ((pnm || png) && options.whiteIsZero)
        failFrame(path, "is no TIFF file, so that its 0 is black; leave --white-is-zero out");
    if (pnm)
        return readPnm(path);
    if (png)
        return readPng(path, options.depth);
    if (start.size() >= 2 && start[0] == 'P' && start[1] >= '1' && start[1] <= '7')
        failFrame(path,
                  "is a bitmap or PAM file of the PNM family; save it as PGM or PPM (P2, P3, P5 or P6)");
    throw NoPicture(
        path +
        ": is no PGM, PPM, PNG or TIFF file; save it as one, or give --format and --size for a raw dump");
}

void checkOptions(const std::string& path, const FrameOptions& options)
{
    if (options.raw && options.whiteIsZero)
        failFrame(path, "a raw dump's 0 is black; leave --white-is-zero out");
    if (!options.depth)
        return;
    if (options.raw)
        failFrame(path, "a raw dump's format gives its depth; leave --depth out");
    if (depthForBits(*options.depth) != *options.depth)
        failFrame(path, "the depth " + std::to_string(*options.depth) +
                            " is none that a frame can have; give 8, 10, 12 or 16");
}

} // namespace

Frame readFrame(const std::string& path, const FrameOptions& options)
{
    checkOptions(path, options);
    try {
        if (options.raw)
            return readRaw(path, *options.raw);
        return frameFromSamples(path, readPicture(path, options), options);
    } catch (const std::bad_alloc&) {
        failFrame(path, "there is not enough memory for a frame of this size; use a smaller frame or close "
                        "other programs");
    }
}

} // namespace zor
