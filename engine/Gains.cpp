#include "engine/Gains.h"

#include "engine/FixedPoint.h"
#include "engine/Profiles.h"

#include <algorithm>
#include <iterator>

namespace zor {
namespace {

/// The means of one direction while they are gathered.
struct MeanTally
{
    double peak = 0.0;
    double total = 0.0;

    void add(double mean)
    {
        raise(mean);
        total += mean;
    }

    void raise(double mean)
    {
        if (mean > peak)
            peak = mean;
    }
};

/// Entries 0 and 1 share their average, 2 and 3 theirs, and so on; one left alone stays. The peak is that of
/// the new entries.
void smoothPairs(std::list<double>& means, MeanTally& tally)
{
    tally.peak = 0.0;
    for (auto first = means.begin(); first != means.end();) {
        const auto second = std::next(first);
        if (second == means.end()) {
            tally.raise(*first);
            return;
        }
        *first = *second = (*first + *second) * 0.5;
        tally.raise(*first);
        first = std::next(second);
    }
}

void turnMeansIntoGains(std::list<double>& means, MeanTally& tally, double count, const GainRule& rule)
{
    const double overall = tally.total / count;
    if (rule.pairSmoothing)
        smoothPairs(means, tally);
    const double target = rule.normalize ? tally.peak * rule.normalizeValue : overall;
    for (double& entry : means)
        entry = target / entry;
}

} // namespace

void computeColumnGains(const ConstImageView& frame, const GainRule& rule, std::list<double>& gains,
                        std::uint16_t* columnMeans, std::uint16_t* rowMeans)
{
    if (!isCorrectedDepth(frame.depth)) {
        std::fill_n(columnMeans, frame.width, std::uint16_t{0});
        std::fill_n(rowMeans, frame.height, std::uint16_t{0});
        return;
    }
    MeanTally tally;
    const double height = frame.height;
    forEachColumnSum(frame, [&](std::int32_t x, std::uint64_t sum) {
        const double mean = static_cast<double>(sum) / height;
        gains.push_back(mean);
        columnMeans[x] = truncateToMean(mean);
        tally.add(mean);
    });
    storeRowMeans(frame, rowMeans);
    turnMeansIntoGains(gains, tally, frame.width, rule);
}

void computeRowGains(const ConstImageView& cells, const GainRule& rule, std::list<double>& gains)
{
    // Sixteen-bit cells also where the frame had 8 bits.
    const ConstImageView wide{cells.data, cells.step, cells.width, cells.height, 16};
    MeanTally tally;
    const double width = cells.width;
    for (std::int32_t y = 0; y < cells.height; ++y) {
        const double mean = static_cast<double>(rowSum(wide, y)) / width;
        gains.push_back(mean);
        tally.add(mean);
    }
    turnMeansIntoGains(gains, tally, cells.height, rule);
}

} // namespace zor
