#include "host/zorffc/Commands.h"

#include "host/quality/CorrectedFrame.h"
#include "host/zorffc/AtomicFile.h"
#include "host/zorffc/CommandError.h"
#include "host/zorffc/FfcFile.h"
#include "host/zorffc/FrameArguments.h"
#include "host/zorffc/Options.h"
#include "host/zorffc/ReportPicture.h"
#include "host/zorffc/Summary.h"

#include <QApplication>
#include <QBuffer>
#include <QFileInfo>

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

/// The file does not tell its precision; gains far from 1 tell that the wrong one was given.
void checkPrecision(const ReportArguments& arguments, std::vector<std::int32_t> columns)
{
    const auto middle = columns.begin() + static_cast<std::ptrdiff_t>(columns.size() / 2);
    std::nth_element(columns.begin(), middle, columns.end());
    const double gain = static_cast<double>(*middle) / static_cast<double>(1u << arguments.precision);
    if (arguments.precision == 8 && gain >= 8.0)
        printWarning(arguments.ffc + ": half of the column gains are " + fixedText(gain, 1) +
                     " or more; was the file written with --precision 12?");
    if (arguments.precision == 12 && gain <= 0.125)
        printWarning(arguments.ffc + ": half of the column gains are " + fixedText(gain, 3) +
                     " or less; was the file written with --precision 8?");
}

QString fileName(const std::string& path)
{
    return QFileInfo(QString::fromStdString(path)).fileName();
}

/// Qt's remarks on the desktop around it say nothing about the picture.
void dropRemarks(QtMsgType, const QMessageLogContext&, const QString&) {}

/// The picture as a PNG file. The application lives for the drawing alone and never looks for a screen.
QByteArray reportPng(const ReportData& data)
{
    char program[] = "zorffc";
    char option[] = "-platform";
    char platform[] = "offscreen";
    char* arguments[] = {program, option, platform, nullptr};
    int count = 3;
    qInstallMessageHandler(dropRemarks);
    const QApplication application(count, arguments);

    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (!drawReport(data).save(&buffer, "PNG"))
        throw CommandError("the picture cannot be made into a PNG file; Qt's PNG support is missing");
    return png;
}

void report(const ReportArguments& arguments)
{
    refuseSameFile(arguments.frame.path, arguments.output);
    refuseSameFile(arguments.ffc, arguments.output);
    requireEnding(arguments.output, ".png");

    const FfcFile ffc = readFfcFile(arguments.ffc);
    const Frame frame = readFrame(arguments.frame);
    const MonoFrame mono = convertFrame(arguments.frame, frame);
    checkCount(arguments, "column", ffc.columns.size(), mono.view().width);
    checkCount(arguments, "row", ffc.rows.size(), mono.view().height);
    checkPrecision(arguments, ffc.columns);
    const CorrectedFrame corrected(mono.view(), ffc.columns, ffc.rows,
                                   static_cast<std::uint8_t>(arguments.precision));

    AtomicFile output(arguments.output);
    const QByteArray png = reportPng(
        {QStringLiteral("Flat field correction: ") + QString::fromStdString(ffc.title),
         QStringLiteral("Camera %1   ·   frame %2, %3 x %4 pixels, %5   ·   gains %6, %7, %8 fraction bits")
             .arg(QString::fromStdString(ffc.camera), fileName(arguments.frame.path))
             .arg(frame.width)
             .arg(frame.height)
             .arg(pixelTypeName(mono.pixelType()))
             .arg(fileName(arguments.ffc), QString::fromStdString(ffc.date))
             .arg(arguments.precision),
         mono.view(), corrected.view()});
    output.write({png.constData(), static_cast<std::size_t>(png.size())});
    printSummary(frameSummary(frame, mono) +
                 nonUniformitySummary(nonUniformity(mono.view()), nonUniformity(corrected.view())) +
                 "Picture          " + arguments.output + "\n");
    output.commit();
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
