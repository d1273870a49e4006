#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>

/// The entries of a TIFF directory: 32-bit values by their tags.
using TiffEntries = QMap<quint16, QList<quint32>>;

/// The place of the data in a file that is made of entries.
constexpr quint32 TiffDataPlace = 8;

/// The entries of a grey picture of 8 bits whose strips or tiles all lie at the data's place; the caller adds
/// how the picture is cut.
TiffEntries greyEntries(quint32 width, quint32 height, quint32 compression);

/// A little-endian TIFF file with these entries, true or not, filled up with zeros to a size.
QByteArray tiffOfEntries(const TiffEntries& entries, const QByteArray& data = {}, int size = 0);
