#include "host/quality/Judgement.h"

#include "engine/CellImage.h"
#include "engine/Profiles.h"
#include "host/quality/NonUniformity.h"
#include "host/quality/NumberText.h"

#include <algorithm>

namespace zor {

namespace {

DarkestMean darkestOf(const std::vector<double>& means)
{
    const auto darkest = std::min_element(means.begin(), means.end());
    return {static_cast<std::int32_t>(darkest - means.begin()), *darkest};
}

std::int32_t withoutLight(const std::vector<double>& means)
{
    return static_cast<std::int32_t>(std::count(means.begin(), means.end(), 0.0));
}

std::string limitText(double percent)
{
    return significantText(percent, 3) + " %";
}

using Reasons = std::vector<JudgementReason>;

/// A red figure is red whatever the limit for amber is.
Verdict worseOf(bool isAmber, bool isRed)
{
    if (isRed)
        return Verdict::Red;
    return isAmber ? Verdict::Amber : Verdict::Green;
}

void add(Reasons& reasons, JudgementReason::Code code, Verdict level, const std::string& text)
{
    if (level != Verdict::Green)
        reasons.push_back({code, level, text});
}

void addSaturated(Reasons& reasons, double percent, const JudgementLimits& limits)
{
    add(reasons, JudgementReason::Saturated,
        worseOf(percent >= limits.saturatedAmber, percent >= limits.saturatedRed),
        fixedText(percent, 2) + " % of the pixels are saturated; take the frame with less light or exposure");
}

void addDark(Reasons& reasons, double percent, const JudgementLimits& limits)
{
    add(reasons, JudgementReason::Dark, worseOf(percent < limits.darkAmber, percent < limits.darkRed),
        "the mean is " + fixedText(percent, 1) +
            " % of full scale; uncover the lens or give the frame more light, " +
            limitText(limits.darkAmber) + " at least");
}

void addBright(Reasons& reasons, double percent, const JudgementLimits& limits)
{
    add(reasons, JudgementReason::Bright, worseOf(percent > limits.brightAmber, false),
        "the mean is " + fixedText(percent, 1) +
            " % of full scale; take the frame with less light or exposure, " + limitText(limits.brightAmber) +
            " at most");
}

void addWithoutLight(Reasons& reasons, JudgementReason::Code code, const std::string& noun,
                     std::int32_t count, std::int32_t first)
{
    add(reasons, code, worseOf(false, count > 0),
        countText(count, noun) + " without light, where no gain helps, the first is " + noun + " " +
            std::to_string(first) + "; light the whole frame");
}

} // namespace

FrameFigures frameFigures(const ConstImageView& frame)
{
    constexpr double percent = 100.0;
    std::uint64_t sum = 0;
    std::vector<double> rows(static_cast<std::size_t>(frame.height));
    for (std::int32_t y = 0; y < frame.height; ++y) {
        const std::uint64_t row = rowSum(frame, y);
        rows[static_cast<std::size_t>(y)] = static_cast<double>(row) / frame.width;
        sum += row;
    }
    const std::vector<double> columns = columnMeans(frame);
    const double pixels = static_cast<double>(frame.width) * frame.height;

    // One division each, so that a figure that is at a limit compares as equal.
    FrameFigures figures;
    figures.saturatedPercent = percent * static_cast<double>(saturatedPixels(frame)) / pixels;
    figures.meanPercent = percent * static_cast<double>(sum) / (pixels * saturationLimit(frame.depth));
    figures.darkestColumn = darkestOf(columns);
    figures.darkestRow = darkestOf(rows);
    figures.columnsWithoutLight = withoutLight(columns);
    figures.rowsWithoutLight = withoutLight(rows);
    figures.columnVariation = variationPercent(columns);
    figures.rowVariation = variationPercent(rows);
    return figures;
}

Judgement judge(const FrameFigures& figures, const JudgementLimits& limits)
{
    Judgement judgement;
    Reasons& reasons = judgement.reasons;
    addSaturated(reasons, figures.saturatedPercent, limits);
    addDark(reasons, figures.meanPercent, limits);
    addBright(reasons, figures.meanPercent, limits);
    addWithoutLight(reasons, JudgementReason::ColumnsWithoutLight, "column", figures.columnsWithoutLight,
                    figures.darkestColumn.index);
    addWithoutLight(reasons, JudgementReason::RowsWithoutLight, "row", figures.rowsWithoutLight,
                    figures.darkestRow.index);
    std::stable_sort(reasons.begin(), reasons.end(),
                     [](const auto& one, const auto& other) { return one.level > other.level; });
    if (!reasons.empty())
        judgement.verdict = reasons.front().level;
    return judgement;
}

} // namespace zor
