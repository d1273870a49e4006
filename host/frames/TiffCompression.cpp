#include "host/frames/TiffCompression.h"

#include "host/frames/Fail.h"

#include <tiffio.h>

namespace zor {

namespace {

std::string compressionName(std::uint16_t compression)
{
    const TIFFCodec* codec = TIFFFindCODEC(compression);
    return std::to_string(compression) + (codec ? std::string(" (") + codec->name + ")" : "");
}

} // namespace

Inflation tiffInflation(const std::string& path, std::uint16_t compression)
{
    switch (compression) {
    case COMPRESSION_NONE:
        return {1};
    case COMPRESSION_PACKBITS:
        // Two bytes repeat one 128 times.
        return {64};
    case COMPRESSION_LZW:
        // The longest string of a table of 4096 codes has 3839 bytes, and its code 12 bits.
        return {2560};
    case COMPRESSION_ADOBE_DEFLATE:
    case COMPRESSION_DEFLATE:
        return DeflateInflation;
    case COMPRESSION_JPEG:
    case COMPRESSION_LERC:
    case COMPRESSION_LZMA:
    case COMPRESSION_ZSTD: {
        // A picture of one value takes next to nothing, whatever its size. Small ones are let through; what a
        // sensor sees never comes near Deflate's limit.
        constexpr std::uint64_t SmallPicture = std::uint64_t{64} << 20;
        return {DeflateInflation.factor, SmallPicture};
    }
    default:
        failFrame(path, "its compression " + compressionName(compression) +
                            " is not read here; save it uncompressed, or with LZW or Deflate");
    }
}

} // namespace zor
