#include "image/unpack/UnpackRow.h"

#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"
#include "image/unpack/PairRows.h"
#include "image/unpack/StreamRows.h"
#include "image/unpack/UnpackedRows.h"

namespace zor {

namespace {

/// The row function of samples for pixels of several samples.
template <UnpackRow Samples, std::size_t Count>
void pixelsOf(const std::uint8_t* source, std::uint16_t* destination, std::size_t width)
{
    Samples(source, destination, width * Count);
}

template <UnpackRow Samples> UnpackRow pixelsOf(std::uint32_t count)
{
    switch (count) {
    case 1:
        return Samples;
    case 2:
        return pixelsOf<Samples, 2>;
    case 3:
        return pixelsOf<Samples, 3>;
    default:
        return pixelsOf<Samples, 4>;
    }
}

/// Three samples of 10 bits in a word of 32 are the one shape whose pixels are no plain sequence of samples.
bool hasWordsOfThree(std::uint32_t pixelType)
{
    return Packing{pixelTypePacking(pixelType)} == Packing::Flex10 && pixelTypeBits(pixelType) == 32;
}

/// The mono formats put samples of 10 bits in fields of 12, the YUV format puts them one after the other.
UnpackRow tenBitsInSequence(std::uint32_t pixelType, std::uint32_t samples)
{
    if (hasWordsOfThree(pixelType))
        return unpack::wordsOfThree10;
    return pixelTypeBits(pixelType) == 10 * samples ? pixelsOf<unpack::stream10>(samples)
                                                    : pixelsOf<unpack::stream10In12>(samples);
}

UnpackRow byPacking(std::uint32_t pixelType, std::uint32_t samples)
{
    switch (Packing{pixelTypePacking(pixelType)}) {
    case Packing::Unpacked8:
    case Packing::Flex8:
        return pixelsOf<unpack::bytes>(samples);
    case Packing::Unpacked10:
        return pixelsOf<unpack::words10>(samples);
    case Packing::Unpacked12:
        return pixelsOf<unpack::words12>(samples);
    case Packing::Unpacked14:
        return pixelsOf<unpack::words14>(samples);
    case Packing::Unpacked16:
        return pixelsOf<unpack::words16>(samples);
    case Packing::Packed10:
        return unpack::pairs10;
    case Packing::Packed12:
        return unpack::pairs12;
    case Packing::P10:
        return pixelsOf<unpack::stream10>(samples);
    case Packing::P12:
    case Packing::Flex12:
        return pixelsOf<unpack::stream12>(samples);
    case Packing::Flex10:
        return tenBitsInSequence(pixelType, samples);
    }
    return nullptr;
}

} // namespace

std::uint32_t samplesPerPixel(std::uint32_t pixelType)
{
    const ZorPixelTypeRow* row = exactPixelTypeRow(pixelType);
    if (!row)
        return 0;
    const bool shared = pixelTypeFamily(pixelType) == PixelFamily::Yuv && row->channels == 3;
    return shared ? 2 : row->channels;
}

bool isLumaFirst(const ZorPixelTypeRow& row)
{
    return row.channelLayout[0] == 'Y';
}

UnpackRow unpackRowFor(std::uint32_t pixelType)
{
    const std::uint32_t samples = samplesPerPixel(pixelType);
    return samples > 0 ? byPacking(pixelType, samples) : nullptr;
}

} // namespace zor
