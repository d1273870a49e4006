#include "host/frames/Png.h"

#include "host/frames/DepthRule.h"
#include "host/frames/Fail.h"
#include "host/frames/FileBytes.h"
#include "host/frames/FrameLimits.h"
#include "host/frames/PngSignificantBits.h"

#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstring>
#include <memory>

namespace zor {

namespace {

/// What libpng's callbacks work on. libpng reports errors by a long jump, so everything that needs a
/// destructor lives here and not in the function that is jumped out of.
struct PngFile
{
    std::vector<std::uint8_t> bytes;
    std::size_t position = 0;
    std::string error;

    png_structp png = nullptr;
    png_infop info = nullptr;
    StoredSamples samples;
    std::size_t sampleBytes = 0;
    std::size_t rowBytes = 0; ///< of a row as it is decoded: samples, or a byte for each index of a colour
    png_colorp palette = nullptr;
    int colours = 0; ///< of the palette
    /// One row, or all of an interlaced picture, whose rows are complete in the last pass only. The memory is
    /// touched as it is decoded.
    std::unique_ptr<std::uint8_t[]> lines;

    PngFile() = default;
    PngFile(const PngFile&) = delete;
    PngFile& operator=(const PngFile&) = delete;
    ~PngFile() { png_destroy_read_struct(&png, &info, nullptr); }
};

void onError(png_structp png, png_const_charp message)
{
    static_cast<PngFile*>(png_get_error_ptr(png))->error = message;
    png_longjmp(png, 1);
}

void onWarning(png_structp, png_const_charp) {}

void onRead(png_structp png, png_bytep target, std::size_t count)
{
    auto* file = static_cast<PngFile*>(png_get_io_ptr(png));
    const std::size_t left = file->bytes.size() - file->position;
    if (count > left)
        png_error(png, "the file ends too early");
    std::memcpy(target, file->bytes.data() + file->position, count);
    file->position += count;
}

/// A complete row: its samples, or the colours that its indices stand for.
void appendLine(const std::string& path, PngFile& file, const std::uint8_t* line)
{
    StoredSamples& samples = file.samples;
    if (!file.palette) {
        appendSamples(samples.values, line, std::size_t{samples.width} * samples.channels, file.sampleBytes);
        return;
    }
    for (std::uint32_t x = 0; x < samples.width; ++x) {
        if (line[x] >= file.colours)
            failFrame(path, "the pixel at " + pixelPlace(samples.width, samples.values.size() / 3) +
                                " has colour " + std::to_string(line[x]) + " of a palette of " +
                                std::to_string(file.colours) + " (from 0); write or copy the file again");
        const png_color& colour = file.palette[line[x]];
        samples.values.insert(samples.values.end(), {colour.red, colour.green, colour.blue});
    }
}

// The two functions with a jump target: nothing in them has a destructor.

bool readInfo(PngFile& file)
{
    if (setjmp(png_jmpbuf(file.png)) != 0)
        return false;
    png_set_read_fn(file.png, &file, onRead);
    // Texts and colour profiles hold no samples and can unfold to gigabytes. Each name comes with its zero.
    constexpr png_byte unused[] = "tEXt\0zTXt\0iTXt\0iCCP\0sPLT";
    png_set_keep_unknown_chunks(file.png, PNG_HANDLE_CHUNK_NEVER, unused, sizeof unused / 5);
    png_read_info(file.png, file.info);
    return true;
}

bool readPixels(const std::string& path, PngFile& file)
{
    if (setjmp(png_jmpbuf(file.png)) != 0)
        return false;
    if (png_get_bit_depth(file.png, file.info) == 16)
        png_set_swap(file.png);
    png_set_packing(file.png);
    const int passes = png_set_interlace_handling(file.png);
    png_read_update_info(file.png, file.info);
    for (int pass = 1; pass <= passes; ++pass) {
        for (std::size_t y = 0; y < file.samples.height; ++y) {
            std::uint8_t* line = file.lines.get() + (passes == 1 ? 0 : y * file.rowBytes);
            png_read_row(file.png, line, nullptr);
            if (pass == passes)
                appendLine(path, file, line);
        }
    }
    png_read_end(file.png, nullptr);
    return true;
}

void openPng(const std::string& path, PngFile& file)
{
    file.bytes = readBytes(path);
    file.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &file, onError, onWarning);
    file.info = file.png ? png_create_info_struct(file.png) : nullptr;
    if (!file.info)
        throw std::bad_alloc();
}

[[noreturn]] void failPng(const std::string& path, const PngFile& file)
{
    failFrame(path, "the PNG data are broken (" + file.error + "); the file has " +
                        std::to_string(file.bytes.size()) + " bytes, reading stopped at byte " +
                        std::to_string(file.position) + "; write or copy the file again");
}

void checkFormat(const std::string& path, const PngFile& file)
{
    const unsigned type = png_get_color_type(file.png, file.info);
    if ((type & PNG_COLOR_MASK_ALPHA) != 0)
        failFrame(path, "is a PNG with alpha; save it without, as grey or RGB of 8 or 16 bits");
    const unsigned bits = png_get_bit_depth(file.png, file.info);
    if (type == PNG_COLOR_TYPE_GRAY && bits < 8)
        failFrame(path,
                  "has " + std::to_string(bits) + " bits a sample; save it as grey or RGB of 8 or 16 bits");
}

/// The bits of the file's sBIT entry; nothing where it has none, or others for each channel.
std::optional<std::uint32_t> significantBits(const PngFile& file)
{
    png_color_8p entry = nullptr;
    if (file.palette || png_get_sBIT(file.png, file.info, &entry) == 0)
        return std::nullopt;
    if (file.samples.channels == 1)
        return entry->gray;
    const bool equal = entry->red == entry->green && entry->green == entry->blue;
    return equal ? std::optional<std::uint32_t>(entry->red) : std::nullopt;
}

bool fitInto(const std::vector<std::uint16_t>& values, std::uint32_t bits)
{
    return std::all_of(values.begin(), values.end(),
                       [bits](std::uint16_t sample) { return std::uint32_t{sample} >> bits == 0; });
}

} // namespace

