#include "platform/viewer/picture/NextMipLevel.h"

#include "platform/viewer/picture/RowBands.h"

#include <algorithm>

namespace zor::viewer {
namespace {
constexpr int LeastRowsToShare = 64;

template <class Sample, int Channels>
void halveRow(const Sample* upper, const Sample* lower, Sample* target, int width)
{
    const int pairs = width / 2;
    for (int x = 0; x < pairs; ++x)
        for (int c = 0; c < Channels; ++c) {
            const int left = 2 * x * Channels + c;
            const int right = left + Channels;
            target[x * Channels + c] =
                static_cast<Sample>((upper[left] + upper[right] + lower[left] + lower[right] + 2) >> 2);
        }
    if (width % 2 != 0)
        for (int c = 0; c < Channels; ++c) {
            const int last = (width - 1) * Channels + c;
            target[pairs * Channels + c] = static_cast<Sample>((upper[last] + lower[last] + 1) >> 1);
        }
}

template <class Sample, int Channels>
void halveImage(const Samples& source, std::uint8_t* target, std::size_t targetPitch)
{
    forRowBands((source.height + 1) / 2, LeastRowsToShare, [&](int begin, int end) {
        for (int y = begin; y < end; ++y) {
            const int below = std::min(2 * y + 1, source.height - 1);
            halveRow<Sample, Channels>(
                reinterpret_cast<const Sample*>(source.row(2 * y)),
                reinterpret_cast<const Sample*>(source.row(below)),
                reinterpret_cast<Sample*>(target + static_cast<std::size_t>(y) * targetPitch), source.width);
        }
    });
}
} // namespace

void makeNextMipLevel(const Samples& source, const PixelShape& shape, std::uint8_t* target,
                      std::size_t targetPitch)
{
    if (shape.bytes == 1 && shape.channels == 1)
        halveImage<std::uint8_t, 1>(source, target, targetPitch);
    else if (shape.bytes == 1)
        halveImage<std::uint8_t, 3>(source, target, targetPitch);
    else if (shape.channels == 1)
        halveImage<std::uint16_t, 1>(source, target, targetPitch);
    else
        halveImage<std::uint16_t, 3>(source, target, targetPitch);
}
} // namespace zor::viewer
