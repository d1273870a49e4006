#include "host/zorffc/Commands.h"

#include "host/quality/CorrectedFrame.h"
#include "host/quality/NumberText.h"
#include "host/zorffc/AtomicFile.h"
#include "host/zorffc/CommandError.h"
#include "host/zorffc/FfcFile.h"
#include "host/zorffc/FrameArguments.h"
#include "host/zorffc/FrameWarnings.h"
#include "host/zorffc/OneLine.h"
#include "host/zorffc/Options.h"
#include "host/zorffc/Summary.h"
#include "host/zorffc/report/DrawingApplication.h"
#include "host/zorffc/report/ReportPicture.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageWriter>

#include <algorithm>
#include <memory>
#include <string>

namespace zor {

namespace {

struct ReportArguments
{
    FrameArguments frame;
    std::string ffc;
    std::string output;
    std::uint32_t precision = 8;
};

void checkCount(const ReportArguments& arguments, const char* table, std::size_t entries, std::int32_t pixels)
{
    if (entries != static_cast<std::size_t>(pixels))
        throw CommandError(arguments.ffc + ": holds " + std::to_string(entries) + " " + table +
                           " entries where " + arguments.frame.path + " needs " + std::to_string(pixels) +
                           "; use the file that was computed for frames of this size");
}

/// The file does not state its precision; gains far from 1 show that the wrong one was given.
std::vector<std::string> precisionWarnings(const ReportArguments& arguments,
                                           std::vector<std::int32_t> columns)
{
    const auto middle = columns.begin() + static_cast<std::ptrdiff_t>(columns.size() / 2);
    std::nth_element(columns.begin(), middle, columns.end());
    const double gain = static_cast<double>(*middle) / static_cast<double>(1u << arguments.precision);
    if (arguments.precision == 8 && gain >= 8.0)
        return {"half of the column gains are " + fixedText(gain, 1) +
                " or more; was the file written with --precision 12?"};
    if (arguments.precision == 12 && gain <= 0.125)
        return {"half of the column gains are " + fixedText(gain, 3) +
                " or less; was the file written with --precision 8?"};
    return {};
}

QString fileName(const std::string& path)
{
    return QFileInfo(QString::fromStdString(path)).fileName();
}

/// The second line of the picture. The texts come from the user, so they are joined and never searched for
/// place marks.
QString details(const ReportArguments& arguments, const FfcFile& ffc, const MonoFrame& mono)
{
    const ConstImageView view = mono.view();
    const QString separator = QStringLiteral("   ·   ");
    return QStringLiteral("Camera ") + QString::fromStdString(ffc.camera) + separator +
           QStringLiteral("frame ") + fileName(arguments.frame.path) + QStringLiteral(", ") +
           QString::number(view.width) + QStringLiteral(" x ") + QString::number(view.height) +
           QStringLiteral(" pixels, ") + pixelTypeName(mono.pixelType()) + separator +
           QStringLiteral("gains ") + fileName(arguments.ffc) + QStringLiteral(", ") +
           QString::fromStdString(ffc.date) + QStringLiteral(", ") + QString::number(arguments.precision) +
           QStringLiteral(" fraction bits");
}

/// The picture as a PNG file. The application lives for the drawing alone.
QByteArray reportPng(const ReportData& data)
{
    const DrawingApplication application;
    QByteArray png;
    QBuffer buffer(&png);
    QImageWriter writer(&buffer, "PNG");
    if (!writer.write(drawReport(data)))
        throw CommandError("the picture cannot be made into a PNG file: " +
                           writer.errorString().toStdString());
    return png;
}

void report(const ReportArguments& arguments)
{
    refuseSameFile(arguments.frame.path, arguments.output);
    refuseSameFile(arguments.ffc, arguments.output);
    requireEnding(arguments.output, {".png"});
    AtomicFile output(arguments.output);

    const FfcFile ffc = readFfcFile(arguments.ffc);
    const Frame frame = readFrame(arguments.frame);
    const MonoFrame mono = convertFrame(arguments.frame, frame);
    checkCount(arguments, "column", ffc.columns.size(), mono.view().width);
    checkCount(arguments, "row", ffc.rows.size(), mono.view().height);
    const CorrectedFrame corrected(mono.view(), ffc.columns, ffc.rows,
                                   static_cast<std::uint8_t>(arguments.precision));

    const std::string columnGains = fileGainRange(ffc.columns, arguments.precision);
    const std::string rowGains = fileGainRange(ffc.rows, arguments.precision);
    const QByteArray png =
        reportPng({QStringLiteral("Flat field correction: ") + QString::fromStdString(ffc.title),
                   details(arguments, ffc, mono), QString::fromStdString(columnGains),
                   QString::fromStdString(rowGains), mono.view(), corrected.view()});
    output.write({png.constData(), static_cast<std::size_t>(png.size())});
    printSummary(frameSummary(frame, mono) + "Column gain      " + columnGains + " in the file\n" +
                 "Row gain         " + rowGains + " in the file\n" +
                 nonUniformitySummary(nonUniformity(mono.view()), nonUniformity(corrected.view())) +
                 "Picture          " + oneLine(arguments.output) + "\n");
    output.commit();
    printWarnings(arguments.ffc, precisionWarnings(arguments, ffc.columns));
    printWarnings(arguments.frame.path, limitWarnings(mono.view(), corrected.view(), frame.depthGuessed));
}

} // namespace

void addReportCommand(CLI::App& app)
{
    const auto arguments = std::make_shared<ReportArguments>();
    CLI::App* command = app.add_subcommand(
        "report", "Draws a frame before and after the correction by a .ffc file as a PNG picture");
    addFrameArguments(*command, arguments->frame);
    command->add_option("--ffc", arguments->ffc, "The .ffc file to apply")->required()->type_name("FILE");
    command->add_option("-o,--output", arguments->output, "The .png file to write")
        ->required()
        ->type_name("FILE");
    addPrecision(*command, arguments->precision);
    command->callback([arguments] { report(*arguments); });
}

} // namespace zor
