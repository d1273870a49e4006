#include "platform/viewer/paint/RowKernels.h"

#include <algorithm>

namespace zor::viewer {
namespace {
constexpr std::uint32_t Half = AxisMap::Unit / 2;
constexpr int UnitBits = 8;
static_assert(1 << UnitBits == AxisMap::Unit);

template <int Taps, int Channels>
void meanOfColumnsAs(const std::uint16_t* row, const AxisMap& x, std::uint16_t* target)
{
    const std::int32_t* first = x.first.data();
    const AxisMap::Weights* weights = x.weights.data();
    const std::size_t count = x.first.size();
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint16_t* from = row + static_cast<std::ptrdiff_t>(first[i]) * Channels;
        for (int c = 0; c < Channels; ++c) {
            std::uint32_t sum = Half;
            for (int t = 0; t < Taps; ++t)
                sum += std::uint32_t{from[t * Channels + c]} * weights[i][static_cast<std::size_t>(t)];
            target[i * Channels + static_cast<std::size_t>(c)] = static_cast<std::uint16_t>(sum >> UnitBits);
        }
    }
}

template <int Channels>
void meanOfColumnsOf(const std::uint16_t* row, const AxisMap& x, std::uint16_t* target)
{
    if (x.taps == 1)
        meanOfColumnsAs<1, Channels>(row, x, target);
    else if (x.taps == 2)
        meanOfColumnsAs<2, Channels>(row, x, target);
    else
        meanOfColumnsAs<3, Channels>(row, x, target);
}

template <int Channels, class Sample>
void pickColumnsAs(const Sample* row, const AxisMap& x, std::uint16_t* target)
{
    const std::size_t count = x.first.size();
    // One to one, the row is copied as it is.
    if (x.first.back() - x.first.front() + 1 == x.count()) {
        const Sample* from = row + static_cast<std::ptrdiff_t>(x.first.front()) * Channels;
        std::copy(from, from + count * Channels, target);
        return;
    }
    for (std::size_t i = 0; i < count; ++i)
        for (std::size_t c = 0; c < Channels; ++c)
            target[i * Channels + c] = row[static_cast<std::size_t>(x.first[i]) * Channels + c];
}

template <class Sample>
void pickColumnsOf(const Sample* row, const AxisMap& x, int channels, std::uint16_t* target)
{
    if (channels == 1)
        pickColumnsAs<1>(row, x, target);
    else
        pickColumnsAs<3>(row, x, target);
}
} // namespace

// The sum of 8-bit samples stays within 16 bits: 255 * 256 + 128.
void meanOfRows(const std::uint8_t* a, const std::uint8_t* b, const std::uint8_t* c,
                const AxisMap::Weights& weights, std::uint16_t* target, std::size_t count)
{
    const AxisMap::Weights w = weights;
    for (std::size_t i = 0; i < count; ++i) {
        const auto sum = static_cast<std::uint16_t>(a[i] * w[0] + b[i] * w[1] + c[i] * w[2] + Half);
        target[i] = static_cast<std::uint16_t>(sum >> UnitBits);
    }
}

void meanOfRows(const std::uint16_t* a, const std::uint16_t* b, const std::uint16_t* c,
                const AxisMap::Weights& weights, std::uint16_t* target, std::size_t count)
{
    const AxisMap::Weights w = weights;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t sum =
            std::uint32_t{a[i]} * w[0] + std::uint32_t{b[i]} * w[1] + std::uint32_t{c[i]} * w[2] + Half;
        target[i] = static_cast<std::uint16_t>(sum >> UnitBits);
    }
}

void meanOfColumns(const std::uint16_t* row, int origin, const AxisMap& x, int channels,
                   std::uint16_t* target)
{
    row -= static_cast<std::ptrdiff_t>(origin) * channels;
    if (channels == 1)
        meanOfColumnsOf<1>(row, x, target);
    else
        meanOfColumnsOf<3>(row, x, target);
}

void pickColumns(const std::uint8_t* row, const AxisMap& x, int channels, std::uint16_t* target)
{
    pickColumnsOf(row, x, channels, target);
}

void pickColumns(const std::uint16_t* row, const AxisMap& x, int channels, std::uint16_t* target)
{
    pickColumnsOf(row, x, channels, target);
}

void mixRows(std::uint16_t* fine, const std::uint16_t* coarse, int blend, std::size_t count)
{
    const auto share = static_cast<std::uint16_t>(blend);
    const auto keep = static_cast<std::uint16_t>(AxisMap::Unit - blend);
    for (std::size_t i = 0; i < count; ++i)
        fine[i] = static_cast<std::uint16_t>(
            (std::uint32_t{fine[i]} * keep + std::uint32_t{coarse[i]} * share + Half) >> UnitBits);
}
} // namespace zor::viewer
