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
    std::uint32_t channels;
    std::uint32_t planes; ///< 1, or one for each channel
    bool inverted;
    Inflation inflation;

    /// Samples of a pixel that lie side by side.
    std::size_t perPixel() const { return channels / planes; }
    std::size_t sampleCount() const { return std::size_t{width} * height * channels; }
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
        throw WhiteIsZeroAsked(
            path + ": is a TIFF whose 0 is white; give --white-is-zero stored to take the samples "
                   "as they are, or --white-is-zero inverted to take full scale less the sample");
    if (!whiteIsZero && asked)
        failFrame(path, "is a TIFF whose 0 is black; leave --white-is-zero out");
    return asked == WhiteIsZero::Inverted;
}

/// What the samples mean, where they are neither grey nor RGB.
std::string meaningOf(unsigned photometric)
{
    switch (photometric) {
    case PHOTOMETRIC_PALETTE:
        return "a palette";
    case PHOTOMETRIC_SEPARATED:
        return "CMYK colours";
    case PHOTOMETRIC_YCBCR:
        return "YCbCr colours";
    case PHOTOMETRIC_CIELAB:
    case PHOTOMETRIC_ICCLAB:
    case PHOTOMETRIC_ITULAB:
        return "Lab colours";
    default:
        return "the photometric interpretation " + std::to_string(photometric);
    }
}

/// Grey or RGB, and nothing beside it.
void checkChannels(const std::string& path, unsigned photometric, unsigned samples)
{
    const bool rgb = photometric == PHOTOMETRIC_RGB;
    if (!rgb && photometric != PHOTOMETRIC_MINISBLACK && photometric != PHOTOMETRIC_MINISWHITE)
        failFrame(path,
                  "is a TIFF with " + meaningOf(photometric) + "; save it as grey or RGB of 8 or 16 bits");
    if (samples != (rgb ? 3 : 1))
        failFrame(path, "is a TIFF with " + std::to_string(samples) + " samples a pixel, where " +
                            (rgb ? "RGB has 3" : "grey has 1") +
                            "; save it without alpha and other channels");
}

