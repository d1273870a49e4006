#include "host/zorffc/Commands.h"

#include "host/frames/PgmWriter.h"
#include "host/frames/PngWriter.h"
#include "host/frames/TiffWriter.h"
#include "host/zorffc/AtomicFile.h"
#include "host/zorffc/CommandError.h"
#include "host/zorffc/FrameArguments.h"
#include "host/zorffc/OneLine.h"
#include "host/zorffc/Options.h"
#include "host/zorffc/Summary.h"

#include <memory>
#include <optional>
#include <string>

namespace zor {

namespace {

struct ConvertArguments
{
    FrameArguments frame;
    std::string output;
    std::uint32_t depth = 0; ///< of the picture; 0: the one that belongs to the frame
};

/// The picture as a file of the kind that the ending stands for.
std::string pictureBytes(const std::string& output, const std::string& ending, const _ZorImage& picture)
{
    try {
        if (ending == ".pgm")
            return pgmBytes(picture);
        return ending == ".png" ? pngBytes(picture) : tiffBytes(picture);
    } catch (const std::runtime_error& error) {
        throw CommandError(output + ": " + error.what());
    }
}

void convert(const ConvertArguments& arguments)
{
    refuseSameFile(arguments.frame.path, arguments.output);
    const std::string ending = requireEnding(arguments.output, {".png", ".tiff", ".tif", ".pgm"}, "OUT");
    AtomicFile output(arguments.output);

    const Frame frame = readFrame(arguments.frame);
    const MonoFrame mono =
        convertFrame(arguments.frame, frame,
                     arguments.depth == 0 ? std::nullopt : std::optional<std::uint32_t>(arguments.depth));
    output.write(pictureBytes(arguments.output, ending, mono.record()));
    printSummary(frameSummary(frame, mono) + "Picture          " + oneLine(arguments.output) + "\n");
    output.commit();
}

} // namespace

void addConvertCommand(CLI::App& app)
{
    const auto arguments = std::make_shared<ConvertArguments>();
    CLI::App* command = app.add_subcommand("convert", "Turns a frame into a grey picture file");
    addDumpArguments(*command, arguments->frame);
    command->add_option("OUT", arguments->output, "The .png, .tiff, .tif or .pgm file to write")
        ->required()
        ->type_name("FILE");
    addChoice(*command, "--depth", arguments->depth, {8, 10, 12, 16},
              "Bits of the picture's samples (default: the frame's own, 14 come down to 8)");
    command->callback([arguments] { convert(*arguments); });
}

} // namespace zor
