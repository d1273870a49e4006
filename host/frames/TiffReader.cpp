#include "host/frames/Tiff.h"

#include "host/frames/DepthRule.h"
#include "host/frames/Fail.h"
#include "host/frames/FileBytes.h"
#include "host/frames/FrameLimits.h"
#include "host/frames/TiffCompression.h"
#include "host/frames/TiffHandle.h"

#include <algorithm>

namespace zor {

namespace {

struct Layout
{
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t sampleBytes;
    bool inverted;
    Inflation inflation;
};

[[noreturn]] void failTiff(const std::string& path, const std::string& reason)
{
    failFrame(path, "the TIFF data are broken (" + reason + "); the file has " +
                        std::to_string(fileSize(path)) + " bytes; write or copy the file again");
}

/// Whether the samples are to be inverted.
bool checkWhite(const std::string& path, bool whiteIsZero, std::optional<WhiteIsZero> asked)
{
    if (whiteIsZero && !asked)
        failFrame(path, "is a TIFF whose 0 is white; give --white-is-zero stored to take the samples as they "
                        "are, or --white-is-zero inverted to take full scale less the sample");
    if (!whiteIsZero && asked)
        failFrame(path, "is a TIFF whose 0 is black; leave --white-is-zero out");
    return asked == WhiteIsZero::Inverted;
}

Layout readLayout(const std::string& path, const TiffHandle& tiff, std::optional<WhiteIsZero> whiteIsZero)
{
    const unsigned samples = tiff.tag16(TIFFTAG_SAMPLESPERPIXEL, 1);
    const unsigned photometric = tiff.tag16(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    const unsigned bits = tiff.tag16(TIFFTAG_BITSPERSAMPLE, 1);
    if (samples != 1 || (photometric != PHOTOMETRIC_MINISBLACK && photometric != PHOTOMETRIC_MINISWHITE))
        failFrame(path, "is a TIFF with colour, a palette or alpha; save it as grey of 8 or 16 bits");
    if (bits != 8 && bits != 16)
        failFrame(path, "has " + std::to_string(bits) + " bits a sample; save it as grey of 8 or 16 bits");
    const unsigned format = tiff.tag16(TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
    if (format != SAMPLEFORMAT_UINT && format != SAMPLEFORMAT_VOID)
        failFrame(path, "has signed or floating point samples; save it as unsigned grey of 8 or 16 bits");
    const Inflation inflation = tiffInflation(path, tiff.tag16(TIFFTAG_COMPRESSION, COMPRESSION_NONE));
    const bool inverted = checkWhite(path, photometric == PHOTOMETRIC_MINISWHITE, whiteIsZero);

    const std::uint32_t width = tiff.tag32(TIFFTAG_IMAGEWIDTH, 0);
    const std::uint32_t height = tiff.tag32(TIFFTAG_IMAGELENGTH, 0);
    checkFrameSize(path, width, height, std::uint64_t{width} * bits / 8);
    return {width, height, bits / 8, inverted, inflation};
}

/// Row after row: memory is touched with what the file really holds.
void readStrips(const std::string& path, const TiffHandle& tiff, const Layout& layout,
                std::vector<std::uint16_t>& values)
{
    const std::size_t lineBytes = std::size_t{layout.width} * layout.sampleBytes;
    checkFileHolds(path, fileSize(path), lineBytes * layout.height, layout.inflation);
    values.reserve(std::size_t{layout.width} * layout.height);
    // The library's own size, so that it never writes past the row. One grey sample a pixel fills it.
    std::vector<std::uint8_t> line(static_cast<std::size_t>(TIFFScanlineSize(tiff.get())));
    for (std::uint32_t y = 0; y < layout.height; ++y) {
        if (TIFFReadScanline(tiff.get(), line.data(), y, 0) != 1 || tiff.madeUpSamples())
            failTiff(path, tiff.reason("row " + std::to_string(y) + " cannot be read"));
        appendSamples(values, line.data(), layout.width, layout.sampleBytes);
    }
}

/// A row of tiles at a time. The tiles at the right and lower border reach over the picture.
void readTiles(const std::string& path, const TiffHandle& tiff, const Layout& layout,
               std::vector<std::uint16_t>& values)
{
    const std::uint32_t tileWidth = tiff.tag32(TIFFTAG_TILEWIDTH, 0);
    const std::uint32_t tileHeight = tiff.tag32(TIFFTAG_TILELENGTH, 0);
    // The library opens no file whose tiles have a side of 0.
    constexpr std::uint64_t MaxTileSamples = std::uint64_t{1} << 24;
    if (std::uint64_t{tileWidth} * tileHeight > MaxTileSamples)
        failFrame(path, "its tiles of " + std::to_string(tileWidth) + "x" + std::to_string(tileHeight) +
                            " are not usable; save it in strips");
    const std::size_t tileLine = std::size_t{tileWidth} * layout.sampleBytes;
    // As for a row.
    const auto tileBytes = static_cast<std::size_t>(TIFFTileSize(tiff.get()));

    const std::size_t tilesAcross = (layout.width + tileWidth - 1) / tileWidth;
    const std::size_t tilesDown = (layout.height + tileHeight - 1) / tileHeight;
    checkFileHolds(path, fileSize(path), tilesAcross * tilesDown * tileBytes, layout.inflation);
    values.reserve(std::size_t{layout.width} * layout.height);
    std::vector<std::vector<std::uint8_t>> tiles(tilesAcross);
    for (std::uint32_t top = 0; top < layout.height; top += tileHeight) {
        for (std::size_t across = 0; across < tilesAcross; ++across) {
            // A broken file fails at its first tile, before memory is taken for the others.
            tiles[across].resize(tileBytes);
            const auto left = static_cast<std::uint32_t>(across * tileWidth);
            if (TIFFReadTile(tiff.get(), tiles[across].data(), left, top, 0, 0) < 0 || tiff.madeUpSamples())
                failTiff(path, tiff.reason("the tile at column " + std::to_string(left) + ", row " +
                                           std::to_string(top) + " cannot be read"));
        }
        const std::uint32_t lines = std::min(tileHeight, layout.height - top);
        for (std::uint32_t y = 0; y < lines; ++y) {
            for (std::size_t across = 0; across < tilesAcross; ++across)
                appendSamples(values, tiles[across].data() + y * tileLine,
                              std::min<std::size_t>(tileWidth, layout.width - across * tileWidth),
                              layout.sampleBytes);
        }
    }
}

/// A stored 0 becomes full scale: what the file says about its largest sample is then about the smallest.
void invert(StoredSamples& samples, std::uint32_t bits)
{
    const std::uint32_t fullScale = (1U << bits) - 1;
    for (std::uint16_t& sample : samples.values)
        sample = static_cast<std::uint16_t>(fullScale - sample);
    if (samples.stated)
        samples.stated = {bits, samples.stated->source + ", inverted in " + std::to_string(bits) + " bits"};
}

} // namespace

StoredSamples readTiff(const std::string& path, std::optional<WhiteIsZero> whiteIsZero)
{
    const TiffHandle tiff(path);
    if (!tiff.get())
        failTiff(path, tiff.reason("it cannot be opened"));
    const Layout layout = readLayout(path, tiff, whiteIsZero);

    StoredSamples samples;
    samples.width = layout.width;
    samples.height = layout.height;
    samples.storedBits = static_cast<std::uint32_t>(8 * layout.sampleBytes);
    if (TIFFIsTiled(tiff.get()) != 0)
        readTiles(path, tiff, layout, samples.values);
    else
        readStrips(path, tiff, layout, samples.values);

    const std::uint16_t largest = tiff.tag16(TIFFTAG_MAXSAMPLEVALUE, 0);
    if (largest != 0)
        samples.stated = {bitsForValue(largest), "MaxSampleValue " + std::to_string(largest)};
    if (layout.inverted)
        invert(samples, 8 * layout.sampleBytes);
    return samples;
}

} // namespace zor
