#include "dialog/CFFCUtility.h"
#include "dialog/Message.h"
#include "engine/Allocation.h"
#include "engine/pix/PixConvert.h"

#include <cstring>

namespace {

constexpr std::int32_t Means = -1;
constexpr std::int32_t ItemBytes = 2;

/// Where the two lines of a pass come from.
struct LineSources
{
    const std::uint8_t* base; ///< the pass's image
    const void* first;        ///< a row's items
    const void* second;       ///< a column's items
    std::int32_t rowStep;
    std::int32_t columnStep; ///< from item to item of `second`
};

void replaceLine(std::uint16_t*& line, std::uint16_t* by)
{
    zorRelease(line);
    line = by;
}

} // namespace

bool CFFCUtility::TakeProfileLines(std::int32_t pass, std::int32_t row, std::int32_t column)
{
    if (!m_image || (pass != 0 && pass != 1))
        return false;
    LineSources from = pass == 0 ? LineSources{m_image, m_columnMean, m_rowMean, m_step, m_step}
                                 : LineSources{reinterpret_cast<const std::uint8_t*>(m_flatY),
                                               m_flatColumnMean, m_flatRowMean, m_flatXStep, m_flatYStep};
    if (!from.base)
        return false;
    // In pass 1 a chosen column makes the first line a row of the image too.
    if (row != Means || (pass == 1 && column != Means))
        from.first = from.base + static_cast<std::ptrdiff_t>(row) * from.rowStep;
    if (column != Means)
        from.second = from.base + static_cast<std::ptrdiff_t>(column) * ItemBytes;
    else
        from.columnStep = ItemBytes;

    const std::size_t firstBytes = static_cast<std::size_t>(m_width) * ItemBytes;
    const std::size_t secondBytes = static_cast<std::size_t>(m_height) * ItemBytes;
    auto* first = static_cast<std::uint16_t*>(zorAllocate(firstBytes));
    if (!first) {
        zor::showNotEnoughMemory();
        return false;
    }
    auto* second = static_cast<std::uint16_t*>(zorAllocate(secondBytes));
    if (!second) {
        zor::showNotEnoughMemory();
        zorRelease(first);
        return false;
    }
    std::memset(first, 0, firstBytes);
    std::memset(second, 0, secondBytes);
    zor::pixCopy16(from.first, from.rowStep, first, from.rowStep, {m_width, 1});
    zor::pixCopy16(from.second, from.columnStep, second, ItemBytes, {1, m_height});

    replaceLine(pass == 0 ? m_columnLine : m_flatColumnLine, first);
    replaceLine(pass == 0 ? m_rowLine : m_flatRowLine, second);
    return true;
}
