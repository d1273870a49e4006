#include "host/average/CaptureSettings.h"

#include "image/ZorPixelTypeTable.h"

#include <charconv>

namespace zor {

namespace {

std::string sizeText(const CaptureSettings& settings)
{
    return std::to_string(settings.width) + " x " + std::to_string(settings.height) + " pixels";
}

std::string formatText(std::uint32_t pixelType)
{
    const ZorPixelTypeRow* row = exactPixelTypeRow(pixelType);
    return row ? row->name : "the unknown code " + std::to_string(pixelType);
}

/// The shortest text that gives the number back, without an exponent, so that numbers that differ have texts
/// that differ.
std::string numberText(const std::optional<double>& number, const char* unit)
{
    if (!number)
        return "not known";
    // The smallest double has 324 decimals before its first digit that is not 0, and up to 17 from there on.
    char buffer[400];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, *number, std::chars_format::fixed);
    return std::string(buffer, result.ptr) + unit;
}

std::string difference(const char* what, const std::string& now, const std::string& before)
{
    return std::string("the ") + what + " is " + now + " and was " + before;
}

} // namespace

bool operator==(const CaptureSettings& one, const CaptureSettings& other)
{
    return one.width == other.width && one.height == other.height && one.pixelType == other.pixelType &&
           one.exposureTime == other.exposureTime && one.gain == other.gain;
}

bool operator!=(const CaptureSettings& one, const CaptureSettings& other)
{
    return !(one == other);
}

CaptureSettings settingsOf(const Frame& frame)
{
    return {frame.width, frame.height, frame.pixelType, std::nullopt, std::nullopt};
}

std::string firstDifference(const CaptureSettings& now, const CaptureSettings& before)
{
    if (now.width != before.width || now.height != before.height)
        return difference("size", sizeText(now), sizeText(before));
    if (now.pixelType != before.pixelType)
        return difference("pixel format", formatText(now.pixelType), formatText(before.pixelType));
    if (now.exposureTime != before.exposureTime)
        return difference("exposure time", numberText(now.exposureTime, " µs"),
                          numberText(before.exposureTime, " µs"));
    if (now.gain != before.gain)
        return difference("gain", numberText(now.gain, ""), numberText(before.gain, ""));
    return {};
}

} // namespace zor
