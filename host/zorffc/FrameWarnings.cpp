#include "host/zorffc/FrameWarnings.h"

#include "engine/CellImage.h"
#include "host/quality/NonUniformity.h"
#include "host/zorffc/Numbers.h"

#include <algorithm>
#include <cmath>

namespace zor {

namespace {

/// A few stuck pixels are normal; a larger share than this tells of the whole frame.
constexpr double TolerableShare = 0.001;

std::string counted(std::ptrdiff_t count, const std::string& noun)
{
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string percent(double share)
{
    return fixedText(share * 100.0, 1) + " %";
}

std::ptrdiff_t countDark(const std::vector<double>& means)
{
    return std::count(means.begin(), means.end(), 0.0);
}

void addGainWarnings(std::vector<std::string>& warnings, const std::string& noun,
                     const std::list<double>& gains, const std::vector<double>& means,
                     std::uint8_t fractionBits)
{
    const double beyond = std::ldexp(1.0, 31 - fractionBits);
    std::ptrdiff_t endless = 0;
    std::ptrdiff_t large = 0;
    auto mean = means.begin();
    for (const double gain : gains) {
        endless += !std::isfinite(gain) && *mean != 0.0;
        large += std::isfinite(gain) && std::abs(gain) >= beyond;
        ++mean;
    }
    if (endless > 0)
        warnings.push_back(counted(endless, noun + " gain") +
                           " no finite number although there is light in the frame; choose another target "
                           "with --normalize or --mean");
    if (large > 0)
        warnings.push_back(counted(large, noun + " gain") + " of " + fixedText(beyond, 0) +
                           " or more, which wrap in the file's 32-bit values; choose a lower target with "
                           "--normalize or --mean");
}

} // namespace

std::vector<std::string> frameWarnings(const ConstImageView& frame)
{
    std::vector<std::string> warnings;
    const double saturated = saturatedShare(frame);
    if (saturated > TolerableShare)
        warnings.push_back(percent(saturated) +
                           " of the pixels are saturated; take the frame with less light or exposure");
    const std::ptrdiff_t columns = countDark(columnMeans(frame));
    const std::ptrdiff_t rows = countDark(rowMeans(frame));
    const std::string advice = " without light, where no gain helps; light the whole frame";
    if (columns > 0)
        warnings.push_back(counted(columns, "column") + advice);
    if (rows > 0)
        warnings.push_back(counted(rows, "row") + advice);
    return warnings;
}

std::vector<std::string> gainWarnings(const ConstImageView& frame, const FrameGains& gains,
                                      std::uint8_t fractionBits)
{
    std::vector<std::string> warnings;
    addGainWarnings(warnings, "column", gains.columns, columnMeans(frame), fractionBits);
    addGainWarnings(warnings, "row", gains.rows, rowMeans(frame), fractionBits);
    return warnings;
}

std::vector<std::string> limitWarnings(const ConstImageView& frame, const ConstImageView& corrected)
{
    const double limited = newlySaturatedShare(frame, corrected);
    if (limited <= TolerableShare)
        return {};
    return {percent(limited) + " of the pixels are limited to " +
            std::to_string(saturationLimit(frame.depth)) +
            " by the correction, which hides what is left of the pattern; aim lower with compute --normalize "
            "or take the frame with less light"};
}

} // namespace zor
