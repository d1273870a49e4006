#pragma once

#include "image/ZorImage.h"
#include "tests/support/FormatCodes.h"
#include "tests/support/RecordOf.h"

#include <QVector>

#include <cstring>
#include <vector>

/// An image of one row in a plain format, from its samples.
struct OneRow
{
    OneRow(const zor::FormatBlock& format, std::uint32_t width, const QVector<qint64>& samples,
           int sampleBytes)
        : bytes(static_cast<std::size_t>(samples.size() * sampleBytes))
    {
        for (int i = 0; i < samples.size(); ++i)
            std::memcpy(bytes.data() + i * sampleBytes, &samples[i], static_cast<std::size_t>(sampleBytes));
        image = recordOf(0, width, 1, static_cast<std::uint32_t>(bytes.size()), bytes.data(), bytes.size());
        static_cast<zor::FormatBlock&>(image) = format;
    }
    OneRow(const OneRow&) = delete;
    OneRow& operator=(const OneRow&) = delete;

    std::vector<std::uint8_t> bytes;
    _ZorImage image;
};

/// The samples of an image's one row, with a sign where they have one.
inline QVector<qint64> samplesOf(const _ZorImage& image, int count, int sampleBytes)
{
    QVector<qint64> samples;
    for (int i = 0; i < count; ++i) {
        quint64 bits = 0;
        std::memcpy(&bits, image.data + i * sampleBytes, static_cast<std::size_t>(sampleBytes));
        const quint64 range = quint64{1} << (8 * sampleBytes);
        const bool isNegative = image.isSigned && bits >= range / 2;
        samples.append(static_cast<qint64>(isNegative ? bits - range : bits));
    }
    return samples;
}

/// The format block of one plain sample, also where no format of the table has it.
inline zor::FormatBlock plainFormat(std::uint32_t depth, bool isSigned, std::uint32_t bits)
{
    zor::FormatBlock format{};
    format.depth = depth;
    format.isSigned = isSigned ? 1 : 0;
    format.packing = 0x0100;
    format.channels = 1;
    format.pixelBits = bits;
    return format;
}
