#include "platform/converter/DepthChange.h"

#include <cstring>

namespace zor::platform {

void changeDepth(std::uint16_t* samples, std::size_t count, std::uint32_t fromBits, std::uint32_t toBits)
{
    if (toBits < fromBits) {
        const std::uint32_t down = fromBits - toBits;
        for (std::size_t i = 0; i < count; ++i)
            samples[i] = static_cast<std::uint16_t>(samples[i] >> down);
    } else if (toBits > fromBits) {
        const std::uint32_t up = toBits - fromBits;
        const std::uint32_t repeat = fromBits - up;
        for (std::size_t i = 0; i < count; ++i)
            samples[i] = static_cast<std::uint16_t>(samples[i] << up | samples[i] >> repeat);
    }
}

void storeBytes(const std::uint16_t* samples, std::size_t count, std::uint8_t* destination)
{
    for (std::size_t i = 0; i < count; ++i)
        destination[i] = static_cast<std::uint8_t>(samples[i]);
}

void storeWords(const std::uint16_t* samples, std::size_t count, std::uint8_t* destination)
{
    std::memcpy(destination, samples, count * sizeof(std::uint16_t));
}

} // namespace zor::platform
