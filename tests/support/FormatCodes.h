#pragma once

#include "image/ZorPixelTypeTable.h"

#include <stdexcept>
#include <string_view>

/// The code of a pixel format by its name. Throws std::invalid_argument when there is none.
constexpr std::uint32_t codeOf(std::string_view name)
{
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable) {
        if (name == row.name)
            return row.code;
    }
    throw std::invalid_argument("no pixel format has this name");
}

/// Beside the codes of PixelTypeCode.h.
constexpr std::uint32_t Mono10p = codeOf("Mono10p");
constexpr std::uint32_t Mono10Packed = codeOf("Mono10Packed");
constexpr std::uint32_t Mono12p = codeOf("Mono12p");
constexpr std::uint32_t Mono12Packed = codeOf("Mono12Packed");
