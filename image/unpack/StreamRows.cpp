#include "image/unpack/StreamRows.h"

#include "image/unpack/FourLanes.h"

#include <algorithm>

namespace zor::unpack {

namespace {

/// Four fields, one behind the other, each in a lane of its own.
template <unsigned FieldBits> constexpr std::uint64_t fieldsToLanes(std::uint64_t word)
{
    constexpr std::uint64_t Field = (1U << FieldBits) - 1;
    const std::uint64_t halves = spreadToHalves<2 * FieldBits>(word);
    return (halves & (Field | Field << 32)) | (halves << (16 - FieldBits) & (Field << 16 | Field << 48));
}

/// Every lane with a bit above the depth becomes full scale.
template <unsigned FieldBits, unsigned Depth> constexpr std::uint64_t limitLanes(std::uint64_t lanes)
{
    if constexpr (FieldBits == Depth) {
        return lanes;
    } else {
        static_assert(FieldBits == Depth + 2);
        const std::uint64_t above = (lanes | lanes >> 1) & everyLane(1U << Depth);
        const std::uint64_t fullScale = above - (above >> Depth);
        return (lanes & everyLane((1U << Depth) - 1)) | fullScale;
    }
}

/// `FieldBits` is even, so that four fields are a whole number of bytes and no field lies in more than two.
template <unsigned FieldBits, unsigned Depth>
void stream(const std::uint8_t* source, std::uint16_t* destination, std::size_t count)
{
    constexpr std::size_t StepBytes = FieldBits * 4 / 8;
    const std::size_t rowBytes = (count * FieldBits + 7) / 8;
    std::size_t done = 0;
    for (std::size_t byte = 0; byte + LoadBytes <= rowBytes; byte += StepBytes, done += 4)
        storeLanes(destination + done,
                   limitLanes<FieldBits, Depth>(fieldsToLanes<FieldBits>(loadBytes(source + byte))));

    constexpr unsigned Field = (1U << FieldBits) - 1;
    constexpr unsigned FullScale = (1U << Depth) - 1;
    for (; done < count; ++done) {
        const std::size_t bit = done * FieldBits;
        const unsigned word = source[bit / 8] | unsigned{source[bit / 8 + 1]} << 8;
        destination[done] = static_cast<std::uint16_t>(std::min(word >> (bit % 8) & Field, FullScale));
    }
}

} // namespace

void stream10(const std::uint8_t* source, std::uint16_t* destination, std::size_t count)
{
    stream<10, 10>(source, destination, count);
}

void stream12(const std::uint8_t* source, std::uint16_t* destination, std::size_t count)
{
    stream<12, 12>(source, destination, count);
}

void stream10In12(const std::uint8_t* source, std::uint16_t* destination, std::size_t count)
{
    stream<12, 10>(source, destination, count);
}

} // namespace zor::unpack
