#include "host/frames/Png.h"

#include "host/frames/PictureRows.h"

#include <png.h>

#include <csetjmp>
#include <new>
#include <stdexcept>

namespace zor {

namespace {

/// What libpng's callbacks work on. libpng reports errors by a long jump, so everything that needs a
/// destructor lives here and not in the function that is jumped out of.
struct PngOutput
{
    std::string bytes;
    std::string error;
    PictureRows rows;
    png_structp png = nullptr;
    png_infop info = nullptr;

    explicit PngOutput(const _ZorImage& frame)
        : rows(frame)
    {
    }
    PngOutput(const PngOutput&) = delete;
    PngOutput& operator=(const PngOutput&) = delete;
    ~PngOutput() { png_destroy_write_struct(&png, &info); }
};

void onError(png_structp png, png_const_charp message)
{
    static_cast<PngOutput*>(png_get_error_ptr(png))->error = message;
    png_longjmp(png, 1);
}

void onWarning(png_structp, png_const_charp) {}

bool append(std::string& bytes, png_const_bytep source, std::size_t count)
{
    try {
        bytes.append(reinterpret_cast<const char*>(source), count);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void onWrite(png_structp png, png_bytep source, std::size_t count)
{
    if (!append(static_cast<PngOutput*>(png_get_io_ptr(png))->bytes, source, count))
        png_error(png, "not enough memory");
}

void onFlush(png_structp) {}

/// The function with a jump target: nothing in it has a destructor.
bool writePicture(PngOutput& file, std::uint32_t width, std::uint32_t height)
{
    if (setjmp(png_jmpbuf(file.png)) != 0)
        return false;
    const bool wide = file.rows.sampleBytes() == 2;
    const int colours = file.rows.channels() == 3 ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_GRAY;
    png_set_write_fn(file.png, &file, onWrite, onFlush);
    png_set_IHDR(file.png, file.info, width, height, wide ? 16 : 8, colours, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (wide) {
        const auto depth = static_cast<png_byte>(file.rows.depth());
        png_color_8 significant = {};
        significant.gray = significant.red = significant.green = significant.blue = depth;
        png_set_sBIT(file.png, file.info, &significant);
    }
    png_write_info(file.png, file.info);
    if (wide)
        png_set_swap(file.png);
    for (std::uint32_t y = 0; y < height; ++y)
        png_write_row(file.png, file.rows.row(y));
    png_write_end(file.png, nullptr);
    return true;
}

} // namespace

std::string pngBytes(const _ZorImage& frame)
{
    PngOutput file(frame);
    file.png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &file, onError, onWarning);
    file.info = file.png ? png_create_info_struct(file.png) : nullptr;
    if (!file.info)
        throw std::bad_alloc();
    if (!writePicture(file, frame.width, frame.height))
        throw std::runtime_error("the picture cannot be made into a PNG file (" + file.error +
                                 "); choose another kind of file");
    return std::move(file.bytes);
}

} // namespace zor
