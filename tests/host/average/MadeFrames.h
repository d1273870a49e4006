#pragma once

#include "host/frames/Frame.h"
#include "tests/reference/PixelFormats.h"

#include <QString>

#include <functional>
#include <random>

/// What a sample is to be, by its column, row and place in the pixel.
using SampleAt = std::function<std::uint32_t(std::uint32_t x, std::uint32_t y, std::uint32_t sample)>;

/// A frame of this format and size with random bytes everywhere, in spare bits and between rows too. The last
/// row ends with its last pixel.
zor::Frame randomFrame(const reference::PixelFormat& format, std::uint32_t width, std::uint32_t height,
                       std::uint32_t padding, std::mt19937& random);

/// A frame of tight rows in the named format, one byte or little-endian word a sample.
zor::Frame frameOf(const char* format, std::uint32_t width, std::uint32_t height,
                   const std::vector<std::uint32_t>& samples);

/// The sample as the converter reads it, bit by bit.
std::uint32_t sampleOf(const reference::PixelFormat& format, const zor::Frame& frame, std::uint32_t x,
                       std::uint32_t y, std::uint32_t sample);

/// Where the frame's bytes are not those of tight rows of these samples with all other bits 0; empty when
/// they are.
QString difference(const reference::PixelFormat& format, const zor::Frame& frame, const SampleAt& expected);

/// A column "format" with a row for each pixel format, and the format of the current row.
void addFormats();
const reference::PixelFormat& fetchedFormat();

/// The text of the exception of this type that a call throws; empty when it throws nothing.
template <typename Error, typename Call> QString refusalOf(Call call)
{
    try {
        call();
    } catch (const Error& error) {
        return error.what();
    }
    return {};
}
