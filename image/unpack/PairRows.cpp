#include "image/unpack/PairRows.h"

#include "image/unpack/FourLanes.h"

namespace zor::unpack {

namespace {

/// Two groups of three bytes, one after the other, as four samples in a lane each.
template <unsigned Depth> constexpr std::uint64_t groupsToLanes(std::uint64_t word)
{
    constexpr unsigned LowBits = Depth - 8;
    constexpr std::uint64_t LowMask = (1U << LowBits) - 1;
    const std::uint64_t halves = spreadToHalves<24>(word);
    return (halves & everyLane(0xFF)) << LowBits | (halves >> 12 & (LowMask | LowMask << 32)) |
           (halves << 8 & (LowMask << 16 | LowMask << 48));
}

template <unsigned Depth>
void pairs(const std::uint8_t* source, std::uint16_t* destination, std::size_t count)
{
    constexpr unsigned LowBits = Depth - 8;
    constexpr unsigned LowMask = (1U << LowBits) - 1;
    const std::size_t rowBytes = (count * 12 + 7) / 8;
    std::size_t done = 0;
    for (std::size_t byte = 0; byte + LoadBytes <= rowBytes; byte += 6, done += 4)
        storeLanes(destination + done, groupsToLanes<Depth>(loadBytes(source + byte)));

    for (; done < count; ++done) {
        const std::uint8_t* group = source + done / 2 * 3;
        const bool odd = done % 2 == 1;
        const unsigned high = odd ? group[2] : group[0];
        const unsigned low = odd ? group[1] : group[1] >> 4;
        destination[done] = static_cast<std::uint16_t>(high << LowBits | (low & LowMask));
    }
}

} // namespace

void pairs10(const std::uint8_t* source, std::uint16_t* destination, std::size_t count)
{
    pairs<10>(source, destination, count);
}

void pairs12(const std::uint8_t* source, std::uint16_t* destination, std::size_t count)
{
    pairs<12>(source, destination, count);
}

} // namespace zor::unpack
