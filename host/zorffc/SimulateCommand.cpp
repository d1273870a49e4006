#include "host/zorffc/Commands.h"

#include "host/zorffc/AtomicFile.h"
#include "host/zorffc/CommandError.h"
#include "host/zorffc/Options.h"
#include "host/zorffc/SensorModel.h"
#include "host/zorffc/Summary.h"

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
    std::optional<std::uint64_t> seed;
    bool noShotNoise = false;
};

/// A binary PGM: one byte a sample up to 255, else two, the high one first.
std::string pgmText(const SensorModel& model, const std::vector<std::uint16_t>& frame)
{
    const bool wide = model.depth > 8;
    std::string text = "P5\n" + std::to_string(model.width) + " " + std::to_string(model.height) + "\n" +
                       fixedText(model.saturation(), 0) + "\n";
    text.reserve(text.size() + frame.size() * (wide ? 2 : 1));
    for (const std::uint16_t sample : frame) {
        if (wide)
            text.push_back(static_cast<char>(sample >> 8));
        text.push_back(static_cast<char>(sample & 0xFF));
    }
    return text;
}

void simulate(const SimulateArguments& arguments)
{
    SensorModel model = arguments.model;
    model.width = arguments.size.width;
    model.height = arguments.size.height;
    model.seed = arguments.seed.value_or(model.seed);
    model.shotNoise = !arguments.noShotNoise;
    requireEnding(arguments.output, {".pgm"});
    if (model.blackLevel >= model.saturation())
        throw CommandError("--black-level: " + fixedText(model.blackLevel, 0) + " leaves no room below " +
                           fixedText(model.saturation(), 0) + "; give a lower one or a larger --depth");
    constexpr std::uint64_t mostPixels = std::uint64_t{1} << 28;
    if (std::uint64_t{model.width} * model.height > mostPixels)
        throw CommandError("--size: more than 268435456 pixels; give a smaller size");

    AtomicFile output(arguments.output);
    output.write(pgmText(model, simulateFrame(model)));
    printSummary("Frame            " + std::to_string(model.width) + " x " + std::to_string(model.height) +
                 " pixels, " + std::to_string(model.depth) + " bits\n" + "Sensor           full well " +
                 fixedText(model.fullWell, 0) + " e-, system gain " + significantText(model.systemGain(), 5) +
                 " DN/e-, seed " + std::to_string(model.seed) + "\n" + "File             " +
                 arguments.output + "\n");
    output.commit();
}

} // namespace

void addSimulateCommand(CLI::App& app)
{
    const auto arguments = std::make_shared<SimulateArguments>();
    SensorModel& model = arguments->model;
    CLI::App* command =
        app.add_subcommand("simulate", "Makes a flat frame after the linear camera model of EMVA 1288");
    command->add_option("-o,--output", arguments->output, "The .pgm file to write")
        ->required()
        ->type_name("FILE");
    addSize(*command, "--size", arguments->size, "Size in pixels (default 1280x960)");
    addChoice(*command, "--depth", model.depth, {8, 10, 12, 16}, "Bits of a sample (default 12)");
    addReal(*command, "--level", model.levelPercent, 0.0, 1000.0,
            "Light in the middle, % of what saturates (default 70)");
    addReal(*command, "--full-well", model.fullWell, 1.0, 1e9,
            "Electrons at the highest grey value; sets shot noise and system gain (default 20000)");
    addReal(*command, "--vignetting", model.vignettingPercent, 0.0, 99.0,
            "Light lost in the corners, % (default 15)");
    addReal(*command, "--column-fpn", model.columnFpnPercent, 0.0, 100.0,
            "Standard deviation of the columns' gains, % (default 0.8)");
    addReal(*command, "--row-fpn", model.rowFpnPercent, 0.0, 100.0,
            "Standard deviation of the rows' gains, % (default 0.4)");
    addReal(*command, "--prnu", model.prnuPercent, 0.0, 100.0,
            "Standard deviation of the pixels' gains, % (default 0.5)");
    addReal(*command, "--dsnu", model.dsnu, 0.0, 1e9,
            "Standard deviation of the pixels' dark signal, electrons (default 0)");
    addReal(*command, "--dark-noise", model.darkNoise, 0.0, 1e9,
            "Temporal noise without light, electrons (default 8)");
    addReal(*command, "--black-level", model.blackLevel, 0.0, 65535.0,
            "Grey value without light, DN (default 0)");
    addFlag(*command, "--no-shot-noise", arguments->noShotNoise, "Let electrons arrive evenly");
    addWhole(*command, "--seed", arguments->seed, "Same seed, same frame (default 1)");
    command->callback([arguments] { simulate(*arguments); });
}

} // namespace zor
