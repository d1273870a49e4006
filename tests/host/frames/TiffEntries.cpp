#include "tests/host/frames/TiffEntries.h"

#include <QtEndian>

namespace {

template <typename Number> QByteArray bytesOf(Number number)
{
    QByteArray bytes(sizeof(Number), '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

} // namespace

TiffEntries greyEntries(quint32 width, quint32 height, quint32 compression)
{
    return {{256, {width}}, {257, {height}}, {258, {8}}, {259, {compression}}, {262, {1}}, {277, {1}}};
}

QByteArray tiffOfEntries(const TiffEntries& entries, const QByteArray& data, int size)
{
    // Header, data, the entries with more than one value, the directory.
    QByteArray behind = data;
    QByteArray directory = bytesOf(quint16(entries.size()));
    for (auto it = entries.begin(); it != entries.end(); ++it) {
        QByteArray values;
        for (const quint32 value : it.value())
            values += bytesOf(value);
        const quint32 place = TiffDataPlace + quint32(behind.size());
        directory += bytesOf(it.key()) + bytesOf(quint16(4)) + bytesOf(quint32(it.value().size())) +
                     (it.value().size() == 1 ? values : bytesOf(place));
        if (it.value().size() != 1)
            behind += values;
    }
    const quint32 place = TiffDataPlace + quint32(behind.size());
    QByteArray file = "II*" + QByteArray(1, '\0') + bytesOf(place) + behind + directory + bytesOf(quint32(0));
    return file.size() < size ? file + QByteArray(size - file.size(), '\0') : file;
}
