#include "platform/converter/SampleStore.h"

#include "image/PixelTypeCode.h"
#include "platform/converter/DepthChange.h"

namespace zor::platform {

SampleStore::SampleStore(std::uint32_t sourceBits, std::uint32_t target)
    : m_sourceBits(sourceBits)
    , m_targetBits(pixelTypeSampleBits(target))
    , m_bytes(pixelTypeBits(target) / 8)
{
}

void SampleStore::store(std::uint16_t* samples, std::size_t count, std::uint8_t* row, std::size_t first) const
{
    changeDepth(samples, count, m_sourceBits, m_targetBits);
    (m_bytes == 1 ? storeBytes : storeWords)(samples, count, row + first * m_bytes);
}

} // namespace zor::platform
