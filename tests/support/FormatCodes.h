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
