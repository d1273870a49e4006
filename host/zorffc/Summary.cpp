#include "host/zorffc/Summary.h"

#include "host/zorffc/CommandError.h"
#include "host/zorffc/Numbers.h"

#include <algorithm>
#include <cmath>
#include <iostream>

namespace zor {

namespace {

std::string padded(const std::string& text, std::size_t width)
{
    return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

std::string counted(std::ptrdiff_t count, const char* noun)
{
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

/// Entries whose column or row has a mean of 0: the division leaves no finite gain.
std::ptrdiff_t countDark(const std::list<double>& gains)
{
    return std::count_if(gains.begin(), gains.end(), [](double gain) { return !std::isfinite(gain); });
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

std::vector<std::string> frameWarnings(const ConstImageView& frame, const FrameGains& gains)
{
    // A few stuck pixels are normal; more than this and the scene is too bright.
    constexpr double tolerableSaturation = 0.001;
    std::vector<std::string> warnings;
    const double saturated = saturatedShare(frame);
    if (saturated > tolerableSaturation)
        warnings.push_back(fixedText(saturated * 100.0, 1) +
                           " % of the pixels are saturated; take the frame with less light or exposure");

    const std::ptrdiff_t columns = countDark(gains.columns);
    const std::ptrdiff_t rows = countDark(gains.rows);
    if (columns > 0)
        warnings.push_back(counted(columns, "column") + " without light; the gain there is no finite number");
    if (rows > 0)
        warnings.push_back(counted(rows, "row") + " without light; the gain there is no finite number");
    return warnings;
}

void printSummary(const std::string& text)
{
    std::cout << text << std::flush;
    if (!std::cout)
        throw CommandError("standard output: the summary cannot be written; nothing was saved");
}

void printWarning(const std::string& text)
{
    std::cerr << "zorffc: warning: " << text << "\n";
}

} // namespace zor
