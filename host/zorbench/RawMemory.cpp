#include "host/zorbench/RawMemory.h"

#include "host/frames/FrameLimits.h"
#include "host/zorbench/LikelyLayout.h"
#include "image/ZorPixelTypeTable.h"

#include <QSettings>

#include <algorithm>
#include <limits>

namespace zor {

namespace {

// What the command line calls them too.
const QLatin1String WireOrder("wire");
const QLatin1String RecordOrder("record");

QString key(std::uint64_t bytes, const char* name)
{
    return QStringLiteral("RawDumps/%1/%2").arg(bytes).arg(QString::fromLatin1(name));
}

bool isFormat(const std::string& name)
{
    return std::any_of(std::begin(ZorPixelTypeTable), std::end(ZorPixelTypeTable),
                       [&name](const ZorPixelTypeRow& row) { return row.name == name; });
}

} // namespace

RawMemory::RawMemory(QSettings& settings)
    : m_settings(settings)
{
}

RawLayout RawMemory::layoutFor(std::uint64_t bytes) const
{
    RawLayout layout = likelyLayout(bytes).value_or(RawLayout{"Mono8", 640, 480, {}});

    // Anybody can write to the settings: what can't be used is as good as nothing.
    const std::string format = m_settings.value(key(bytes, "Format")).toString().toStdString();
    const std::uint32_t width = m_settings.value(key(bytes, "Width")).toUInt();
    const std::uint32_t height = m_settings.value(key(bytes, "Height")).toUInt();
    const std::uint32_t pitch = m_settings.value(key(bytes, "Pitch")).toUInt();
    const auto isSide = [](std::uint32_t side) { return side >= 1 && side <= MaxFrameSide; };
    if (!isFormat(format) || !isSide(width) || !isSide(height))
        return layout;
    layout.format = format;
    layout.width = width;
    layout.height = height;
    if (pitch > 0 && pitch <= std::uint32_t{std::numeric_limits<std::int32_t>::max()})
        layout.pitch = pitch;
    layout.packedOrderRecord = m_settings.value(key(bytes, "PackedOrder")).toString() == RecordOrder;
    return layout;
}

void RawMemory::remember(std::uint64_t bytes, const RawLayout& layout)
{
    m_settings.setValue(key(bytes, "Format"), QString::fromStdString(layout.format));
    m_settings.setValue(key(bytes, "Width"), layout.width);
    m_settings.setValue(key(bytes, "Height"), layout.height);
    m_settings.setValue(key(bytes, "Pitch"), layout.pitch.value_or(0));
    m_settings.setValue(key(bytes, "PackedOrder"),
                        QString(layout.packedOrderRecord ? RecordOrder : WireOrder));
}

} // namespace zor
