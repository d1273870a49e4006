#include "host/zorffc/FrameArguments.h"

#include "host/zorffc/CommandError.h"
#include "host/zorffc/Options.h"
#include "image/MonoTarget.h"

#include <limits>

namespace zor {

CLI::Option* addDumpArguments(CLI::App& command, FrameArguments& arguments)
{
    command.add_option("FRAME", arguments.path, "PGM, PPM, PNG or TIFF file, or a raw dump with --format")
        ->required()
        ->type_name("FILE");
    CLI::Option* format = command
                              .add_option("--format", arguments.format,
                                          "FRAME is a raw dump in this pixel format, like Mono12p")
                              ->type_name("NAME");
    CLI::Option* size = addSize(command, "--size", arguments.size, "Size of the raw dump in pixels");
    CLI::Option* pitch = addWhole(command, "--pitch", arguments.pitch,
                                  "Bytes from row to row of the raw dump (default: tight rows)");
    CLI::Option* order = addPackedOrder(command, arguments.packedOrder, "Where a Packed format has");
    format->needs(size);
    size->needs(format);
    pitch->needs(format);
    order->needs(format);
    command
        .add_option("--white-is-zero", arguments.whiteIsZero,
                    "Needed for a TIFF whose 0 is white: take the samples as they are (stored) or full scale "
                    "less the sample (inverted)")
        ->check(CLI::IsMember({"stored", "inverted"}))
        ->type_name("SAMPLES")
        ->excludes(format);
    return format;
}

void addFrameArguments(CLI::App& command, FrameArguments& arguments)
{
    CLI::Option* format = addDumpArguments(command, arguments);
    arguments.hasDepthOption = true;
    addChoice(command, "--depth", arguments.depth, {8, 10, 12, 16},
              "Significant bits of a sample, in place of what the file says")
        ->excludes(format);
}

Frame readFrame(const FrameArguments& arguments)
{
    if (arguments.path.empty())
        throw CommandError("FRAME: the file name is empty; name a file");

    FrameOptions options;
    options.depthIsOffered = arguments.hasDepthOption;
    if (arguments.depth != 0)
        options.depth = arguments.depth;
    if (arguments.whiteIsZero)
        options.whiteIsZero =
            *arguments.whiteIsZero == "inverted" ? WhiteIsZero::Inverted : WhiteIsZero::Stored;
    if (arguments.format) {
        RawLayout layout;
        layout.format = *arguments.format;
        layout.width = arguments.size.width;
        layout.height = arguments.size.height;
        if (arguments.pitch) {
            if (*arguments.pitch > std::numeric_limits<std::uint32_t>::max())
                throw CommandError("--pitch: " + std::to_string(*arguments.pitch) +
                                   " is too large; give the bytes from row to row");
            layout.pitch = static_cast<std::uint32_t>(*arguments.pitch);
        }
        layout.packedOrderRecord = arguments.packedOrder == "record";
        options.raw = layout;
    }
    return readFrame(arguments.path, options);
}

MonoFrame convertFrame(const FrameArguments& arguments, const Frame& frame,
                       std::optional<std::uint32_t> depth)
{
    try {
        const _ZorImage record = frame.record();
        return {record, computeFormat(depth.value_or(record.depth))};
    } catch (const std::runtime_error& error) {
        throw CommandError(arguments.path + ": " + error.what());
    }
}

} // namespace zor
