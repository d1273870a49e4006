#include "host/average/FrameSum.h"

#include "host/average/CaptureSettings.h"
#include "host/average/FrameSamples.h"

#include <string>
#include <utility>

namespace zor {

namespace {

std::string limitsText()
{
    return "an average is made of 1 to " + std::to_string(MostAveragedFrames) + " frames";
}

/// Adds runs of samples to sums that follow each other.
struct Add
{
    std::uint32_t* sums;

    void operator()(const std::uint16_t* samples, std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i)
            sums[i] += samples[i];
        sums += count;
    }
};

/// Takes them out again.
struct Subtract
{
    std::uint32_t* sums;

    void operator()(const std::uint16_t* samples, std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i)
            sums[i] -= samples[i];
        sums += count;
    }
};

/// There are no vectors of quotients of integers. Those of doubles are rounded down to the same number: an
/// exact quotient that is not whole is further below the next whole number than doubles are apart there.
void divide(const std::uint32_t* sums, std::size_t count, std::uint32_t frames, std::uint16_t* means)
{
    const std::uint32_t half = frames / 2;
    const double divisor = frames;
    for (std::size_t i = 0; i < count; ++i) {
        // Vectors convert signed numbers alone.
        const auto sum = static_cast<std::int32_t>(sums[i] + half);
        means[i] = static_cast<std::uint16_t>(static_cast<std::int32_t>(sum / divisor));
    }
}

static_assert(std::uint64_t{MostAveragedFrames} * 0x10000 <= 0x7FFFFFFF, "sums have room in signed numbers");

} // namespace

std::uint32_t checkedFrameCount(std::uint32_t count)
{
    if (count < 1 || count > MostAveragedFrames)
        throw std::invalid_argument(limitsText() + ", not " + std::to_string(count));
    return count;
}

void FrameSum::checkLikeFirst(const Frame& frame) const
{
    const std::string difference = firstDifference(settingsOf(frame), settingsOf(m_like));
    if (!difference.empty())
        throw std::invalid_argument("the frames of an average have one size and pixel format: " + difference +
                                    "; begin a new average");
    checkSamples(frame);
}

std::uint32_t* FrameSum::sumsOfRow(std::uint32_t y)
{
    return m_sums.data() + m_sums.size() / m_like.height * y;
}

void FrameSum::add(const Frame& frame)
{
    if (m_count == MostAveragedFrames)
        throw std::length_error(limitsText() + "; begin a new average");
    if (m_count > 0) {
        checkLikeFirst(frame);
    } else {
        checkSamples(frame);
        Frame like = tightFrameLike(frame);
        m_sums.resize(samplesPerRow(frame) * frame.height);
        m_like = std::move(like);
    }
    for (std::uint32_t y = 0; y < frame.height; ++y)
        forEachSampleRun(frame, y, Add{sumsOfRow(y)});
    ++m_count;
}

void FrameSum::replace(const Frame& previous, const Frame& next)
{
    checkLikeFirst(previous);
    checkLikeFirst(next);
    for (std::uint32_t y = 0; y < next.height; ++y) {
        forEachSampleRun(previous, y, Subtract{sumsOfRow(y)});
        forEachSampleRun(next, y, Add{sumsOfRow(y)});
    }
}

Frame FrameSum::mean() const
{
    if (m_count == 0)
        throw std::logic_error("an average needs at least one frame");
    Frame mean = m_like;
    mean.pixels.resize(std::size_t{mean.pitch} * mean.height);
    std::vector<std::uint16_t> row(samplesPerRow(mean));
    for (std::uint32_t y = 0; y < mean.height; ++y) {
        divide(m_sums.data() + row.size() * y, row.size(), m_count, row.data());
        packSamples(row, y, mean);
    }
    return mean;
}

} // namespace zor
