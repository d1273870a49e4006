#include "host/frames/Png.h"

#include "image/PixelTypeCode.h"

#include <png.h>

#include <csetjmp>
#include <new>
#include <stdexcept>
#include <vector>

namespace zor {

namespace {

/// What libpng's callbacks work on. libpng reports errors by a long jump, so everything that needs a
/// destructor lives here and not in the function that is jumped out of.
struct PngOutput
{
    std::string bytes;
    std::string error;
    std::vector<png_bytep> rows;
    png_structp png = nullptr;
    png_infop info = nullptr;

    PngOutput() = default;
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
bool writePicture(PngOutput& file, const _ZorImage& picture)
{
    if (setjmp(png_jmpbuf(file.png)) != 0)
        return false;
    const std::uint32_t depth = pixelTypeSampleBits(picture.pixelType);
    const bool wide = depth > 8;
    png_set_write_fn(file.png, &file, onWrite, onFlush);
    png_set_IHDR(file.png, file.info, picture.width, picture.height, wide ? 16 : 8, PNG_COLOR_TYPE_GRAY,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (wide) {
        png_color_8 significant = {};
        significant.gray = static_cast<png_byte>(depth);
        png_set_sBIT(file.png, file.info, &significant);
    }
    png_write_info(file.png, file.info);
    if (wide)
        png_set_swap(file.png);
    png_write_image(file.png, file.rows.data());
    png_write_end(file.png, nullptr);
    return true;
}

} // namespace

std::string pngBytes(const _ZorImage& picture)
{
    PngOutput file;
    file.png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &file, onError, onWarning);
    file.info = file.png ? png_create_info_struct(file.png) : nullptr;
    if (!file.info)
        throw std::bad_alloc();
    for (std::size_t y = 0; y < picture.height; ++y)
        file.rows.push_back(picture.data + y * picture.pitch);
    if (!writePicture(file, picture))
        throw std::runtime_error("the picture cannot be made into a PNG file (" + file.error +
                                 "); choose another kind of file");
    return std::move(file.bytes);
}

} // namespace zor
