#pragma once

#include "host/frames/Frame.h"

#include <cstdint>
#include <memory>
#include <string_view>

/// A frame in a pixel format, named as in the table, with a sample of each channel that differs from pixel to
/// pixel, 0 and full scale among them.
std::shared_ptr<const zor::Frame> madeFrame(std::string_view format, std::uint32_t width,
                                            std::uint32_t height);
