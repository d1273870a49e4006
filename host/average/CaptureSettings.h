#pragma once

#include "host/frames/Frame.h"

#include <cstdint>
#include <optional>
#include <string>

namespace zor {

/// What a frame was taken with. Frames are averaged, and a dark frame is subtracted from another, only where
/// all of it is the same.
struct CaptureSettings
{
    std::uint32_t width = 0;  ///< pixels
    std::uint32_t height = 0; ///< rows
    std::uint32_t pixelType = 0;
    std::optional<double> exposureTime; ///< µs; nothing where the source does not say
    std::optional<double> gain;         ///< in the camera's own unit; nothing where the source does not say
};

/// Numbers are compared exactly: a camera reports the same one until it is set anew.
bool operator==(const CaptureSettings& one, const CaptureSettings& other);
bool operator!=(const CaptureSettings& one, const CaptureSettings& other);

/// The size and format of a frame, without exposure time and gain.
CaptureSettings settingsOf(const Frame& frame);

/// The first of the settings that differs, in the order of the members, as part of a sentence: "the exposure
/// time is 20000 µs and was 10000 µs". Empty when none does.
std::string firstDifference(const CaptureSettings& now, const CaptureSettings& before);

} // namespace zor
