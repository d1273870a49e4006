#pragma once

#include <QByteArray>
#include <QList>

/// What a PNG file of a test is to hold.
struct PngContent
{
    quint32 width = 0;
    quint32 height = 0;
    int bits = 8;
    int colorType = 0; ///< PNG_COLOR_TYPE_GRAY
    bool interlaced = false;
    int significantBits = 0; ///< 0: no sBIT entry
    int significantBlue = 0; ///< 0: as the other channels
    QList<quint32> palette;  ///< 0xRRGGBB
    QList<int> samples;      ///< as they are in the file, channel after channel
};

/// The file's bytes.
QByteArray makePng(const PngContent& content);

/// The PNG file with other sides in its header, and the header's checksum made anew.
QByteArray pngWithSides(QByteArray png, quint32 width, quint32 height);

/// A chunk: length, name of four letters, data and checksum.
QByteArray pngChunk(const QByteArray& name, const QByteArray& data);

/// The PNG file with more chunks after its header.
QByteArray pngWithChunks(QByteArray png, const QByteArray& chunks);
