#pragma once

#include "image/ZorImage.h"

/// The format block that belongs to a pixel type code. The row is found by the code's low byte alone: `depth`
/// and `channels` come from the table, `packing` and `pixelBits` from the code itself. An unknown row gives a
/// block of zeros.
zor::FormatBlock ZorFormatFromCode(std::uint32_t code);
