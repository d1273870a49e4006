#include "image/unpack/StreamRows.h"

#include "image/unpack/FourLanes.h"

namespace zor::unpack {

namespace {

/// The samples of four fields, one after the other, each in a lane of its own.
template <unsigned FieldBits, unsigned Depth> constexpr std::uint64_t fieldsToLanes(std::uint64_t word)
{
    constexpr std::uint64_t Sample = (1U << Depth) - 1;
    const std::uint64_t halves = spreadToHalves<2 * FieldBits>(word);
    return (halves & (Sample | Sample << 32)) | (halves << (16 - FieldBits) & (Sample << 16 | Sample << 48));
}

/// `FieldBits` is even, so that four fields are a whole number of bytes and no field lies in more than two.
template <unsigned FieldBits, unsigned Depth>
void stream(const std::uint8_t* source, std::uint16_t* destination, std::size_t count)
{
    constexpr std::size_t StepBytes = FieldBits * 4 / 8;
    const std::size_t rowBytes = (count * FieldBits + 7) / 8;
    std::size_t done = 0;
    for (std::size_t byte = 0; byte + LoadBytes <= rowBytes; byte += StepBytes, done += 4)
        storeLanes(destination + done, fieldsToLanes<FieldBits, Depth>(loadBytes(source + byte)));

    constexpr unsigned Sample = (1U << Depth) - 1;
    for (; done < count; ++done) {
        const std::size_t bit = done * FieldBits;
        const unsigned word = source[bit / 8] | unsigned{source[bit / 8 + 1]} << 8;
        destination[done] = static_cast<std::uint16_t>(word >> (bit % 8) & Sample);
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