StoredSamples readPng(const std::string& path, std::optional<std::uint32_t> asked)
{
    PngFile file;
    openPng(path, file);
    if (!readInfo(file))
        failPng(path, file);
    checkFormat(path, file);

    StoredSamples& samples = file.samples;
    samples.width = png_get_image_width(file.png, file.info);
    samples.height = png_get_image_height(file.png, file.info);
    const unsigned type = png_get_color_type(file.png, file.info);
    samples.channels = type == PNG_COLOR_TYPE_GRAY ? 1 : 3;
    // Files in colour may have one too, which only advises.
    if (type == PNG_COLOR_TYPE_PALETTE)
        png_get_PLTE(file.png, file.info, &file.palette, &file.colours);
    file.sampleBytes = png_get_bit_depth(file.png, file.info) == 16 ? 2 : 1;
    const std::size_t frameRow = std::size_t{samples.width} * samples.channels * file.sampleBytes;
    file.rowBytes = file.palette ? samples.width : frameRow;
    checkFrameSize(path, samples.width, samples.height, frameRow);
    checkFileHolds(path, file.bytes.size(), png_get_rowbytes(file.png, file.info) * samples.height,
                   DeflateInflation);

    const bool interlaced = png_get_interlace_type(file.png, file.info) != PNG_INTERLACE_NONE;
    file.lines.reset(new std::uint8_t[interlaced ? file.rowBytes * samples.height : file.rowBytes]);
    samples.values.reserve(std::size_t{samples.width} * samples.height * samples.channels);
    samples.storedBits = static_cast<std::uint32_t>(8 * file.sampleBytes);
    if (!readPixels(path, file))
        failPng(path, file);

    const auto significant = significantBits(file);
    const bool taken = asked && fitInto(samples.values, *asked);
    if (!taken && significant)
        applySignificantBits(samples, samples.storedBits, *significant);
    return std::move(samples);
}

} // namespace zor
