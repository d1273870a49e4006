#include "host/frames/Png.h"

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
    std::size_t lineBytes = 0;
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

// The two functions with a jump target: nothing in them has a destructor.

bool readInfo(PngFile& file)
{
    if (setjmp(png_jmpbuf(file.png)) != 0)
        return false;
    png_set_read_fn(file.png, &file, onRead);
    // Texts and colours hold no samples and can unfold to gigabytes. Each name comes with its zero.
    constexpr png_byte unused[] = "tEXt\0zTXt\0iTXt\0iCCP\0sPLT";
    png_set_keep_unknown_chunks(file.png, PNG_HANDLE_CHUNK_NEVER, unused, sizeof unused / 5);
    png_read_info(file.png, file.info);
    return true;
}

bool readPixels(PngFile& file)
{
    if (setjmp(png_jmpbuf(file.png)) != 0)
        return false;
    if (png_get_bit_depth(file.png, file.info) == 16)
        png_set_swap(file.png);
    const int passes = png_set_interlace_handling(file.png);
    png_read_update_info(file.png, file.info);
    for (int pass = 1; pass <= passes; ++pass) {
        for (std::size_t y = 0; y < file.samples.height; ++y) {
            std::uint8_t* line = file.lines.get() + (passes == 1 ? 0 : y * file.lineBytes);
            png_read_row(file.png, line, nullptr);
            if (pass == passes)
                appendSamples(file.samples.values, line, file.samples.width, file.sampleBytes);
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
    if (png_get_color_type(file.png, file.info) != PNG_COLOR_TYPE_GRAY)
        failFrame(path, "is a PNG with colour, a palette or alpha; save it as grey of 8 or 16 bits");
    const unsigned bits = png_get_bit_depth(file.png, file.info);
    if (bits != 8 && bits != 16)
        failFrame(path, "has " + std::to_string(bits) + " bits a sample; save it as grey of 8 or 16 bits");
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
    const std::uint32_t bits = png_get_bit_depth(file.png, file.info);
    file.sampleBytes = bits / 8;
    file.lineBytes = samples.width * file.sampleBytes;
    checkFrameSize(path, samples.width, samples.height, file.lineBytes);
    checkFileHolds(path, file.bytes.size(), file.lineBytes * samples.height, DeflateInflation);

    const bool interlaced = png_get_interlace_type(file.png, file.info) != PNG_INTERLACE_NONE;
    file.lines.reset(new std::uint8_t[interlaced ? file.lineBytes * samples.height : file.lineBytes]);
    samples.values.reserve(std::size_t{samples.width} * samples.height);
    samples.storedBits = static_cast<std::uint32_t>(8 * file.sampleBytes);
    if (!readPixels(file))
        failPng(path, file);

    png_color_8p significant = nullptr;
    const bool taken = asked && fitInto(samples.values, *asked);
    if (!taken && png_get_sBIT(file.png, file.info, &significant) != 0)
        applySignificantBits(samples, bits, significant->gray);
    return std::move(samples);
}

} // namespace zor
