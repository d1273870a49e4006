#include "tests/support/TestFrame.h"

#include "image/MonoTarget.h"
#include "tests/support/RecordOf.h"

TestFrame::TestFrame(int frameWidth, int frameHeight, int frameDepth, const Pixel& pixel, int frameStep)
    : width(frameWidth)
    , height(frameHeight)
    , depth(frameDepth)
    , step(frameStep != 0 ? frameStep : frameWidth * (frameDepth == 8 ? 1 : 2))
    , bytes(static_cast<std::size_t>(step) * static_cast<std::size_t>(frameHeight))
{
    for (int y = 0; y < height; ++y) {
        std::uint8_t* row = bytes.data() + static_cast<std::ptrdiff_t>(y) * step;
        for (int x = 0; x < width; ++x) {
            const unsigned value = pixel(x, y);
            if (depth == 8) {
                row[x] = static_cast<std::uint8_t>(value);
            } else {
                row[2 * x] = static_cast<std::uint8_t>(value & 0xFF);
                row[2 * x + 1] = static_cast<std::uint8_t>(value >> 8);
            }
        }
    }
}

TestFrame TestFrame::even(int width, int height, int depth, unsigned value)
{
    return TestFrame(width, height, depth, [value](int, int) { return value; });
}

TestFrame TestFrame::rising(int width)
{
    return TestFrame(width, 20, 12, [](int x, int y) { return static_cast<unsigned>(500 + 7 * x + 3 * y); });
}

_ZorImage TestFrame::record()
{
    return recordOf(zor::computeFormat(static_cast<std::uint32_t>(depth)), static_cast<std::uint32_t>(width),
                    static_cast<std::uint32_t>(height), static_cast<std::uint32_t>(step), bytes);
}
