#include "tests/host/frames/MakePng.h"

#include <png.h>
#include <zlib.h>

#include <QtEndian>

#include <stdexcept>
#include <vector>

namespace {

/// The signature and the header's chunk.
constexpr int HeaderEnd = 33;

void append(png_structp png, png_bytep bytes, std::size_t count)
{
    static_cast<QByteArray*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(bytes), int(count));
}

void flush(png_structp) {}

[[noreturn]] void fail(png_structp, png_const_charp message)
{
    throw std::runtime_error(message);
}

/// Samples packed from the high bits down, as PNG stores them; every row starts at a byte.
std::vector<png_byte> packedRow(const PngContent& content, std::size_t y, std::size_t perRow)
{
    std::vector<png_byte> row((perRow * std::size_t(content.bits) + 7) / 8);
    for (std::size_t i = 0; i < perRow; ++i) {
        const int sample = content.samples[int(y * perRow + i)];
        for (int bit = 0; bit < content.bits; ++bit) {
            const std::size_t place = i * std::size_t(content.bits) + std::size_t(bit);
            if (sample >> (content.bits - 1 - bit) & 1)
                row[place / 8] = png_byte(row[place / 8] | 0x80 >> place % 8);
        }
    }
    return row;
}

} // namespace

QByteArray makePng(const PngContent& content)
{
    QByteArray result;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, fail, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &result, append, flush);
    png_set_IHDR(png, info, content.width, content.height, content.bits, content.colorType,
                 content.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (content.significantBits != 0) {
        png_color_8 significant = {};
        significant.gray = significant.red = significant.green = png_byte(content.significantBits);
        significant.blue = content.significantBlue != 0 ? png_byte(content.significantBlue) : significant.red;
        png_set_sBIT(png, info, &significant);
    }
    if (!content.palette.isEmpty()) {
        std::vector<png_color> palette;
        for (const quint32 colour : content.palette)
            palette.push_back({png_byte(colour >> 16), png_byte(colour >> 8), png_byte(colour)});
        png_set_PLTE(png, info, palette.data(), int(palette.size()));
        // A test may want indices that the palette does not have.
        png_set_check_for_invalid_index(png, 0);
    }
    png_write_info(png, info);
    const std::size_t perRow = content.width * std::size_t(png_get_channels(png, info));
    std::vector<std::vector<png_byte>> packed;
    std::vector<png_bytep> rows;
    for (std::size_t y = 0; y < content.height; ++y)
        packed.push_back(packedRow(content, y, perRow));
    for (auto& row : packed)
        rows.push_back(row.data());
    png_write_image(png, rows.data());
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return result;
}

QByteArray pngWithSides(QByteArray png, quint32 width, quint32 height)
{
    // Signature and length take 12 bytes, then come "IHDR", the sides and five bytes more.
    QByteArray header = png.mid(16, 13);
    qToBigEndian(width, header.data());
    qToBigEndian(height, header.data() + 4);
    return png.replace(8, HeaderEnd - 8, pngChunk("IHDR", header));
}

QByteArray pngChunk(const QByteArray& name, const QByteArray& data)
{
    QByteArray length(4, '\0');
    qToBigEndian(quint32(data.size()), length.data());
    QByteArray checksum(4, '\0');
    const QByteArray checked = name + data;
    qToBigEndian(
        quint32(::crc32(0, reinterpret_cast<const Bytef*>(checked.constData()), uInt(checked.size()))),
        checksum.data());
    return length + checked + checksum;
}

QByteArray pngWithChunks(QByteArray png, const QByteArray& chunks)
{
    return png.insert(HeaderEnd, chunks);
}
