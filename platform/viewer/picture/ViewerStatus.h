#pragma once

#include <cstdint>

namespace zor::viewer {
/// What `configure` and `display` answer in the low 16 bits.
enum class ViewerStatus : std::int32_t
{
    Ok = 0,
    Argument = 7, ///< null, or a record whose numbers do not fit together
    Format = 10,  ///< a pixel type that the viewer does not take
    Memory = 11,
};

constexpr std::int32_t code(ViewerStatus status)
{
    return static_cast<std::int32_t>(status);
}
} // namespace zor::viewer
