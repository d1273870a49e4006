#include "host/zorbench/NativeText.h"

#include "image/ColourFilter.h"
#include "image/ZorPixelTypeTable.h"
#include "image/unpack/NativeCodes.h"

#include <QStringList>

namespace zor {

namespace {

/// The names of the codes, in the order in which they come.
QStringList channelNames(const ZorPixelTypeRow& row)
{
    QStringList names;
    const QList<QByteArray> layout = QByteArray(row.channelLayout).split(' ');
    for (const QByteArray& name : layout)
        names.append(QString::fromLatin1(name));
    // A YUV layout is the cell of two pixels, which lists the luma twice.
    if (pixelTypeFamily(row.code) == PixelFamily::Yuv) {
        names.removeDuplicates();
        names.move(names.indexOf(QStringLiteral("Y")), 0);
    }
    return names;
}

/// The letter of the colour filter over a pixel and a space; empty without a colour filter.
QString filterName(const ZorPixelTypeRow& row, const QPoint& pixel)
{
    const PixelFamily family = pixelTypeFamily(row.code);
    if (family != PixelFamily::Bayer && family != PixelFamily::TrueSense)
        return {};
    // In the order of ColourFilter::Colour.
    constexpr char letters[] = "RGBW";
    const auto colour =
        ColourFilter(row).at(static_cast<std::size_t>(pixel.x()), static_cast<std::size_t>(pixel.y()));
    return QLatin1Char(letters[colour]) + QStringLiteral(" ");
}

} // namespace

QString nativeText(const _ZorImage& image, const QPoint& pixel)
{
    // A negative place becomes one beyond every edge.
    const NativeCodes native =
        nativeCodes(image, static_cast<std::uint32_t>(pixel.x()), static_cast<std::uint32_t>(pixel.y()));
    if (native.count == 0)
        return {};
    const ZorPixelTypeRow& row = *exactPixelTypeRow(image.pixelType);
    if (native.count == 1)
        return filterName(row, pixel) + QString::number(native.codes[0]);
    const QStringList names = channelNames(row);
    QStringList codes;
    for (std::uint32_t i = 0; i < native.count; ++i)
        codes.append(names[static_cast<int>(i)] + QLatin1Char(' ') + QString::number(native.codes[i]));
    return codes.join(QStringLiteral("  "));
}

} // namespace zor
