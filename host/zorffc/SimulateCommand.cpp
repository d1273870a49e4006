#include "host/zorffc/Commands.h"

#include "host/frames/FormatName.h"
#include "host/frames/Pnm.h"
#include "host/frames/Raw.h"
#include "host/frames/encode/EncodeFrame.h"
#include "host/quality/NumberText.h"
#include "host/simulate/SimulatedFrame.h"
#include "host/zorffc/AtomicFile.h"
#include "host/zorffc/CommandError.h"
#include "host/zorffc/OneLine.h"
#include "host/zorffc/Options.h"
#include "host/zorffc/Summary.h"
#include "image/MonoTarget.h"

#include <memory>
#include <optional>
#include <string>

namespace zor {

namespace {

struct SimulateArguments
{
    SensorModel model;
    FrameSize size{model.width, model.height};
    std::string output;
    std::optional<std::string> format; ///< of a raw dump; nothing: a PGM file
    std::string packedOrder = "wire";
    std::optional<std::uint64_t> seed;
    bool noShotNoise = false;
};

SensorModel modelOf(const SimulateArguments& arguments)
{
    SensorModel model = arguments.model;
    model.width = arguments.size.width;
    model.height = arguments.size.height;
    model.seed = arguments.seed.value_or(model.seed);
    model.shotNoise = !arguments.noShotNoise;
    if (arguments.format)
        model.depth = pixelTypeSampleBits(formatByName("--format", *arguments.format).code);
    return model;
}

void check(const SensorModel& model)
{
    if (model.blackLevel >= model.saturation())
        throw CommandError("--black-level: " + fixedText(model.blackLevel, 0) + " leaves no room below " +
                           fixedText(model.saturation(), 0) + "; give a lower one or more bits");
    constexpr std::uint64_t mostPixels = std::uint64_t{1} << 28;
    if (std::uint64_t{model.width} * model.height > mostPixels)
        throw CommandError("--size: more than 268435456 pixels; give a smaller size");
}

/// The bytes of the file: a raw dump in the format that was named, else a PGM.
std::string fileBytes(const SimulateArguments& arguments, const SensorModel& model)
{
    const SampleImage scene{model.width, model.height, 1, simulateFrame(model)};
    if (!arguments.format)
        return pnmBytes(encodeFrame(scene, computeFormat(model.depth)).record());
    const Frame frame = encodeFrame(scene, formatByName("--format", *arguments.format).code);
    return rawBytes(frame.record(), arguments.packedOrder == "record");
}

/// The options with which another command reads the dump.
std::string readingOptions(const SimulateArguments& arguments)
{
    if (!arguments.format)
        return {};
    return ", to be read with --format " + *arguments.format + " --size " +
           std::to_string(arguments.size.width) + "x" + std::to_string(arguments.size.height) +
           (arguments.packedOrder == "wire" ? "" : " --packed-order " + arguments.packedOrder);
}

void simulate(const SimulateArguments& arguments)
{
    const SensorModel model = modelOf(arguments);
    if (arguments.format)
        requireEnding(arguments.output, {".raw", ".bin"});
    else
        requireEnding(arguments.output, {".pgm"});
    check(model);

    AtomicFile output(arguments.output);
    output.write(fileBytes(arguments, model));
    printSummary("Frame            " + std::to_string(model.width) + " x " + std::to_string(model.height) +
                 " pixels, " + std::to_string(model.depth) + " bits\n" + "Sensor           full well " +
                 fixedText(model.fullWell, 0) + " e-, system gain " + significantText(model.systemGain(), 5) +
                 " DN/e-, seed " + std::to_string(model.seed) + "\n" + "File             " +
                 oneLine(arguments.output) + readingOptions(arguments) + "\n");
    output.commit();
}

} // namespace

void addSimulateCommand(CLI::App& app)
{
    const auto arguments = std::make_shared<SimulateArguments>();
    SensorModel& model = arguments->model;
    CLI::App* command =
        app.add_subcommand("simulate", "Makes a flat frame after the linear camera model of EMVA 1288");
    command
        ->add_option("-o,--output", arguments->output,
                     "The .pgm file to write; with --format a .raw or .bin file")
        ->required()
        ->type_name("FILE");
    addSize(*command, "--size", arguments->size, "Size in pixels (default 1280x960)");
    CLI::Option* depth =
        addChoice(*command, "--depth", model.depth, {8, 10, 12, 16}, "Bits of a sample (default 12)");
    CLI::Option* format = command
                              ->add_option("--format", arguments->format,
                                           "Write a raw dump in this pixel format, like BayerRG12p")
                              ->type_name("NAME")
                              ->excludes(depth);
    addPackedOrder(*command, arguments->packedOrder, "Where a dump in a Packed format gets")->needs(format);
    addReal(*command, "--level", model.levelPercent, 0, 1000,
            "Light in the middle, % of what saturates (default 70)");
    addReal(*command, "--full-well", model.fullWell, 1, 1000000000,
            "Electrons at the highest grey value; sets shot noise and system gain (default 20000)");
    addReal(*command, "--vignetting", model.vignettingPercent, 0, 99,
            "Light lost in the corners, % (default 15)");
    addReal(*command, "--column-fpn", model.columnFpnPercent, 0, 100,
            "Standard deviation of the columns' gains, % (default 0.8)");
    addReal(*command, "--row-fpn", model.rowFpnPercent, 0, 100,
            "Standard deviation of the rows' gains, % (default 0.4)");
    addReal(*command, "--prnu", model.prnuPercent, 0, 100,
            "Standard deviation of the pixels' gains, % (default 0.5)");
    addReal(*command, "--dsnu", model.dsnu, 0, 1000000000,
            "Standard deviation of the pixels' dark signal, electrons (default 0)");
    addReal(*command, "--dark-noise", model.darkNoise, 0, 1000000000,
            "Temporal noise without light, electrons (default 8)");
    addReal(*command, "--black-level", model.blackLevel, 0, 65535,
            "Grey value without light, DN (default 0)");
    addFlag(*command, "--no-shot-noise", arguments->noShotNoise, "Let electrons arrive evenly");
    addWhole(*command, "--seed", arguments->seed, "Same seed, same frame (default 1)");
    command->callback([arguments] { simulate(*arguments); });
}

} // namespace zor
