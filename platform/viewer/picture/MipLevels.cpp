#include "platform/viewer/picture/MipLevels.h"

#include "platform/viewer/picture/NextMipLevel.h"

#include <algorithm>
#include <atomic>
#include <cstring>

namespace zor::viewer {
namespace {
std::uint64_t nextGeneration()
{
    static std::atomic<std::uint64_t> last{0};
    return ++last;
}

std::size_t rowBytes(int width, const PixelShape& shape)
{
    const std::size_t bytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(shape.channels) *
                              static_cast<std::size_t>(shape.bytes);
    return (bytes + 15) / 16 * 16;
}

bool needsCopy(const Samples& image, const PixelShape& shape)
{
    return shape.bytes == 2 &&
           (image.pitch % 2 != 0 || reinterpret_cast<std::uintptr_t>(image.data) % 2 != 0);
}

std::size_t levelBytes(const Samples& image, const PixelShape& shape)
{
    std::size_t all = 0;
    int width = image.width;
    int height = image.height;
    if (needsCopy(image, shape))
        all += rowBytes(width, shape) * static_cast<std::size_t>(height);
    while (width > 1 || height > 1) {
        width = (width + 1) / 2;
        height = (height + 1) / 2;
        all += rowBytes(width, shape) * static_cast<std::size_t>(height);
    }
    return all;
}
} // namespace

void MipLevels::reserve(const Samples& image, const PixelShape& shape)
{
    const std::size_t words = levelBytes(image, shape) / sizeof(std::uint16_t);
    // A much smaller image gives the memory back.
    if (words > m_memory.size() || words < m_memory.size() / 4)
        m_memory = std::vector<std::uint16_t>(words);
}

void MipLevels::build(const Samples& image, const PixelShape& shape)
{
    m_shape = shape;
    m_generation = nextGeneration();
    m_levels.clear();
    auto* memory = reinterpret_cast<std::uint8_t*>(m_memory.data());
    Samples level = image;
    if (needsCopy(image, shape)) {
        const std::size_t pitch = rowBytes(image.width, shape);
        const std::size_t used =
            static_cast<std::size_t>(image.width) * static_cast<std::size_t>(shape.channels * shape.bytes);
        for (int y = 0; y < image.height; ++y)
            std::memcpy(memory + static_cast<std::size_t>(y) * pitch, image.row(y), used);
        level.data = memory;
        level.pitch = pitch;
        memory += pitch * static_cast<std::size_t>(image.height);
    }
    m_levels.push_back(level);
    while (level.width > 1 || level.height > 1) {
        const Samples finer = level;
        level.width = (finer.width + 1) / 2;
        level.height = (finer.height + 1) / 2;
        level.pitch = rowBytes(level.width, shape);
        level.data = memory;
        makeNextMipLevel(finer, shape, memory, level.pitch);
        memory += level.pitch * static_cast<std::size_t>(level.height);
        m_levels.push_back(level);
    }
}

void MipLevels::clear()
{
    m_levels.clear();
    m_memory = std::vector<std::uint16_t>();
}

int MipLevels::sample(int x, int y, int channel) const
{
    const std::uint8_t* row = m_levels.front().row(y);
    const int index = x * m_shape.channels + channel;
    return m_shape.bytes == 1 ? row[index] : reinterpret_cast<const std::uint16_t*>(row)[index];
}
} // namespace zor::viewer
