#pragma once

#include <cstdint>
#include <vector>

/// A pixel format as the camera library codes it.
struct LibraryFormat
{
    const char* name; ///< in the pixel type table
    std::uint32_t pfncCode;
};

/// The formats that the pixel type table and the camera library both have.
const std::vector<LibraryFormat>& libraryFormats();