Layout readLayout(const std::string& path, const TiffHandle& tiff, std::optional<WhiteIsZero> whiteIsZero)
{
    const unsigned samples = tiff.tag16(TIFFTAG_SAMPLESPERPIXEL, 1);
    const unsigned photometric = tiff.tag16(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    const unsigned bits = tiff.tag16(TIFFTAG_BITSPERSAMPLE, 1);
    checkChannels(path, photometric, samples);
    if (bits != 8 && bits != 16)
        failFrame(path,
                  "has " + std::to_string(bits) + " bits a sample; save it as grey or RGB of 8 or 16 bits");
    const unsigned format = tiff.tag16(TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
    if (format != SAMPLEFORMAT_UINT && format != SAMPLEFORMAT_VOID)
        failFrame(path, "has signed or floating point samples; save it with unsigned ones of 8 or 16 bits");
    const Inflation inflation = tiffInflation(path, tiff.tag16(TIFFTAG_COMPRESSION, COMPRESSION_NONE));
    const bool inverted = checkWhite(path, photometric == PHOTOMETRIC_MINISWHITE, whiteIsZero);

    const std::uint32_t width = tiff.tag32(TIFFTAG_IMAGEWIDTH, 0);
    const std::uint32_t height = tiff.tag32(TIFFTAG_IMAGELENGTH, 0);
    checkFrameSize(path, width, height, std::uint64_t{width} * samples * bits / 8);
    const bool separate = tiff.tag16(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == PLANARCONFIG_SEPARATE;
    return {width, height, bits / 8, samples, separate ? samples : 1, inverted, inflation};
}

/// Plane after plane, row after row: memory is touched with what the file really holds.
void readStrips(const std::string& path, const TiffHandle& tiff, const Layout& layout,
                std::vector<std::uint16_t>& values)
{
    checkFileHolds(path, fileSize(path), layout.sampleCount() * layout.sampleBytes, layout.inflation);
    values.reserve(layout.sampleCount());
    // The library's own size, so that it never writes past the row. The samples of grey or RGB fill it.
    std::vector<std::uint8_t> line(static_cast<std::size_t>(TIFFScanlineSize(tiff.get())));
    for (std::uint32_t plane = 0; plane < layout.planes; ++plane) {
        for (std::uint32_t y = 0; y < layout.height; ++y) {
            if (TIFFReadScanline(tiff.get(), line.data(), y, static_cast<std::uint16_t>(plane)) != 1 ||
                tiff.madeUpSamples())
                failTiff(path, tiff.reason("row " + std::to_string(y) + " cannot be read"));
            appendSamples(values, line.data(), layout.width * layout.perPixel(), layout.sampleBytes);
        }
    }
}

/// The tiles of a picture, which reach over it at the right and lower border.
struct Tiles
{
    std::uint32_t width;
    std::uint32_t height;
    std::size_t bytes;                              ///< of one
    std::vector<std::vector<std::uint8_t>> buffers; ///< one for each of a row
};

Tiles readTileLayout(const std::string& path, const TiffHandle& tiff, const Layout& layout)
{
    // The library opens no file whose tiles have a side of 0.
    const std::uint32_t width = tiff.tag32(TIFFTAG_TILEWIDTH, 0);
    const std::uint32_t height = tiff.tag32(TIFFTAG_TILELENGTH, 0);
    constexpr std::uint64_t MaxTileSamples = std::uint64_t{1} << 24;
    if (std::uint64_t{width} * height > MaxTileSamples / layout.perPixel())
        failFrame(path, "its tiles of " + std::to_string(width) + "x" + std::to_string(height) +
                            " are not usable; save it in strips");
    const std::size_t across = (layout.width + width - 1) / width;
    const std::size_t down = (layout.height + height - 1) / height;
    // The library's own size, as for a row.
    const auto bytes = static_cast<std::size_t>(TIFFTileSize(tiff.get()));
    checkFileHolds(path, fileSize(path), across * down * layout.planes * bytes, layout.inflation);
    return {width, height, bytes, std::vector<std::vector<std::uint8_t>>(across)};
}

/// A row of tiles of one plane.
void readTileRow(const std::string& path, const TiffHandle& tiff, const Layout& layout, Tiles& tiles,
                 std::uint32_t plane, std::uint32_t top, std::vector<std::uint16_t>& values)
{
    for (std::size_t across = 0; across < tiles.buffers.size(); ++across) {
        // A broken file fails at its first tile, before memory is taken for the others.
        tiles.buffers[across].resize(tiles.bytes);
        const auto left = static_cast<std::uint32_t>(across * tiles.width);
        if (TIFFReadTile(tiff.get(), tiles.buffers[across].data(), left, top, 0,
                         static_cast<std::uint16_t>(plane)) < 0 ||
            tiff.madeUpSamples())
            failTiff(path, tiff.reason("the tile at column " + std::to_string(left) + ", row " +
                                       std::to_string(top) + " cannot be read"));
    }
    const std::size_t tileLine = tiles.width * layout.perPixel() * layout.sampleBytes;
    const std::uint32_t lines = std::min(tiles.height, layout.height - top);
    for (std::uint32_t y = 0; y < lines; ++y) {
        for (std::size_t across = 0; across < tiles.buffers.size(); ++across) {
            const std::size_t columns =
                std::min<std::size_t>(tiles.width, layout.width - across * tiles.width);
            appendSamples(values, tiles.buffers[across].data() + y * tileLine, columns * layout.perPixel(),
                          layout.sampleBytes);
        }
    }
}

void readTiles(const std::string& path, const TiffHandle& tiff, const Layout& layout,
               std::vector<std::uint16_t>& values)
{
    Tiles tiles = readTileLayout(path, tiff, layout);
    values.reserve(layout.sampleCount());
    for (std::uint32_t plane = 0; plane < layout.planes; ++plane) {
        for (std::uint32_t top = 0; top < layout.height; top += tiles.height)
            readTileRow(path, tiff, layout, tiles, plane, top, values);
    }
}

/// Samples plane after plane become pixel after pixel.
std::vector<std::uint16_t> sideBySide(const std::vector<std::uint16_t>& values, std::size_t planes)
{
    const std::size_t pixels = values.size() / planes;
    std::vector<std::uint16_t> result(values.size());
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = values[i % planes * pixels + i / planes];
    return result;
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
    samples.channels = layout.channels;
    samples.storedBits = static_cast<std::uint32_t>(8 * layout.sampleBytes);
    if (TIFFIsTiled(tiff.get()) != 0)
        readTiles(path, tiff, layout, samples.values);
    else
        readStrips(path, tiff, layout, samples.values);
    if (layout.planes > 1)
        samples.values = sideBySide(samples.values, layout.planes);

    const std::uint16_t largest = tiff.tag16(TIFFTAG_MAXSAMPLEVALUE, 0);
    if (largest != 0)
        samples.stated = {bitsForValue(largest), "MaxSampleValue " + std::to_string(largest)};
    if (layout.inverted)
        invert(samples, 8 * layout.sampleBytes);
    return samples;
}

} // namespace zor
