#include "host/zorffc/Commands.h"

#include "host/quality/CorrectedFrame.h"
#include "host/quality/FrameGains.h"
#include "host/zorffc/AtomicFile.h"
#include "host/zorffc/FfcFile.h"
#include "host/zorffc/FrameArguments.h"
#include "host/zorffc/FrameWarnings.h"
#include "host/zorffc/OneLine.h"
#include "host/zorffc/Options.h"
#include "host/zorffc/Summary.h"

#include <memory>

namespace zor {

namespace {

struct ComputeArguments
{
    FrameArguments frame;
    std::string title;
    std::string camera;
    std::string output;
    std::uint32_t precision = 8;
    double normalize = 1.0;
    bool mean = false;
};

void compute(const ComputeArguments& arguments)
{
    checkHeaderText("--title", arguments.title);
    checkHeaderText("--camera", arguments.camera);
    refuseSameFile(arguments.frame.path, arguments.output);
    requireEnding(arguments.output, {".ffc"});
    AtomicFile output(arguments.output);

    const Frame frame = readFrame(arguments.frame);
    const MonoFrame mono = convertFrame(arguments.frame, frame);
    GainRule rule;
    rule.normalize = !arguments.mean;
    rule.normalizeValue = arguments.normalize;
    const FrameGains gains = computeFrameGains(mono.view(), mono.bytes(), rule);

    const auto fractionBits = static_cast<std::uint8_t>(arguments.precision);
    const std::vector<std::int32_t> columns = coefficientTable(gains.columns, fractionBits);
    const std::vector<std::int32_t> rows = coefficientTable(gains.rows, fractionBits);
    const CorrectedFrame corrected(mono.view(), columns, rows, fractionBits);

    output.write(ffcFileText(arguments.title, arguments.camera, currentFfcDate(), gains.columns, gains.rows,
                             fractionBits));

    // The summary comes first, so that a run which cannot print its result leaves the target as it was.
    printSummary(frameSummary(frame, mono) + "Column gain      " + gainRange(gains.columns) + " computed, " +
                 fileGainRange(columns, arguments.precision) + " in the file\n" + "Row gain         " +
                 gainRange(gains.rows) + " computed, " + fileGainRange(rows, arguments.precision) +
                 " in the file\n" +
                 nonUniformitySummary(nonUniformity(mono.view()), nonUniformity(corrected.view())) +
                 "File             " + oneLine(arguments.output) + ": " +
                 std::to_string(gains.columns.size()) + " column and " + std::to_string(gains.rows.size()) +
                 " row entries with " + std::to_string(arguments.precision) + " fraction bits\n");
    output.commit();
    printWarnings(arguments.frame.path, frameWarnings(mono.view()));
    printWarnings(arguments.frame.path, gainWarnings(mono.view(), gains, fractionBits));
    printWarnings(arguments.frame.path, limitWarnings(mono.view(), corrected.view(), frame.depthGuessed));
}

} // namespace

void addComputeCommand(CLI::App& app)
{
    const auto arguments = std::make_shared<ComputeArguments>();
    CLI::App* command =
        app.add_subcommand("compute", "Computes the gains of a flat frame and writes a .ffc file");
    addFrameArguments(*command, arguments->frame);
    command->add_option("--title", arguments->title, "Title in the file's header")->required();
    command->add_option("--camera", arguments->camera, "Camera in the file's header")->required();
    command->add_option("-o,--output", arguments->output, "The .ffc file to write")
        ->required()
        ->type_name("FILE");
    addPrecision(*command, arguments->precision);

    CLI::Option* normalize =
        addFactor(*command, "--normalize", arguments->normalize,
                  "Aim at V times the mean of the brightest column, then of the brightest row, so at V * V "
                  "times the level (default 1)");
    addFlag(*command, "--mean", arguments->mean, "Aim at the mean of the column and row means")
        ->excludes(normalize);
    command->callback([arguments] { compute(*arguments); });
}

} // namespace zor
