#pragma once

#include <stdexcept>

namespace zor {

/// What a camera refused or why it cannot be reached: one line that says what is wrong and what to do.
class CameraError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace zor
