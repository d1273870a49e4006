#include "host/zorffc/FrameWarnings.h"

#include "engine/CellImage.h"
#include "host/quality/NonUniformity.h"
#include "host/quality/NumberText.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace zor {

namespace {

/// A few stuck pixels are normal; a larger share than this is about the whole frame.
constexpr double TolerableShare = 0.001;

/// A quarter of the smallest step of a gain in a file of 8 fraction bits.
constexpr double TolerableError = 0.001;

/// The mean of a flat frame, as a share of full scale, from which on its gains are worth something. What a
/// covered lens leaves is below: black levels lie up to 16 of 255.
constexpr double DarkShare = 0.1;

std::string percent(double share)
{
    return fixedText(share * 100.0, 1) + " %";
}

double meanOf(const std::vector<double>& values)
{
    return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

/// Samples of 12 bits in words of 16 look dark, too, when nobody says what they are.
std::string fewerBitsAdvice(std::int32_t depth)
{
    return depth == 16 ? ", or say with --depth or --format that its samples have fewer than 16 bits" : "";
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
        warnings.push_back(countText(endless, noun + " gain") + (endless == 1 ? " is" : " are") +
                           " no finite number although there is light in the frame; choose another target "
                           "with --normalize or --mean");
    if (large > 0)
        warnings.push_back(countText(large, noun + " gain") + (large == 1 ? " is " : " are ") +
                           fixedText(beyond, 0) +
                           " or more, which wraps in the file's 32-bit values; choose a "
                           "lower target with --normalize or --mean");
}

} // namespace

std::vector<std::string> frameWarnings(const ConstImageView& frame)
{
    const double mean = meanOf(columnMeans(frame));
    if (mean == 0.0)
        return {"the frame is black, so every value in the file is 0; uncover the lens and light the scene"};

    std::vector<std::string> warnings;
    const double share = mean / saturationLimit(frame.depth);
    if (share < DarkShare)
        warnings.push_back("the frame is nearly dark: its mean of " + fixedText(mean, 1) + " is " +
                           percent(share) + " of full scale; uncover the lens or give it more light, " +
                           fixedText(DarkShare * 100.0, 0) + " % at least" + fewerBitsAdvice(frame.depth));
    const double saturated = saturatedShare(frame);
    if (saturated > TolerableShare)
        warnings.push_back(percent(saturated) +
                           " of the pixels are saturated; take the frame with less light or exposure");
    const std::ptrdiff_t columns = countDark(columnMeans(frame));
    const std::ptrdiff_t rows = countDark(rowMeans(frame));
    const std::string advice = " without light, where no gain helps; light the whole frame";
    if (columns > 0)
        warnings.push_back(countText(columns, "column") + advice);
    if (rows > 0)
        warnings.push_back(countText(rows, "row") + advice);
    return warnings;
}

std::vector<std::string> gainWarnings(const ConstImageView& frame, const FrameGains& gains,
                                      std::uint8_t fractionBits)
{
    std::vector<std::string> warnings;
    addGainWarnings(warnings, "column", gains.columns, columnMeans(frame), fractionBits);
    addGainWarnings(warnings, "row", gains.rows, rowMeans(frame), fractionBits);
    if (gains.rowError > TolerableError)
        warnings.push_back("row gains are up to " + percent(gains.rowError) +
                           " off, because values above half of 16 bits wrap in the working image; bring the "
                           "frame to fewer bits with convert --depth " +
                           std::to_string(frame.depth == 16 ? 12 : 10) +
                           ", exact for left-aligned samples, or take it with less light");
    return warnings;
}

std::vector<std::string> limitWarnings(const ConstImageView& frame, const ConstImageView& corrected,
                                       bool depthGuessed)
{
    const double limited = newlySaturatedShare(frame, corrected);
    if (limited <= TolerableShare)
        return {};
    const std::string depthAdvice =
        depthGuessed ? "give --depth, because the depth is guessed from the largest sample, " : "";
    return {percent(limited) + " of the pixels are limited to " +
            std::to_string(saturationLimit(frame.depth)) +
            " by the correction, which hides what is left of the pattern; " + depthAdvice +
            "aim lower with compute --normalize V, which acts on columns and on rows, so as V * V on the "
            "level, or take the frame with less light"};
}

} // namespace zor
