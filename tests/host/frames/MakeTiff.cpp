#include "tests/host/frames/MakeTiff.h"

#include <QFile>
#include <QTemporaryDir>

#include <stdexcept>
#include <tiffio.h>
#include <vector>

namespace {

void put(std::vector<std::uint8_t>& bytes, const TiffContent& content, std::size_t place, int sample)
{
    // libtiff swaps what it is given in the machine's order.
    if (content.bits == 16) {
        bytes[2 * place] = std::uint8_t(sample);
        bytes[2 * place + 1] = std::uint8_t(sample >> 8);
    } else {
        bytes[place] = std::uint8_t(sample);
    }
}

/// The samples of a row's pixels from `left` on that go side by side into a plane.
void putRow(std::vector<std::uint8_t>& bytes, std::size_t place, const TiffContent& content, int plane,
            quint32 y, quint32 left, quint32 right)
{
    const int perPixel = content.planes ? 1 : content.samplesPerPixel;
    for (quint32 x = left; x < right; ++x) {
        for (int i = 0; i < perPixel; ++i)
            put(bytes, content, place++,
                content.samples[int(y * content.width + x) * content.samplesPerPixel + plane + i]);
    }
}

void writeStrips(TIFF* tiff, const TiffContent& content, int plane)
{
    for (quint32 y = 0; y < content.height; ++y) {
        std::vector<std::uint8_t> line(content.width * std::size_t(content.samplesPerPixel) * 4);
        putRow(line, 0, content, plane, y, 0, content.width);
        if (TIFFWriteScanline(tiff, line.data(), y, std::uint16_t(plane)) != 1)
            throw std::runtime_error("the test's TIFF cannot be written");
    }
}

void writeTiles(TIFF* tiff, const TiffContent& content, int plane)
{
    const quint32 side = content.tileSide;
    const std::size_t perPixel = content.planes ? 1 : std::size_t(content.samplesPerPixel);
    for (quint32 top = 0; top < content.height; top += side) {
        for (quint32 left = 0; left < content.width; left += side) {
            // What lies outside the picture is filled with a value that it does not have.
            std::vector<std::uint8_t> tile(std::size_t{side} * side * perPixel * 2, 0xEE);
            for (quint32 y = top; y < qMin(top + side, content.height); ++y)
                putRow(tile, std::size_t{y - top} * side * perPixel, content, plane, y, left,
                       qMin(left + side, content.width));
            if (TIFFWriteTile(tiff, tile.data(), left, top, 0, std::uint16_t(plane)) < 0)
                throw std::runtime_error("the test's TIFF cannot be written");
        }
    }
}

} // namespace

QByteArray makeTiff(const TiffContent& content)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("made.tif");
    TIFF* tiff = TIFFOpen(path.toLocal8Bit().constData(), content.mode);
    if (!tiff)
        throw std::runtime_error("the test's TIFF cannot be written");
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, content.width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, content.height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, content.bits);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, content.samplesPerPixel);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, content.photometric);
    TIFFSetField(tiff, TIFFTAG_SAMPLEFORMAT, content.sampleFormat);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, content.compression);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, content.planes ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
    if (content.maxSampleValue >= 0)
        TIFFSetField(tiff, TIFFTAG_MAXSAMPLEVALUE, content.maxSampleValue);
    if (content.photometric == PHOTOMETRIC_PALETTE) {
        std::vector<std::uint16_t> map(std::size_t{1} << content.bits);
        TIFFSetField(tiff, TIFFTAG_COLORMAP, map.data(), map.data(), map.data());
    }
    if (content.tileSide != 0) {
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, content.tileSide);
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, content.tileSide);
    } else {
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, content.rowsPerStrip);
    }
    for (int plane = 0; plane < (content.planes ? content.samplesPerPixel : 1); ++plane)
        content.tileSide != 0 ? writeTiles(tiff, content, plane) : writeStrips(tiff, content, plane);
    TIFFClose(tiff);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("the test's TIFF cannot be read back");
    return file.readAll();
}
