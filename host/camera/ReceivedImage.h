#pragma once

#include "host/frames/Frame.h"

#include <cstddef>
#include <cstdint>

namespace zor {

/// An image as it lies in a camera's buffer.
struct ReceivedImage
{
    const std::uint8_t* data = nullptr; ///< borrowed
    std::size_t size = 0;               ///< bytes that were received
    std::uint32_t width = 0;            ///< pixels
    std::uint32_t height = 0;           ///< rows
    std::uint32_t rowPadding = 0;       ///< bytes after each row
    std::uint32_t pfncCode = 0;         ///< format, as GenICam's PFNC codes it
};

/// A frame with a copy of the pixels, in a record's order: the low bits of a `Packed` format, which a camera
/// sends with those of the even pixel in the low half of the middle byte, change places. Throws CameraError
/// when the format is not in the pixel type table, when fewer bytes came than the rows take, and when rows do
/// not begin at whole bytes.
Frame frameOf(const ReceivedImage& image);

} // namespace zor
