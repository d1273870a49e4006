#include "host/zorffc/Commands.h"

#include "host/frames/WriteFrame.h"
#include "host/zorffc/AtomicFile.h"
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
    bool stretch = false;    ///< to all bits of the picture's samples
};

/// The depth of the picture; nothing: the one that belongs to the frame.
std::optional<std::uint32_t> pictureDepth(const ConvertArguments& arguments, const Frame& frame)
{
    if (arguments.stretch)
        return frame.record().depth > 8 ? 16 : 8;
    return arguments.depth == 0 ? std::nullopt : std::optional<std::uint32_t>(arguments.depth);
}

/// Samples of 10 and 12 bits take two bytes. The maxval of a PGM says so to every viewer, the entries of the
/// other kinds do not.
std::string darknessNote(const std::string& ending, std::uint32_t depth)
{
    if (ending == ".pgm" || depth == 8 || depth == 16)
        return {};
    return ": " + std::to_string(depth) +
           " bits in samples of 16, nearly black in most viewers; --stretch "
           "makes a bright one";
}

void convert(const ConvertArguments& arguments)
{
    refuseSameFile(arguments.frame.path, arguments.output);
    const std::string ending = requireEnding(arguments.output, {".png", ".tiff", ".tif", ".pgm"}, "OUT");
    AtomicFile output(arguments.output);

    const Frame frame = readFrame(arguments.frame);
    const MonoFrame mono = convertFrame(arguments.frame, frame, pictureDepth(arguments, frame));
    output.write(frameFileBytes(arguments.output, mono.record()));
    printSummary(frameSummary(frame, mono) + "Picture          " + oneLine(arguments.output) +
                 darknessNote(ending, mono.record().depth) + "\n");
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
    CLI::Option* depth =
        addChoice(*command, "--depth", arguments->depth, {8, 10, 12, 16},
                  "Bits of the picture's samples (default: the frame's own, 14 come down to 8)");
    addFlag(
        *command, "--stretch", arguments->stretch,
        "Bring samples of more than 8 bits to the full scale of 16, so that every viewer shows the frame as "
        "bright as it is")
        ->excludes(depth);
    command->callback([arguments] { convert(*arguments); });
}

} // namespace zor
