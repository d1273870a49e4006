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

void writeStrips(TIFF* tiff, const TiffContent& content)
{
    const std::size_t perRow = content.width * std::size_t(content.samplesPerPixel);
    for (quint32 y = 0; y < content.height; ++y) {
        std::vector<std::uint8_t> row(perRow * 4);
        for (std::size_t i = 0; i < perRow; ++i)
            put(row, content, i, content.samples[int(y * perRow + i)]);
        if (TIFFWriteScanline(tiff, row.data(), y, 0) != 1)
            throw std::runtime_error("the test's TIFF cannot be written");
    }
}

void writeTiles(TIFF* tiff, const TiffContent& content)
{
    const quint32 side = content.tileSide;
    for (quint32 top = 0; top < content.height; top += side) {
        for (quint32 left = 0; left < content.width; left += side) {
            // What lies outside the picture is filled with a value that it does not have.
            std::vector<std::uint8_t> tile(std::size_t{side} * side * 2, 0xEE);
            for (quint32 y = top; y < qMin(top + side, content.height); ++y) {
                for (quint32 x = left; x < qMin(left + side, content.width); ++x)
                    put(tile, content, std::size_t{y - top} * side + x - left,
                        content.samples[int(y * content.width + x)]);
            }
            if (TIFFWriteTile(tiff, tile.data(), left, top, 0, 0) < 0)
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
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    if (content.maxSampleValue >= 0)
        TIFFSetField(tiff, TIFFTAG_MAXSAMPLEVALUE, content.maxSampleValue);
    if (content.photometric == PHOTOMETRIC_PALETTE) {
        std::vector<std::uint16_t> map(std::size_t{1} << content.bits);
        TIFFSetField(tiff, TIFFTAG_COLORMAP, map.data(), map.data(), map.data());
    }
    if (content.tileSide != 0) {
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, content.tileSide);
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, content.tileSide);
        writeTiles(tiff, content);
    } else {
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, content.rowsPerStrip);
        writeStrips(tiff, content);
    }
    TIFFClose(tiff);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("the test's TIFF cannot be read back");
    return file.readAll();
}
