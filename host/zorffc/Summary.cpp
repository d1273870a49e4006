#include "host/zorffc/Summary.h"

#include "host/quality/NumberText.h"
#include "host/zorffc/CommandError.h"
#include "host/zorffc/OneLine.h"
#include "host/zorffc/StandardStreams.h"

#include <algorithm>
#include <cmath>
#include <iostream>

namespace zor {

namespace {

std::string padded(const std::string& text, std::size_t width)
{
    return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

} // namespace

std::string frameSummary(const Frame& frame, const MonoFrame& mono)
{
    std::string text = "Frame            " + std::to_string(frame.width) + " x " +
                       std::to_string(frame.height) + " pixels\n" + "Format           " +
                       pixelTypeName(frame.pixelType);
    if (!frame.depthSource.empty())
        text += " (depth from " + frame.depthSource + ")";
    if (mono.pixelType() != frame.pixelType)
        text += std::string(", brought to ") + pixelTypeName(mono.pixelType());
    return text + "\n";
}

std::string gainRange(const std::list<double>& gains)
{
    std::vector<double> numbers;
    std::copy_if(gains.begin(), gains.end(), std::back_inserter(numbers),
                 [](double gain) { return !std::isnan(gain); });
    if (numbers.empty())
        return "nan";
    const auto [least, most] = std::minmax_element(numbers.begin(), numbers.end());
    std::string text = fixedText(*least, 4) + " to " + fixedText(*most, 4);
    if (numbers.size() < gains.size())
        text += ", " + std::to_string(gains.size() - numbers.size()) + " nan";
    return text;
}

std::string fileGainRange(const std::vector<std::int32_t>& table, std::uint32_t fractionBits)
{
    std::list<double> gains;
    for (const std::int32_t entry : table)
        gains.push_back(std::ldexp(entry, -static_cast<int>(fractionBits)));
    return gainRange(gains);
}

std::string percentText(double percent)
{
    return std::isnan(percent) ? "nan" : fixedText(percent, 4) + " %";
}

std::string nonUniformitySummary(const NonUniformity& before, const NonUniformity& after)
{
    const auto line = [](const char* name, double first, double second) {
        return name + padded(percentText(first), 12) + padded(percentText(second), 12) + "\n";
    };
    return "Non-uniformity   " + padded("before", 12) + padded("after", 12) + "\n" +
           line("  column means   ", before.columns, after.columns) +
           line("  row means      ", before.rows, after.rows);
}

void printSummary(const std::string& text)
{
    if (writeOutput(text) != Delivery::Whole)
        throw CommandError("standard output: the summary cannot be written; nothing was saved");
}

void printWarnings(const std::string& file, const std::vector<std::string>& warnings)
{
    for (const std::string& warning : warnings)
        std::cerr << "zorffc: warning: " << oneLine(file + ": " + warning) << "\n";
}

} // namespace zor
