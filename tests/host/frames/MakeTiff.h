#pragma once

#include <QByteArray>
#include <QList>

/// What a TIFF file of a test is to hold.
struct TiffContent
{
    quint32 width = 0;
    quint32 height = 0;
    int bits = 8;
    int samplesPerPixel = 1;
    bool planes = false;     ///< one for each sample of a pixel
    int photometric = 1;     ///< PHOTOMETRIC_MINISBLACK
    int sampleFormat = 1;    ///< SAMPLEFORMAT_UINT
    int compression = 1;     ///< COMPRESSION_NONE
    int maxSampleValue = -1; ///< -1: no such entry
    quint32 rowsPerStrip = 2;
    quint32 tileSide = 0;    ///< 0: strips
    const char* mode = "wl"; ///< libtiff's: l little-endian, b big-endian, 8 BigTIFF
    QList<int> samples;      ///< pixel after pixel, in planes too
};

/// The file's bytes.
QByteArray makeTiff(const TiffContent& content);
